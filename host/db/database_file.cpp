#include "database_file.h"

#include "database_error.h"
#include "schema.h"

#include <atomic>
#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <optional>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vdhost::db {
namespace fs = std::filesystem;

namespace {

// How long a writer waits for other processes' writes before giving up. A storing statement holds
// the write lock while it evaluates, so this allows for some long calculations queued ahead.
constexpr int kBusyTimeoutMs = 30000;

constexpr std::string_view kSqliteMagic{"SQLite format 3\0", 16};
constexpr size_t kSqliteHeaderSize = 100;
constexpr size_t kApplicationIdOffset = 68;

[[noreturn]] void refuse(const std::string& name, const std::string& reason) {
    throw DatabaseError("\"" + name + "\" is not a vdhost database: " + reason + ". It was left untouched.");
}

// The file as an SQLite URI, so that parameters such as immutable can be given.
std::string fileUri(const fs::path& location, const char* parameters) {
    static constexpr char kHex[] = "0123456789ABCDEF";
    std::string uri = "file:";
    for (unsigned char c : location.string()) {
        if (std::isalnum(c) || c == '/' || c == '-' || c == '_' || c == '.' || c == '~') {
            uri.push_back(static_cast<char>(c));
        } else {
            uri.push_back('%');
            uri.push_back(kHex[c >> 4]);
            uri.push_back(kHex[c & 15]);
        }
    }
    return uri + "?" + parameters;
}

// The first bytes of the file, read without SQLite.
std::string readHeader(const fs::path& location, const std::string& name) {
    std::error_code ec;
    const fs::file_status status = fs::status(location, ec);
    if (ec) refuse(name, "it cannot be examined (" + ec.message() + ")");
    if (!fs::is_regular_file(status)) refuse(name, "it is not a regular file");
    std::ifstream in(location, std::ios::binary);
    if (!in) refuse(name, std::string("it cannot be read (") + std::strerror(errno) + ")");
    std::string header(kSqliteHeaderSize, '\0');
    in.read(header.data(), static_cast<std::streamsize>(header.size()));
    header.resize(static_cast<size_t>(in.gcount()));
    return header;
}

uint32_t bigEndianAt(std::string_view bytes, size_t offset) {
    uint32_t value = 0;
    for (size_t i = 0; i < 4; ++i) value = (value << 8) | static_cast<unsigned char>(bytes[offset + i]);
    return value;
}

// Removes the temporary database and any side files SQLite left beside it.
class TemporaryFile {
public:
    explicit TemporaryFile(fs::path path) : path_(std::move(path)) {}
    ~TemporaryFile() {
        std::error_code ec;
        for (const char* suffix : {"", "-journal", "-wal", "-shm"}) fs::remove(path_.string() + suffix, ec);
    }
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    const fs::path& path() const { return path_; }

private:
    fs::path path_;
};

fs::path temporaryNameFor(const fs::path& location) {
    static std::atomic<unsigned> counter{0};
    fs::path temp = location;
    temp.replace_filename("." + location.filename().string() + ".new-" + std::to_string(::getpid()) + "-" +
                          std::to_string(counter++));
    return temp;
}

// Puts the finished file in place unless something is there already: a hard link where the file
// system has them, else a rename that refuses to replace.
bool linkIntoPlace(const fs::path& temp, const fs::path& location, const std::string& name) {
    if (::link(temp.c_str(), location.c_str()) == 0) return true;
    if (errno == EEXIST) return false;
    if (::renameat2(AT_FDCWD, temp.c_str(), AT_FDCWD, location.c_str(), RENAME_NOREPLACE) == 0) return true;
    if (errno == EEXIST) return false;
    throw DatabaseError("Cannot create \"" + name + "\": " + std::strerror(errno));
}

// A file that keeps changing under the immutable view is looked at this often before its verdict
// is believed.
constexpr int kLooksWhileChanging = 5;

// When and how large: enough to tell that a file changed between two looks.
struct FileStamp {
    int64_t seconds = 0, nanoseconds = 0, size = -1;
    bool operator==(const FileStamp&) const = default;
};

FileStamp stampOf(const fs::path& location) {
    struct stat st {};
    if (::stat(location.c_str(), &st) != 0) return {};
    return {st.st_mtim.tv_sec, st.st_mtim.tv_nsec, st.st_size};
}

bool walBeside(const fs::path& location) {
    std::error_code ec;
    return fs::exists(location.string() + "-wal", ec);
}

// Why the file is not ours, judged through a connection opened with the given URI parameters.
std::optional<std::string> verdictThrough(const fs::path& location, const std::string& name,
                                          const char* parameters) {
    std::unique_ptr<Connection> connection;
    try {
        connection = std::make_unique<Connection>(fileUri(location, parameters),
                                                  SQLITE_OPEN_READONLY | SQLITE_OPEN_URI, name);
    } catch (const DatabaseError& e) {
        return e.what();
    }
    sqlite3_busy_timeout(connection->handle(), kBusyTimeoutMs);
    return whyNotOurs(*connection);
}

std::optional<std::string> immutableVerdict(const fs::path& location, const std::string& name) {
    return verdictThrough(location, name, "mode=ro&immutable=1");
}

std::optional<std::string> sharedVerdict(const fs::path& location, const std::string& name) {
    return verdictThrough(location, name, "mode=ro");
}

}  // namespace

void inspectDatabaseFile(const fs::path& location, const std::string& name) {
    const std::string header = readHeader(location, name);
    if (header.empty()) refuse(name, "the file is empty");
    if (header.size() < kSqliteHeaderSize || !header.starts_with(kSqliteMagic))
        refuse(name, "file is not a database");
    if (bigEndianAt(header, kApplicationIdOffset) != kApplicationId)
        refuse(name, "it is an SQLite database without vdhost metadata");

    // The immutable view reads the main file alone: no locks, no side files, so a file that is not
    // ours is never touched. It is exact only while nobody writes, though: another vdhost may be
    // copying its WAL back into the file as we read, and the view then sees pages of two states
    // ("malformed"). So a refusal is only believed once the file was still; while a WAL is beside
    // it, the file is in use and is judged as SQLite's readers see it, under a shared lock.
    for (int look = 1;; ++look) {
        const auto before = stampOf(location);
        auto reason = immutableVerdict(location, name);
        if (!reason) return;
        if (walBeside(location)) reason = sharedVerdict(location, name);
        else if (look < kLooksWhileChanging && stampOf(location) != before) continue;
        if (reason) refuse(name, *reason);
        return;
    }
}

bool createDatabaseFile(const fs::path& location, const std::string& name) {
    TemporaryFile temp(temporaryNameFor(location));
    {
        Connection connection(temp.path().string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_CREATE, name);
        createSchema(connection);
        // Switched last, once everything is committed to the file itself: the WAL it leaves is
        // empty, so nothing is lost with it when the temporary file's side files are removed.
        connection.exec("PRAGMA journal_mode = WAL", "Cannot create");
    }
    return linkIntoPlace(temp.path(), location, name);
}

std::unique_ptr<Connection> openDatabaseFile(const fs::path& location, const std::string& name) {
    auto connection =
        std::make_unique<Connection>(location.string(), SQLITE_OPEN_READWRITE | SQLITE_OPEN_NOMUTEX, name);
    sqlite3_busy_timeout(connection->handle(), kBusyTimeoutMs);
    connection->checkpointWhenClosed();
    // WAL with NORMAL sync commits without waiting for the disk: a write stays well under a
    // millisecond, and a crash of the process loses nothing; a power failure may lose the last
    // writes but never corrupts the file.
    connection->exec("PRAGMA synchronous = NORMAL");
    connection->exec("PRAGMA foreign_keys = ON");
    // Keeps the WAL from staying at the size of the largest container ever written.
    connection->exec("PRAGMA journal_size_limit = 8388608");
    // The file was inspected before; a file swapped in since then is still refused here.
    if (auto reason = whyNotOurs(*connection)) refuse(name, *reason);
    return connection;
}

}  // namespace vdhost::db
