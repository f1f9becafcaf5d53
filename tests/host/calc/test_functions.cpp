#include "test_functions.h"

#include "api/evaluation_host.h"
#include "api/function_registry.h"
#include "api/values.h"

#include <stdexcept>

namespace vdhost::calc::testing {

namespace {

constexpr uint32_t kTestPlugin = 0x54455354;  // 'TEST'

FMX_ErrCode echo(int16_t, const FMX_ExprEnv* env, const FMX_DataVect* args, FMX_Data* result) {
    TestFunctions::lastEnvironment() = env;
    TestFunctions::echoed().push_back(utf8Of(args->items[0]));
    *result = args->items[0];
    return 0;
}

FMX_ErrCode fail(int16_t, const FMX_ExprEnv*, const FMX_DataVect* args, FMX_Data*) {
    return args->items.empty() ? FMX_ErrCode{7} : static_cast<FMX_ErrCode>(numberOf(args->items[0]));
}

FMX_ErrCode throwing(int16_t, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data*) {
    throw std::runtime_error("handler exploded");
}

FMX_ErrCode answerId(int16_t id, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data* result) {
    *result = makeNumber(id);
    return 0;
}

FMX_ErrCode now(int16_t, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data* result) {
    *result = makeNumber(42);
    return 0;
}

FMX_ErrCode pluginLength(int16_t, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data* result) {
    *result = makeText(u"plug-in");
    return 0;
}

FMX_ErrCode evaluateThroughHost(int16_t, const FMX_ExprEnv* env, const FMX_DataVect* args, FMX_Data* result) {
    return env->host->evaluate(textOf(args->items[0]).units, *result);
}

FMX_ErrCode unregisterItself(int16_t id, const FMX_ExprEnv*, const FMX_DataVect*, FMX_Data* result) {
    FunctionRegistry::instance().remove(kTestPlugin, id);
    *result = makeText(u"gone");
    return 0;
}

struct Registration {
    int16_t id;
    const char16_t* name;
    int16_t minArgs, maxArgs;
    FMX_ExtPluginType handler;
};

constexpr Registration kRegistrations[] = {
    {1, u"Test_Echo", 1, -1, echo},
    {2, u"Test_Fail", 0, 1, fail},
    {3, u"Test_Throw", 0, 0, throwing},
    {4, u"Test_Range", 1, 1, answerId},
    {5, u"Test_Range", 2, 3, answerId},
    {6, u"Test_Now", 0, 0, now},
    {7, u"Length", 1, 1, pluginLength},
    {8, u"Test_Evaluate", 1, 1, evaluateThroughHost},
    {9, u"Test_Unregister", 0, 0, unregisterItself},
};

}  // namespace

TestFunctions::TestFunctions() {
    echoed().clear();
    lastEnvironment() = nullptr;
    for (const auto& r : kRegistrations) {
        ExternalFunction f;
        f.pluginId = kTestPlugin;
        f.id = r.id;
        f.name = r.name;
        f.prototype = std::u16string(r.name) + u" ( ... )";
        f.minArgs = r.minArgs;
        f.maxArgs = r.maxArgs;
        f.handler = r.handler;
        if (FunctionRegistry::instance().add(std::move(f)) != FMX_NO_ERROR)
            throw std::logic_error("test functions are already registered");
    }
}

TestFunctions::~TestFunctions() {
    for (const auto& r : kRegistrations) FunctionRegistry::instance().remove(kTestPlugin, r.id);
}

std::vector<std::string>& TestFunctions::echoed() {
    static std::vector<std::string> calls;
    return calls;
}

const FMX_ExprEnv*& TestFunctions::lastEnvironment() {
    static const FMX_ExprEnv* env = nullptr;
    return env;
}

}  // namespace vdhost::calc::testing
