// Where something stands in a calculation's text: 1-based line and column, columns counted in
// characters (code points), so that a position points at the same character an editor shows.
#pragma once

#include <string>

namespace vdhost::calc {

struct SourcePosition {
    int line = 1;
    int column = 1;
};

inline std::string describe(SourcePosition p) {
    return "line " + std::to_string(p.line) + ", column " + std::to_string(p.column);
}

}  // namespace vdhost::calc
