// Loading libraries on first use: what resolves is callable, and what cannot be had is said once,
// clearly, with nothing half resolved.
#include "platform/common/lazy_library.h"

#include <gtest/gtest.h>

#include <cstring>
#include <string>

namespace vd::platform {
namespace {

using Strlen = size_t (*)(const char*);

TEST(LazyLibraries, ResolvesFromTheLibraryAndItsDependencies) {
    // libm needs libc: a function of the dependency is found through the library that was named.
    const char* sonames[] = {"libm.so.6"};
    const LazySymbol symbols[] = {{0, "cos"}, {0, "strlen"}};
    void* slots[2] = {};
    LazyLibraries libraries(sonames, symbols, slots, nullptr);
    ASSERT_EQ(libraries.Load(), "");
    EXPECT_EQ(reinterpret_cast<double (*)(double)>(libraries.Address(0))(0.0), 1.0);
    EXPECT_EQ(reinterpret_cast<Strlen>(libraries.Address(1))("four"), 4u);
}

TEST(LazyLibraries, WhatCannotBeHadIsNamedAndNothingIsHalfResolved) {
    {
        const char* sonames[] = {"libc.so.6", "libvandrel-no-such-library.so.1"};
        const LazySymbol symbols[] = {{0, "strlen"}};
        void* slots[1] = {};
        LazyLibraries libraries(sonames, symbols, slots, nullptr);
        const std::string problem(libraries.Load());
        EXPECT_NE(problem.find("libvandrel-no-such-library.so.1"), std::string::npos) << problem;
        EXPECT_EQ(libraries.Load(), problem);  // asked again: the same answer, no second attempt
        EXPECT_EQ(slots[0], nullptr);
    }
    {
        const char* sonames[] = {"libc.so.6"};
        const LazySymbol symbols[] = {{0, "strlen"}, {0, "vandrel_no_such_function"}};
        void* slots[2] = {};
        LazyLibraries libraries(sonames, symbols, slots, nullptr);
        EXPECT_EQ(libraries.Load(), "libc.so.6 has no function vandrel_no_such_function");
        EXPECT_EQ(slots[0], nullptr);
        // A forwarder reached all the same stops the process with its name, not at address 0.
        EXPECT_DEATH(libraries.Address(0), "strlen was called although its library could not be loaded");
    }
}

}  // namespace
}  // namespace vd::platform
