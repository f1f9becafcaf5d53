// FM_ExprEnv_*: the expression environment.
#include "evaluation_host.h"
#include "function_registry.h"
#include "host_call.h"

using namespace vdhost;

namespace {
EvaluationHost* gCurrentHost = nullptr;
}

EvaluationHost* EvaluationHost::current() { return gCurrentHost; }
void EvaluationHost::setCurrent(EvaluationHost* host) { gCurrentHost = host; }

FMX_API FMX_ExprEnv* FM_ExprEnv_Constructor1(int32_t, FMX_CallRecord* rec) {
    return hostCall(rec, [] { return new FMX_ExprEnv{EvaluationHost::current()}; });
}

FMX_API void FM_ExprEnv_Delete(FMX_ExprEnv* env, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete env; });
}

FMX_API FMX_ErrCode FM_ExprEnv_Evaluate(const FMX_ExprEnv* env, const FMX_Text* expression, FMX_Data* result,
                                        FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&]() -> FMX_ErrCode {
        const auto& e = deref(env);
        const auto& text = deref(expression);
        auto& out = deref(result);
        // An environment made while no database was open has nothing to evaluate against.
        EvaluationHost* host = e.host ? e.host : EvaluationHost::current();
        if (!host) return FMX_ERR_CALCULATION;
        return host->evaluate(text.units, out);
    });
}

FMX_API FMX_ErrCode FM_ExprEnv_RegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId,
                                                        const FMX_Text* name, const FMX_Text* prototype,
                                                        int16_t minArgs, int16_t maxArgs, uint32_t flags,
                                                        FMX_ExtPluginType handler, FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&] {
        ExternalFunction f;
        f.pluginId = deref(pluginId).code;
        f.id = functionId;
        f.name = deref(name).units;
        f.prototype = prototype ? prototype->units : f.name;
        f.minArgs = minArgs;
        f.maxArgs = maxArgs;
        f.flags = flags;
        f.handler = handler;
        return FunctionRegistry::instance().add(std::move(f));
    });
}

FMX_API FMX_ErrCode FM_ExprEnv_UnRegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId,
                                                          FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&] {
        return FunctionRegistry::instance().remove(deref(pluginId).code, functionId);
    });
}
