// Thin wrappers over the host's four-character-code and function-registration calls, one per call.
#pragma once

#include <fmx/binary.h>
#include <fmx/exprenv.h>

#include <memory>

namespace vd::fmapi {

FMX_QuadChar* NewQuadChar(char c0, char c1, char c2, char c3);
void DeleteQuadChar(FMX_QuadChar* code) noexcept;

struct QuadCharDeleter {
    void operator()(FMX_QuadChar* code) const noexcept { DeleteQuadChar(code); }
};
using OwnedQuadChar = std::unique_ptr<FMX_QuadChar, QuadCharDeleter>;

FMX_ErrCode RegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId, const FMX_Text* name,
                                     const FMX_Text* prototype, int16_t minArgs, int16_t maxArgs,
                                     uint32_t flags, FMX_ExtPluginType handler);
FMX_ErrCode UnRegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId);

FMX_ExprEnv* NewExprEnv(int32_t kind);
void DeleteExprEnv(FMX_ExprEnv* env) noexcept;
FMX_ErrCode ExprEnvEvaluate(const FMX_ExprEnv* env, const FMX_Text* expression, FMX_Data* result);

struct ExprEnvDeleter {
    void operator()(FMX_ExprEnv* env) const noexcept { DeleteExprEnv(env); }
};
using OwnedExprEnv = std::unique_ptr<FMX_ExprEnv, ExprEnvDeleter>;

}  // namespace vd::fmapi
