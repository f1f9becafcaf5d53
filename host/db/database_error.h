// The one error the database layer throws: its message is meant for the user as it is (it names
// the file or the field and says what went wrong).
#pragma once

#include <stdexcept>

namespace vdhost::db {

class DatabaseError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

}  // namespace vdhost::db
