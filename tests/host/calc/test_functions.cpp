#include "test_functions.h"

#include "api/evaluation_host.h"
#include "api/function_registry.h"
#include "api/values.h"

#include <stdexcept>

namespace vdhost::calc::testing {

namespace {

constexpr uint32_t kTestPlugin = 0x54455354;  // 'TEST'

// One handler for all of them, told apart by their ids.
FMX_ErrCode handle(int16_t id, const FMX_ExprEnv* env, const FMX_DataVect* args, FMX_Data* result) {
    switch (id) {
    case 1:  // Test_Echo
        TestFunctions::lastEnvironment() = env;
        TestFunctions::echoed().push_back(utf8Of(args->items[0]));
        *result = args->items[0];
        return 0;
    case 2: return args->items.empty() ? FMX_ErrCode{7} : static_cast<FMX_ErrCode>(numberOf(args->items[0]));
    case 3: throw std::runtime_error("handler exploded");
    case 6: *result = makeNumber(42); return 0;
    case 7: *result = makeText(u"plug-in"); return 0;
    case 8: return env->host->evaluate(textOf(args->items[0]).units, *result);
    case 9: FunctionRegistry::instance().remove(kTestPlugin, id); *result = makeText(u"gone"); return 0;
    default: *result = makeNumber(id); return 0;  // Test_Range
    }
}

struct Registration {
    int16_t id;
    const char16_t* name;
    int16_t minArgs, maxArgs;
};

constexpr Registration kRegistrations[] = {
    {1, u"Test_Echo", 1, -1},   {2, u"Test_Fail", 0, 1}, {3, u"Test_Throw", 0, 0},
    {4, u"Test_Range", 1, 1},   {5, u"Test_Range", 2, 3}, {6, u"Test_Now", 0, 0},
    {7, u"Length", 1, 1},       {8, u"Test_Evaluate", 1, 1}, {9, u"Test_Unregister", 0, 0},
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
        f.handler = handle;
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
