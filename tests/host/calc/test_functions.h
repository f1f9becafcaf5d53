// External functions registered for the calculation tests under the plug-in id 'TEST', for the
// lifetime of a TestFunctions object:
//   Test_Echo ( value ; ... )     answers its first argument; logs it
//   Test_Fail ( {code} )          fails with the code (7 when none is given)
//   Test_Throw                    throws a C++ exception
//   Test_Range ( a )              answers its function id (4)...
//   Test_Range ( a ; b ; {c} )    ...registered again with another id (5) for two or three arguments
//   Test_Now                      42, called without parentheses
//   Length ( x )                  a plug-in function under a built-in's name: never reached
//   Test_Evaluate ( text )        evaluates the text through the expression environment's host
//   Test_Unregister               unregisters itself while it runs and answers "gone"
#pragma once

#include "api/objects.h"

#include <string>
#include <vector>

namespace vdhost::calc::testing {

class TestFunctions {
public:
    TestFunctions();
    ~TestFunctions();
    TestFunctions(const TestFunctions&) = delete;
    TestFunctions& operator=(const TestFunctions&) = delete;

    // Test_Echo's arguments as text (UTF-8), in call order.
    static std::vector<std::string>& echoed();
    // The environment the last handler call received.
    static const FMX_ExprEnv*& lastEnvironment();
};

}  // namespace vdhost::calc::testing
