#include "calc_test_support.h"

#include "api/text_codec.h"
#include "api/values.h"

namespace vdhost::calc::testing {

std::optional<FMX_Data> TestContext::field(std::string_view table, std::string_view name) {
    auto it = fields.find({std::string(table), std::string(name)});
    if (it == fields.end()) return std::nullopt;
    return it->second;
}

FMX_ErrCode TestContext::evaluate(std::u16string_view expression, FMX_Data& result) {
    Variables scope;
    try {
        result = calc::evaluate(expression, *this, scope);
        return FMX_NO_ERROR;
    } catch (const CalcError& e) {
        return e.kind == CalcError::Kind::Handler ? static_cast<FMX_ErrCode>(e.handlerCode)
                                                  : FMX_ErrCode{FMX_ERR_CALCULATION};
    }
}

FMX_Data container(std::initializer_list<std::pair<const char*, Bytes>> streams, std::u16string ownText) {
    FMX_BinaryData binary;
    for (const auto& [type, bytes] : streams)
        binary.streams.push_back(Stream{fourCharCode(type), std::make_shared<const StreamBytes>(bytes)});
    return makeContainer(std::move(binary), std::move(ownText));
}

std::string streamText(const FMX_Data& value, const char* type) {
    int32_t index = value.binary.indexOf(fourCharCode(type));
    if (index < 0) return {};
    const StreamBytes& bytes = *value.binary.streams[static_cast<size_t>(index)].bytes;
    return std::string(bytes.begin(), bytes.end());
}

FMX_Data CalcTest::eval(const std::string& utf8) { return calc::evaluate(utf8ToUtf16(utf8), context, locals); }

std::string CalcTest::text(const std::string& utf8) { return utf8Of(eval(utf8)); }

CalcError CalcTest::failure(const std::string& utf8) {
    try {
        FMX_Data value = eval(utf8);
        ADD_FAILURE() << utf8 << " gave " << utf8Of(value) << " instead of failing";
    } catch (const CalcError& e) {
        return e;
    }
    return CalcError(CalcError::Kind::Syntax, {0, 0}, "no error");
}

void CalcTest::expectTexts(std::initializer_list<TextCase> cases) {
    for (const TextCase& c : cases) {
        SCOPED_TRACE(c.calculation.substr(0, 60));
        EXPECT_EQ(text(c.calculation), c.expected);
    }
}

void CalcTest::expectFailures(std::initializer_list<FailureCase> cases) {
    for (const FailureCase& c : cases) {
        SCOPED_TRACE(c.calculation.substr(0, 60));
        CalcError e = failure(c.calculation);
        EXPECT_EQ(e.kind, c.kind);
        EXPECT_EQ(e.line, c.line);
        EXPECT_EQ(e.column, c.column);
        EXPECT_EQ(e.message, c.message);
    }
}

}  // namespace vdhost::calc::testing
