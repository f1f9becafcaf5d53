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

TEST(ErrorObject, NameCodeAndMessageReadAsOneStatusText) {
    VDSError e;
    e.SetName("Vandrel_StopSound");
    EXPECT_EQ(e.StatusText(), "$0:");  // named, but nothing reported yet
    e.Set(0);
    EXPECT_EQ(e.StatusText(), "$0:Vandrel_StopSound: No error.");
    e.Set(5);  // a code without a sentence leaves just the name
    EXPECT_EQ(e.StatusText(), "$5:Vandrel_StopSound: ");
    e.Set(-43, "Could not find input file.");
    EXPECT_EQ(e.StatusText(), "$-43:Vandrel_StopSound: Could not find input file.");
    e.SetName("Vandrel_Normalize");  // the name is read with the rest, never baked into the message
    EXPECT_EQ(e.StatusText(), "$-43:Vandrel_Normalize: Could not find input file.");
    EXPECT_EQ(e.Message(), "Could not find input file.");

    e.SetName(nullptr);
    e.Set(-50);
    EXPECT_EQ(e.StatusText(), "$-50:Wrong parameter(s).");
    e.Clear();
    EXPECT_EQ(e.StatusText(), "$0:");
}

TEST(ErrorObject, FormatLastIsCutToItsBuffer) {
    gLastError.SetName("Vandrel_Amplify");
    gLastError.Set(-4);
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

}  // namespace
}  // namespace vd
