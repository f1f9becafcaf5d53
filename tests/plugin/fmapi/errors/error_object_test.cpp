// The error object and its message table: what users read in status texts.
#include "fmapi/errors/message_table.h"
#include "fmapi/errors/vds_error.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>

namespace vd {
namespace {

TEST(MessageTable, EdgeRowsAndCodesOutsideTheTable) {
    struct Row {
        int32_t code;
        const char* message;
    };
    const Row rows[] = {
        {0, "No error."},
        {-1, "Unknown error."},
        {-110, "A serious memory related error has occured. Contact developer, please."},
        {-118, ""},
        {-2024, "Attempt to perform editing at illegal state."},
        {-50000, "The operation could not be finished because QuickTime would hang. To work around, enable "
                 "linking media. Sorry."},
        {5, ""},
    };
    for (const auto& row : rows) EXPECT_EQ(MessageForCode(row.code), row.message) << row.code;
    for (int32_t code = -117; code <= -110; ++code)
        EXPECT_EQ(MessageForCode(code), MessageForCode(-110)) << code;
}

TEST(ErrorObject, ContextPrefixesEveryMessage) {
    VDSError& e = Begin("Vandrel_StopSound");
    e.SetCode(0);
    EXPECT_EQ(e.Message(), "Vandrel_StopSound: No error.");
    EXPECT_EQ(e.StatusText(), "$0:Vandrel_StopSound: No error.");

    e.SetCode(5);  // a code without a sentence leaves just the prefix
    EXPECT_EQ(e.Message(), "Vandrel_StopSound: ");

    e.SetCode(-43);
    e.SetMessage("Could not find input file.");
    EXPECT_EQ(e.Code(), -43);
    EXPECT_EQ(e.StatusText(), "$-43:Vandrel_StopSound: Could not find input file.");

    e.AppendDetail("");
    EXPECT_EQ(e.Message(), "Vandrel_StopSound: Could not find input file.");
    e.AppendDetail("(/tmp/x.wav)");
    EXPECT_EQ(e.Message(), "Vandrel_StopSound: Could not find input file. (/tmp/x.wav)");

    VDSError copy;
    copy.CopyFrom(e);
    EXPECT_EQ(copy.StatusText(), e.StatusText());
    EXPECT_EQ(copy.Context(), e.Context());

    Begin(nullptr).SetCode(-50);  // no context, no prefix
    EXPECT_EQ(gLastError.StatusText(), "$-50:Wrong parameter(s).");
    gLastError.Clear();
    EXPECT_EQ(gLastError.StatusText(), "$0:");
}

TEST(ErrorObject, FormatLastIsCutToItsBuffer) {
    Begin("Vandrel_Amplify").SetCode(-4);
    char big[128];
    FormatLast(big, sizeof big);
    EXPECT_STREQ(big, "$-4:Vandrel_Amplify: Feature is not implemented yet.");

    char small[10];
    std::memset(small, 'x', sizeof small);
    FormatLast(small, sizeof small);
    EXPECT_STREQ(small, "$-4:Vandr");  // nine characters and the terminator

    char one[1] = {'x'};
    FormatLast(one, sizeof one);
    EXPECT_EQ(one[0], '\0');
    FormatLast(nullptr, 0);  // nothing to write into, and no crash
}

TEST(ErrorObject, FormatHex32) {
    EXPECT_STREQ(FormatHex32(0x0000ABCD), "0000ABCD");
    const char* first = FormatHex32(0);
    EXPECT_STREQ(first, "00000000");
    FormatHex32(0x12345678);
    EXPECT_STREQ(first, "12345678");  // one shared buffer, overwritten by the next call
}

}  // namespace
}  // namespace vd
