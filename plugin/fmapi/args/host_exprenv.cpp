#include "fmapi/args/host_exprenv.h"

#include "fmapi/args/host_call.h"

namespace vd::fmapi {

FMX_QuadChar* NewQuadChar(char c0, char c1, char c2, char c3) {
    return Checked([&](FMX_CallRecord* r) { return FM_QuadChar_Constructor2(c0, c1, c2, c3, r); });
}

void DeleteQuadChar(FMX_QuadChar* code) noexcept {
    if (code) Unchecked([&](FMX_CallRecord* r) { FM_QuadChar_Delete(code, r); });
}

FMX_ErrCode RegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId, const FMX_Text* name,
                                     const FMX_Text* prototype, int16_t minArgs, int16_t maxArgs,
                                     uint32_t flags, FMX_ExtPluginType handler) {
    return Checked([&](FMX_CallRecord* r) {
        return FM_ExprEnv_RegisterExternalFunction(pluginId, functionId, name, prototype, minArgs, maxArgs,
                                                   flags, handler, r);
    });
}

FMX_ErrCode UnRegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId) {
    return Checked([&](FMX_CallRecord* r) { return FM_ExprEnv_UnRegisterExternalFunction(pluginId, functionId, r); });
}

FMX_ExprEnv* NewExprEnv(int32_t kind) {
    return Checked([&](FMX_CallRecord* r) { return FM_ExprEnv_Constructor1(kind, r); });
}

void DeleteExprEnv(FMX_ExprEnv* env) noexcept {
    if (env) Unchecked([&](FMX_CallRecord* r) { FM_ExprEnv_Delete(env, r); });
}

FMX_ErrCode ExprEnvEvaluate(const FMX_ExprEnv* env, const FMX_Text* expression, FMX_Data* result) {
    return Checked([&](FMX_CallRecord* r) { return FM_ExprEnv_Evaluate(env, expression, result, r); });
}

}  // namespace vd::fmapi
