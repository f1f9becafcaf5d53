// What the calculation tests share: a context with fixed fields and file path that is also the
// evaluation host plug-in functions call back into, and a fixture that evaluates UTF-8 texts and
// checks tables of results and of errors.
#pragma once

#include "api/evaluation_host.h"
#include "calc/expression.h"

#include <gtest/gtest.h>

#include <map>
#include <string>

namespace vdhost::calc::testing {

class TestContext : public Context, public EvaluationHost {
public:
    TestContext() { env.host = this; }

    std::optional<FMX_Data> field(std::string_view table, std::string_view name) override;
    std::u16string filePath() override { return path; }
    Variables& globals() override { return globalVariables; }
    const FMX_ExprEnv* exprEnv() override { return &env; }

    // Evaluates in a scope of its own, answering error codes as the session does.
    FMX_ErrCode evaluate(std::u16string_view expression, FMX_Data& result) override;

    void setField(const std::string& table, const std::string& name, FMX_Data value) {
        fields[{table, name}] = std::move(value);
    }

    std::map<std::pair<std::string, std::string>, FMX_Data> fields;
    std::u16string path = u"file:/data/Orders.vddb";
    Variables globalVariables;
    FMX_ExprEnv env;
};

FMX_Data container(std::initializer_list<std::pair<const char*, Bytes>> streams, std::u16string ownText = {});
std::string streamText(const FMX_Data& value, const char* type);  // "" when there is no such stream

// A calculation and the text of its result, UTF-8.
struct TextCase { std::string calculation; std::string expected; };

// A calculation that must fail, and the error it must report.
struct FailureCase { std::string calculation; CalcError::Kind kind; int line, column; std::string message; };

class CalcTest : public ::testing::Test {
protected:
    FMX_Data eval(const std::string& utf8);
    std::string text(const std::string& utf8);  // the result's text, UTF-8
    // The CalcError the calculation throws; fails the test when it throws nothing.
    CalcError failure(const std::string& utf8);
    // Checks every case, each under its calculation's name.
    void expectTexts(std::initializer_list<TextCase> cases);
    void expectFailures(std::initializer_list<FailureCase> cases);

    TestContext context;
    Variables locals;
};

}  // namespace vdhost::calc::testing
