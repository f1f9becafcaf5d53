// How the C API's expression environment reaches the running host: the host that owns the open
// database and the calculation engine installs itself as the current evaluation host.
#pragma once

#include "objects.h"

#include <string_view>

namespace vdhost {

class EvaluationHost {
public:
    virtual ~EvaluationHost() = default;

    // Evaluates a calculation text in a scope of its own. Answers 0, FMX_ERR_CALCULATION, or the
    // error code of an external function that failed.
    virtual FMX_ErrCode evaluate(std::u16string_view expression, FMX_Data& result) = 0;

    static EvaluationHost* current();
    static void setCurrent(EvaluationHost* host);
};

// Installs a host for the lifetime of the object and restores the previous one afterwards.
class CurrentEvaluationHost {
public:
    explicit CurrentEvaluationHost(EvaluationHost* host) : previous_(EvaluationHost::current()) {
        EvaluationHost::setCurrent(host);
    }
    ~CurrentEvaluationHost() { EvaluationHost::setCurrent(previous_); }
    CurrentEvaluationHost(const CurrentEvaluationHost&) = delete;
    CurrentEvaluationHost& operator=(const CurrentEvaluationHost&) = delete;

private:
    EvaluationHost* previous_;
};

}  // namespace vdhost

struct FMX_ExprEnv {
    vdhost::EvaluationHost* host = nullptr;
};
