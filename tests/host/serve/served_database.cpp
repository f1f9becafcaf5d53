#include "served_database.h"

#include "support/process.h"

#include <api/values.h>
#include <db/database.h>

#include <chrono>
#include <csignal>
#include <stdexcept>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace vdtest {

namespace {

uint32_t crc32(const std::string& bytes) {
    uint32_t c = 0xFFFFFFFFu;
    for (unsigned char b : bytes) {
        c ^= b;
        for (int k = 0; k < 8; ++k) c = c & 1 ? 0xEDB88320u ^ (c >> 1) : c >> 1;
    }
    return ~c;
}

void putBigEndian(std::string& out, uint32_t v, int bytes = 4) {
    for (int i = bytes - 1; i >= 0; --i) out += static_cast<char>((v >> (8 * i)) & 0xFF);
}

void chunk(std::string& png, const std::string& type, const std::string& data) {
    putBigEndian(png, static_cast<uint32_t>(data.size()));
    png += type + data;
    putBigEndian(png, crc32(type + data));
}

}  // namespace

std::string pngOfSize(int width, int height) {
    std::string raw;  // each row: filter 0, then RGB
    for (int y = 0; y < height; ++y) {
        raw += '\0';
        for (int x = 0; x < width; ++x) raw += std::string{char(200), char(x * 6), char(y * 10)};
    }
    std::string z = "\x78\x01";
    for (size_t at = 0; at < raw.size() || at == 0; at += 65535) {
        size_t n = std::min<size_t>(65535, raw.size() - at);
        z += static_cast<char>(at + n >= raw.size() ? 1 : 0);
        z += static_cast<char>(n & 0xFF);
        z += static_cast<char>(n >> 8);
        z += static_cast<char>(~n & 0xFF);
        z += static_cast<char>((~n >> 8) & 0xFF);
        z += raw.substr(at, n);
    }
    uint32_t a = 1, b = 0;
    for (unsigned char c : raw) {
        a = (a + c) % 65521;
        b = (b + a) % 65521;
    }
    putBigEndian(z, b << 16 | a);
    std::string header;
    putBigEndian(header, static_cast<uint32_t>(width));
    putBigEndian(header, static_cast<uint32_t>(height));
    header += std::string{8, 2, 0, 0, 0};  // 8-bit RGB
    std::string png = "\x89PNG\r\n\x1a\n";
    chunk(png, "IHDR", header);
    chunk(png, "IDAT", z);
    chunk(png, "IEND", "");
    return png;
}

void buildPeopleDatabase(const std::filesystem::path& database) {
    std::vector<std::string> argv = {VDHOST_EXE, "--db", database.string(), "--plugins", VD_PLUGIN_DIR, "set",
                                     "People::Name", "\"Ada Lovelace\""};
    auto r = runProcess(argv);
    ASSERT_EQ(r.status, 0) << r.err;
    argv.resize(6);
    argv.insert(argv.end(), {"People::Tone", "Vandrel_CreateSound ( \"sine\" ; " + std::to_string(kToneSeconds) + " ; \"A4\" )"});
    r = runProcess(argv);
    ASSERT_EQ(r.status, 0) << r.err;
    // A "PNGf" stream, as a picture pasted into a container keeps it.
    std::string png = pngOfSize(kPhotoWidth, kPhotoHeight);
    FMX_BinaryData binary;
    binary.streams.push_back({vdhost::fourCharCode("PNGf"), std::make_shared<const vdhost::StreamBytes>(vdhost::Bytes(png.begin(), png.end()))});
    vdhost::db::Database(database).write("People", "Photo", vdhost::makeContainer(std::move(binary)));
}

ServedDatabase::ServedDatabase(const std::filesystem::path& database, const std::vector<std::string>& serveArguments,
                               const std::vector<std::string>& globalArguments) {
    std::vector<std::string> argv = {VDHOST_EXE, "--db", database.string(), "--plugins", VD_PLUGIN_DIR};
    argv.insert(argv.end(), globalArguments.begin(), globalArguments.end());
    argv.push_back("serve");
    argv.insert(argv.end(), {"--port", "0"});
    argv.insert(argv.end(), serveArguments.begin(), serveArguments.end());
    process_.emplace(argv);
    // The first line names the address: "... http://127.0.0.1:PORT/?token=TOKEN".
    std::string line;
    for (const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(30);
         (line = process_->outputSoFar()).find('\n') == std::string::npos && std::chrono::steady_clock::now() < deadline;) {
        siginfo_t ended{};  // looked at, not reaped: stop() waits for it
        if (waitid(P_PID, id_t(process_->pid()), &ended, WEXITED | WNOHANG | WNOWAIT) == 0 && ended.si_pid != 0) break;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
    }
    line = line.substr(0, line.find('\n'));
    size_t colon = line.find("127.0.0.1:"), token = line.find("token=");
    if (colon == std::string::npos || token == std::string::npos) {
        stop();
        throw std::runtime_error("vdhost serve did not start: " + line);
    }
    port_ = std::stoi(line.substr(colon + 10));
    token_ = line.substr(token + 6, 64);
}

int ServedDatabase::stop() {
    if (!process_) return -1;
    kill(process_->pid(), SIGTERM);
    const int status = process_->finish().status;
    process_.reset();
    return status;
}

ServedDatabase::~ServedDatabase() { stop(); }

httplib::Client ServedDatabase::client(const httplib::Headers& extra) const {
    httplib::Client c("127.0.0.1", port_);
    httplib::Headers headers = {{"Cookie", cookie()}};
    headers.insert(extra.begin(), extra.end());
    c.set_default_headers(headers);
    c.set_read_timeout(60, 0);
    return c;
}

}  // namespace vdtest
