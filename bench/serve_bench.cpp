// vdhost serve's table page of 1,000 records, each with a picture (a 1600 x 1200 JPEG embedded by
// Vandrel_InsertImage, too large to be its own preview) and a text: the time to fetch the page's
// HTML over loopback with a plain HTTP client, and the page with every preview it shows, once the
// server has seen them (its previews made and cached). The database is built by a vdhost script
// that makes the records with NewRecord; the server is a whole vdhost process, as a user starts it.
// Medians of 20 fetches after one warm-up. Target: the page <= 200 ms.
//   serve_bench VDHOST PLUGIN_DIR
#include "timing.h"

#include <httplib.h>

#include <csignal>
#include <cstdio>
#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;
using namespace vdbench;

constexpr int kRecords = 1000;
constexpr int kFetches = 20;

// vdhost serve running with its standard output in a pipe, ended with SIGTERM.
class Server {
public:
    explicit Server(const std::vector<std::string>& args) {
        int out[2];
        if (pipe(out) != 0) return;
        std::vector<char*> argv;
        for (const auto& a : args) argv.push_back(const_cast<char*>(a.c_str()));
        argv.push_back(nullptr);
        posix_spawn_file_actions_t actions;
        posix_spawn_file_actions_init(&actions);
        posix_spawn_file_actions_adddup2(&actions, out[1], 1);
        posix_spawn_file_actions_addclose(&actions, out[0]);
        posix_spawn_file_actions_addopen(&actions, 2, "/dev/null", O_WRONLY, 0);
        if (posix_spawnp(&pid_, argv[0], &actions, nullptr, argv.data(), environ) != 0) pid_ = -1;
        posix_spawn_file_actions_destroy(&actions);
        close(out[1]);
        // The first line says where it listens: "vdhost serve: open http://127.0.0.1:PORT/?token=T".
        std::string line;
        char c;
        while (pid_ > 0 && read(out[0], &c, 1) == 1 && c != '\n') line += c;
        close(out[0]);
        std::smatch m;
        if (std::regex_search(line, m, std::regex(R"(127\.0\.0\.1:(\d+)/\?token=([0-9a-f]+))")))
            port_ = std::stoi(m[1]), token_ = m[2];
    }
    ~Server() {
        if (pid_ <= 0) return;
        kill(pid_, SIGTERM);
        int status = 0;
        waitpid(pid_, &status, 0);
    }
    int port() const { return port_; }
    std::string cookie() const { return "vdhost_token_" + std::to_string(port_) + "=" + token_; }

private:
    pid_t pid_ = -1;
    int port_ = 0;
    std::string token_;
};

bool buildDatabase(const std::string& vdhost, const std::string& plugins, const fs::path& folder,
                   const std::string& db) {
    const std::string jpeg = (folder / "photo.jpg").string();
    if (Run({"ffmpeg", "-nostdin", "-y", "-f", "lavfi", "-i", "testsrc2=size=1600x1200", "-frames:v", "1", "-q:v", "5",
             jpeg}) < 0) {
        std::fprintf(stderr, "ffmpeg could not make the test picture\n");
        return false;
    }
    const fs::path script = folder / "records.vdcalc";
    {
        std::ofstream out(script);
        out << "define Photos::Photo container\n$photo := Vandrel_InsertImage ( \"" << jpeg << "\" ; 0 )\n";
        for (int i = 0; i < kRecords; ++i)
            out << "$id := NewRecord ( \"Photos\" )\nPhotos::Photo := $photo\nPhotos::Caption := \"Photo \" & $id\n";
    }
    if (Run({vdhost, "--plugins", plugins, "--db", db, "run", script.string()}) < 0) {
        std::fprintf(stderr, "vdhost could not build the database\n");
        return false;
    }
    return true;
}

}  // namespace

int main(int argc, char** argv) {
    std::string vdhost, plugins;
    if (!ReadHostBenchArguments(argc, argv, vdhost, plugins)) return 2;
    const fs::path folder = MakeBenchFolder("serve-bench");
    if (folder.empty()) return 1;
    const std::string db = (folder / "bench.vddb").string();
    int status = 1;
    if (buildDatabase(vdhost, plugins, folder, db)) {
        Server server({vdhost, "--plugins", plugins, "--db", db, "serve", "--port", "0"});
        httplib::Client client("127.0.0.1", server.port());
        client.set_read_timeout(60, 0);
        const httplib::Headers headers{{"Cookie", server.cookie()}};
        auto warm = client.Get("/table?t=Photos", headers);
        // Every record's row, with its picture's preview.
        size_t rows = 0, previews = 0;
        if (server.port() && warm && warm->status == 200) {
            for (size_t at = 0; (at = warm->body.find("/record?t=Photos&amp;rec=", at)) != std::string::npos; ++at) ++rows;
            for (size_t at = 0; (at = warm->body.find("/media/preview?", at)) != std::string::npos; ++at) ++previews;
        }
        if (rows != kRecords || previews != kRecords) {
            std::fprintf(stderr, "the table page does not list the %d records with their pictures (%zu rows, %zu previews)\n",
                         kRecords, rows, previews);
        } else {
            // The previews' addresses as the page gives them, its "&amp;" undone.
            std::vector<std::string> previewPaths;
            const std::regex address("src=\"(/media/preview\\?[^\"]*)\"");
            for (std::sregex_iterator m(warm->body.begin(), warm->body.end(), address), end; m != end; ++m)
                previewPaths.push_back(std::regex_replace((*m)[1].str(), std::regex("&amp;"), "&"));
            size_t previewBytes = 0;
            const auto fetchPreviews = [&] {
                previewBytes = 0;
                for (const std::string& path : previewPaths) {
                    auto picture = client.Get(path, headers);
                    if (!picture || picture->status != 200) return false;
                    previewBytes += picture->body.size();
                }
                return !previewPaths.empty();
            };
            bool ok = fetchPreviews();  // the previews are made here, once
            std::vector<double> pageTimes, allTimes;
            for (int i = 0; i < kFetches && ok; ++i) {
                auto start = Clock::now();
                auto page = client.Get("/table?t=Photos", headers);
                pageTimes.push_back(Seconds(Clock::now() - start));
                ok = page && page->status == 200;
                start = Clock::now();
                ok = ok && client.Get("/table?t=Photos", headers) && fetchPreviews();
                allTimes.push_back(Seconds(Clock::now() - start));
            }
            if (!ok) {
                std::fprintf(stderr, "a page or a preview could not be fetched\n");
            } else {
                std::printf("%-36s %12s %12s\n", "fetch", "bytes", "median (ms)");
                std::printf("%-36s %12zu %12.1f\n", "table of 1000 records", warm->body.size(), Median(pageTimes) * 1000);
                std::printf("%-36s %12zu %12.1f\n", "the table with its 1000 previews", warm->body.size() + previewBytes,
                            Median(allTimes) * 1000);
                status = 0;
            }
        }
    }
    fs::remove_all(folder);
    return status;
}
