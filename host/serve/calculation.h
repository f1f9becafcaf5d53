// The calculation box: a statement typed on a page, run as the prompt runs it. A bare calculation
// shows its result; "Table::Field := calculation" stores into the field (one write transaction, as
// vdhost set does) and shows what the field now holds; "$name := ..." and "$$name := ..." keep a
// variable for the calculations that follow.
#pragma once

#include "calc/variables.h"
#include "session/session.h"

#include <deque>
#include <optional>
#include <string>

namespace vdhost::serve {

struct CalculationOutcome {
    int id = 0;
    std::string calculation;
    std::optional<FMX_Data> value;  // the result, or the field after a store
    std::string storedInto;         // "Table::Field" after a store
    std::string error;              // when it failed
};

// A record a statement acts on: reads and stores of its table's fields go to it.
struct RecordAt {
    std::string table;
    int64_t record = 0;
};

class CalculationBox {
public:
    explicit CalculationBox(Session& session) : session_(session) {}

    // Runs the statement and keeps its outcome (the last few are kept, for their pages and media).
    // With on, the statement acts on that record (which stays what it was in the file otherwise:
    // the table's current record does not change); a record that is not there is the outcome's error.
    const CalculationOutcome& run(const std::string& statement, const std::optional<RecordAt>& on = std::nullopt);
    const CalculationOutcome* find(int id) const;

private:
    static constexpr size_t kKept = 32;

    Session& session_;
    calc::Variables locals_;
    std::deque<CalculationOutcome> outcomes_;
    int nextId_ = 1;
};

}  // namespace vdhost::serve
