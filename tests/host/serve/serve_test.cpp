// vdhost serve as a user meets it: a child process on a free port, checked with a plain HTTP client
// and, when chromium is installed, in a headless browser.
#include "served_database.h"

#include "support/process.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>
#include <regex>

namespace vdtest {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

class Serve : public ::testing::Test {
protected:
    void SetUp() override { ASSERT_NO_FATAL_FAILURE(buildPeopleDatabase(db())); }
    std::filesystem::path db() const { return folder / "People.vddb"; }
    TempFolder folder;
};

TEST_F(Serve, EveryRequestNeedsTheTokenFromThisSiteAndNothingWritesWithoutPermission) {
    ServedDatabase server(db(), {});
    httplib::Client bare("127.0.0.1", server.port());
    EXPECT_EQ(bare.Get("/")->status, 403);
    EXPECT_EQ(bare.Get("/media/picture?t=People&f=Photo")->status, 403);

    auto first = bare.Get(("/table?t=People&token=" + server.token()).c_str());
    ASSERT_TRUE(first);
    EXPECT_EQ(first->status, 303);
    EXPECT_EQ(first->get_header_value("Location"), "/table?t=People");
    std::string cookie = first->get_header_value("Set-Cookie");
    EXPECT_THAT(cookie, HasSubstr(server.cookie()));
    EXPECT_THAT(cookie, HasSubstr("HttpOnly"));
    EXPECT_THAT(cookie, HasSubstr("SameSite=Strict"));

    EXPECT_EQ(server.client().Get("/")->status, 200);
    EXPECT_EQ(server.client({{"Host", "rebound.example:" + std::to_string(server.port())}}).Get("/")->status, 403);
    EXPECT_EQ(server.client({{"Origin", "http://evil.example"}}).Get("/")->status, 403);
    EXPECT_EQ(server.client({{"Origin", "http://evil.example"}}).Post("/calc", "calculation=1", "application/x-www-form-urlencoded")->status, 403);
    // Read-only: the calculation box's address does not exist.
    auto post = server.client({{"Origin", server.base()}})
                    .Post("/calc", "calculation=People%3A%3AName+%3A%3D+%22x%22", "application/x-www-form-urlencoded");
    EXPECT_EQ(post->status, 404);
    EXPECT_THAT(server.client().Get("/table?t=People")->body, HasSubstr("Ada Lovelace"));
    EXPECT_THAT(server.client().Get("/table?t=People")->body, Not(HasSubstr("<textarea")));
    EXPECT_EQ(server.stop(), 143);
}

TEST_F(Serve, MediaAreServedAsStoredConvertedOrInRanges) {
    ServedDatabase server(db(), {});
    auto client = server.client();
    auto picture = client.Get("/media/picture?t=People&f=Photo");
    EXPECT_EQ(picture->get_header_value("Content-Type"), "image/png");
    EXPECT_EQ(picture->body, pngOfSize(kPhotoWidth, kPhotoHeight));

    auto whole = client.Get("/media/sound.wav?t=People&f=Tone");
    ASSERT_EQ(whole->status, 200) << whole->body;
    EXPECT_EQ(whole->body.substr(0, 4), "RIFF");
    // 16-bit mono at 44100 Hz: twice the samples, plus the header.
    EXPECT_GT(whole->body.size(), static_cast<size_t>(kToneSeconds * 44100 * 2));
    auto part = client.Get("/media/sound.wav?t=People&f=Tone", {{"Range", "bytes=100-199"}});
    EXPECT_EQ(part->status, 206);
    EXPECT_EQ(part->get_header_value("Content-Range"), "bytes 100-199/" + std::to_string(whole->body.size()));
    EXPECT_EQ(part->body, whole->body.substr(100, 100));

    auto waveform = client.Get("/media/waveform?t=People&f=Tone");
    EXPECT_EQ(waveform->get_header_value("Content-Type"), "image/jpeg");
    auto snd = client.Get("/media/stream?t=People&f=Tone&i=0");
    EXPECT_THAT(snd->get_header_value("Content-Disposition"), HasSubstr("attachment; filename=\"Tone.snd\""));
    EXPECT_EQ(snd->body.size(), 42 + static_cast<size_t>(kToneSeconds * 44100));
    EXPECT_EQ(client.Get("/media/stream?t=People&f=Tone&i=1")->status, 404);
    EXPECT_EQ(client.Get("/media/picture?t=People&f=Nothing")->status, 404);
}

TEST_F(Serve, WithoutThePlugInTheStreamsAreOfferedForDownload) {
    ServedDatabase server(db(), {}, {"--no-plugins"});
    std::string record = server.client().Get("/record?t=People")->body;
    EXPECT_THAT(record, Not(HasSubstr("<audio")));
    EXPECT_THAT(record, HasSubstr("snd </a> 64.6 KB"));
    EXPECT_THAT(record, HasSubstr("/media/stream?t=People&amp;f=Tone&amp;rec=1&amp;i=0"));
    EXPECT_EQ(server.client().Get("/media/sound.wav?t=People&f=Tone")->status, 404);
}

// Chromium with an extension whose content script measures what the page shows (pictures' natural
// sizes, the audio element's duration) into the page, and types a calculation into the box once.
class ServeInBrowser : public Serve {
protected:
    void SetUp() override {
        chromium_ = programOnPath("chromium");
        if (chromium_.empty()) GTEST_SKIP() << "chromium is not installed (scripts/install-deps.sh installs it)";
        Serve::SetUp();
    }

    std::string dumpDom(const std::string& url, const std::string& calculation) {
        std::filesystem::create_directories(folder / "extension");
        std::ofstream(folder / "extension" / "manifest.json")
            << R"({"manifest_version":3,"name":"measure","version":"1","content_scripts":[{"matches":["http://127.0.0.1/*"],"js":["measure.js"],"run_at":"document_idle"}]})";
        std::ofstream(folder / "extension" / "measure.js") << R"(
(async () => {
  const audio = document.querySelector('audio');
  const images = [...document.images];
  await Promise.all(images.map(i => i.complete ? 0 : new Promise(r => { i.onload = i.onerror = r; })));
  images.forEach(i => i.setAttribute('data-natural', i.naturalWidth + 'x' + i.naturalHeight));
  if (audio) {
    if (audio.readyState < 1) await new Promise(r => { audio.onloadedmetadata = audio.onerror = r; });
    audio.setAttribute('data-duration', String(audio.duration));
  }
  const box = document.getElementById('calculation');
  if (box && !location.search.includes('result=')) {
    box.value = )" + calculation + R"(;
    box.form.requestSubmit();
  }
})();
)";
        auto r = runProcess({chromium_, "--headless", "--no-sandbox", "--disable-gpu", "--no-first-run",
                             "--user-data-dir=" + (folder / "profile").string(),
                             "--load-extension=" + (folder / "extension").string(), "--virtual-time-budget=15000",
                             "--dump-dom", url});
        EXPECT_EQ(r.status, 0) << r.err;
        return r.out;
    }

    std::string chromium_;
};

TEST_F(ServeInBrowser, TablePageShowsThePictureTheSoundAndACalculationsResult) {
    ServedDatabase server(db(), {"--allow-calculations"});
    std::string dom = dumpDom(server.base() + "/table?t=People&token=" + server.token(),
                              R"x("People::Name := \"Grace \" & ( 6 * 7 )")x");
    // The calculation stored into the field; the page it came back to shows both.
    EXPECT_THAT(dom, HasSubstr("Stored into People::Name"));
    std::smatch m;
    EXPECT_TRUE(std::regex_search(dom, std::regex("<td><pre>Grace 42</pre></td>"))) << dom;
    EXPECT_TRUE(std::regex_search(dom, m, std::regex(R"x(src="/media/preview\?t=People&amp;f=Photo&amp;rec=1&amp;v=[0-9a-f]+"[^>]*data-natural="(\d+x\d+)")x")));
    EXPECT_EQ(m[1], std::to_string(kPhotoWidth) + "x" + std::to_string(kPhotoHeight));
    // The waveform is drawn one pixel narrower and lower than asked.
    EXPECT_TRUE(std::regex_search(dom, m, std::regex(R"x(src="/media/waveform\?t=People&amp;f=Tone&amp;rec=1"[^>]*data-natural="(\d+x\d+)")x")));
    EXPECT_EQ(m[1], "599x139");
    ASSERT_TRUE(std::regex_search(dom, m, std::regex(R"x(data-duration="([0-9.]+)")x"))) << dom;
    EXPECT_NEAR(std::stod(m[1]), kToneSeconds, 0.01);
}

}  // namespace
}  // namespace vdtest
