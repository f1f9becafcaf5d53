// vdhost serve with several records: the table page lists them all with small pictures, a record's
// page shows that record, and its calculation box stores into it.
#include "served_database.h"

#include <api/values.h>
#include <db/database.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace vdtest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

constexpr int kLargeWidth = 400, kLargeHeight = 300;

class ServeRecords : public ::testing::Test {
protected:
    void SetUp() override {
        ASSERT_NO_FATAL_FAILURE(buildPeopleDatabase(db()));
        vdhost::db::Database database(db());
        ASSERT_EQ(database.newRecord("People"), 2);
        database.write("People", "Name", vdhost::makeText(u"Grace Hopper"));
        std::string png = pngOfSize(kLargeWidth, kLargeHeight);
        FMX_BinaryData binary;
        binary.streams.push_back({vdhost::fourCharCode("PNGf"), std::make_shared<const vdhost::StreamBytes>(vdhost::Bytes(png.begin(), png.end()))});
        database.write("People", "Photo", vdhost::makeContainer(std::move(binary)));
    }
    std::filesystem::path db() const { return folder / "People.vddb"; }
    TempFolder folder;
};

TEST_F(ServeRecords, TheTablePageListsEveryRecordWithPreviewsAndEachRecordHasItsPage) {
    ServedDatabase server(db(), {});
    auto client = server.client();
    std::string table = client.Get("/table?t=People")->body;
    EXPECT_THAT(table, HasSubstr("<a href=\"/record?t=People&amp;rec=1\">1</a></td>"));
    EXPECT_THAT(table, HasSubstr("<a href=\"/record?t=People&amp;rec=2\">2</a> <span class=\"note\">current</span>"));
    EXPECT_THAT(table, HasSubstr("Ada Lovelace"));
    EXPECT_THAT(table, HasSubstr("Grace Hopper"));
    EXPECT_THAT(client.Get("/")->body, HasSubstr("<td>3</td><td>2</td>")) << "three fields, two records";

    // The small picture is its own preview; the large one is shrunk, once.
    auto small = client.Get("/media/preview?t=People&f=Photo&rec=1");
    EXPECT_EQ(small->body, pngOfSize(kPhotoWidth, kPhotoHeight));
    auto large = client.Get("/media/preview?t=People&f=Photo&rec=2");
    ASSERT_EQ(large->status, 200) << large->body;
    EXPECT_EQ(large->get_header_value("Content-Type"), "image/jpeg");
    EXPECT_LT(large->body.size(), 20000u);
    EXPECT_EQ(client.Get("/media/preview?t=People&f=Photo&rec=2")->body, large->body);
    EXPECT_EQ(client.Get("/media/picture?t=People&f=Photo&rec=2")->body, pngOfSize(kLargeWidth, kLargeHeight));
    EXPECT_EQ(client.Get("/media/preview?t=People&f=Photo&rec=3")->status, 404);
    EXPECT_EQ(client.Get("/media/preview?t=People&f=Photo")->status, 400);

    std::string first = client.Get("/record?t=People&rec=1")->body;
    EXPECT_THAT(first, HasSubstr("record 1"));
    EXPECT_THAT(first, HasSubstr("Ada Lovelace"));
    EXPECT_THAT(first, Not(HasSubstr("Grace Hopper")));
    EXPECT_THAT(first, HasSubstr("/media/picture?t=People&amp;f=Photo&amp;rec=1"));
    EXPECT_THAT(client.Get("/record?t=People")->body, HasSubstr("Grace Hopper")) << "without rec: the current record";
    EXPECT_EQ(client.Get("/record?t=People&rec=3")->status, 404);
    EXPECT_EQ(client.Get("/record?t=People&rec=x")->status, 404);
}

TEST_F(ServeRecords, ARecordPagesCalculationStoresIntoThatRecord) {
    ServedDatabase server(db(), {"--allow-calculations"});
    auto post = server.client({{"Origin", server.base()}})
                    .Post("/calc", "page=%2Frecord%3Ft%3DPeople%26rec%3D1&t=People&rec=1&calculation=People%3A%3AName+%3A%3D+People%3A%3AName+%26+%22%2C+Countess%22",
                          "application/x-www-form-urlencoded");
    ASSERT_EQ(post->status, 303) << post->body;
    EXPECT_THAT(post->get_header_value("Location"), HasSubstr("/record?t=People&rec=1&result="));
    std::string page = server.client().Get(post->get_header_value("Location").c_str())->body;
    EXPECT_THAT(page, HasSubstr("<pre>Ada Lovelace, Countess</pre>"));
    EXPECT_THAT(page, HasSubstr("name=\"rec\" value=\"1\"")) << "the box keeps acting on the record";

    // The table page's box acts on the current record, which the record page left as it was.
    server.client({{"Origin", server.base()}})
        .Post("/calc", "page=%2F&calculation=People%3A%3AName+%3A%3D+%22Grace+M.+Hopper%22", "application/x-www-form-urlencoded");
    // A record that is not there is the calculation's error, not a store elsewhere.
    auto missing = server.client({{"Origin", server.base()}})
                       .Post("/calc", "page=%2F&t=People&rec=9&calculation=People%3A%3AName+%3A%3D+1",
                             "application/x-www-form-urlencoded");
    EXPECT_THAT(server.client().Get(missing->get_header_value("Location").c_str())->body, HasSubstr("no record 9"));
    server.stop();

    vdhost::db::Database database(db());
    EXPECT_EQ(vdhost::utf8Of(*database.read("People", "Name", 1)), "Ada Lovelace, Countess");
    EXPECT_EQ(vdhost::utf8Of(*database.read("People", "Name", 2)), "Grace M. Hopper");
    EXPECT_EQ(database.currentRecord("People"), 2);
}

}  // namespace
}  // namespace vdtest
