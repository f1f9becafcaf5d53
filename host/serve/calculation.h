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

class CalculationBox {
public:
    explicit CalculationBox(Session& session) : session_(session) {}

    // Runs the statement and keeps its outcome (the last few are kept, for their pages and media).
    const CalculationOutcome& run(const std::string& statement);
    const CalculationOutcome* find(int id) const;

private:
    static constexpr size_t kKept = 32;

    Session& session_;
    calc::Variables locals_;
    std::deque<CalculationOutcome> outcomes_;
    int nextId_ = 1;
};

}  // namespace vdhost::serve
