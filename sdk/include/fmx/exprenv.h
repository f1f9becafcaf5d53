/* The expression environment: registering external functions and evaluating calculations. */
#ifndef FMX_EXPRENV_H
#define FMX_EXPRENV_H

#include "fmx/types.h"

/* A new environment bound to the host's current database and variables. */
FMX_API FMX_ExprEnv* FM_ExprEnv_Constructor1(int32_t kind, FMX_CallRecord* rec);
FMX_API void FM_ExprEnv_Delete(FMX_ExprEnv* env, FMX_CallRecord* rec);

/* Evaluates a calculation text. FMX_ERR_CALCULATION when it does not parse or evaluate; a handler's
 * own error code when an external function it calls fails. */
FMX_API FMX_ErrCode FM_ExprEnv_Evaluate(const FMX_ExprEnv* env, const FMX_Text* expression,
                                        FMX_Data* result, FMX_CallRecord* rec);

/* maxArgs -1 means no upper limit. FMX_ERR_ALREADY_EXISTS for an id or name the plug-in already
 * registered; FMX_ERR_PARAMETER for a missing handler or name, or counts that contradict each other. */
FMX_API FMX_ErrCode FM_ExprEnv_RegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId,
                                                        const FMX_Text* name, const FMX_Text* prototype,
                                                        int16_t minArgs, int16_t maxArgs, uint32_t flags,
                                                        FMX_ExtPluginType handler, FMX_CallRecord* rec);
/* FMX_ERR_PARAMETER for an id that is not registered; nothing else happens then. */
FMX_API FMX_ErrCode FM_ExprEnv_UnRegisterExternalFunction(const FMX_QuadChar* pluginId, int16_t functionId,
                                                          FMX_CallRecord* rec);

#endif
