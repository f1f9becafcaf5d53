#include "platform/common/temporary_file_ledger.h"

#include "platform/common/temporary_folder.h"
#include "platform/common/unique_fd.h"

#include <atomic>
#include <cerrno>
#include <cstring>
#include <mutex>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <stdlib.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vd::platform {

namespace {

// A call holds a few temporary files at a time; 128 leaves room for background work to come.
constexpr int kSlotCount = 128;
constexpr size_t kPathCapacity = 4096;
// A ledger larger than this was not written by us.
constexpr off_t kLedgerSizeLimit = off_t(kSlotCount) * off_t(kPathCapacity);

constexpr char kLedgerPrefix[] = ".ledger-";
constexpr char kNewLedgerPrefix[] = ".new-ledger-";

enum SlotState : int { kFree = 0, kFilling = 1, kRecorded = 2 };

// The signal path reads these without a lock: a slot's path is written only while the slot is
// kFilling, and read only while it is kRecorded.
struct Slot {
    std::atomic<int> state{kFree};
    char path[kPathCapacity];
};

Slot gSlots[kSlotCount];

// Keeps the ledger file in step with the slots. Never taken on the signal path.
std::mutex gLedgerMutex;
std::atomic<int> gLedgerFd{-1};
char gLedgerPath[kPathCapacity];  // written only while no ledger is published in gLedgerFd

bool PathsNamedLikeOurs(std::string_view path) {
    const size_t slash = path.rfind('/');
    const std::string_view name = slash == std::string_view::npos ? path : path.substr(slash + 1);
    // Temporary files are "temp-..."; files written beside their target are ".<name>.XXXXXX".
    return name.substr(0, 5) == "temp-" || (name.size() > 1 && name[0] == '.');
}

// A new ledger, locked before it takes the name a sweeper looks for, so that a sweeper never
// mistakes it for one whose process has gone.
int OpenLedger() {
    std::string folder;
    if (MakeTemporaryFolder(folder) != util::kNoError) return -1;
    std::string pattern = folder + "/" + kNewLedgerPrefix + "XXXXXX";
    std::vector<char> name(pattern.begin(), pattern.end());
    name.push_back('\0');
    UniqueFd fd(::mkostemp(name.data(), O_CLOEXEC));
    if (!fd.Valid() || ::flock(fd.Get(), LOCK_EX | LOCK_NB) != 0) {
        if (fd.Valid()) ::unlink(name.data());
        return -1;
    }
    const std::string made(name.data());
    const std::string final = folder + "/" + kLedgerPrefix + made.substr(made.size() - 6);
    if (final.size() >= kPathCapacity || ::rename(made.c_str(), final.c_str()) != 0) {
        ::unlink(made.c_str());
        return -1;
    }
    std::memcpy(gLedgerPath, final.c_str(), final.size() + 1);
    return fd.Release();
}

// No ledger is kept while nothing is recorded: it would hold a descriptor between calls.
void CloseLedger() noexcept {
    const int fd = gLedgerFd.exchange(-1);
    if (fd < 0) return;
    ::unlink(gLedgerPath);
    ::close(fd);
}

// Rewrites the ledger from the slots: the recorded paths, each ended by a NUL.
void RewriteLedger() noexcept {
    int fd = gLedgerFd.load();
    off_t offset = 0;
    for (Slot& slot : gSlots) {
        if (slot.state.load(std::memory_order_acquire) != kRecorded) continue;
        if (fd < 0) {
            try {
                fd = OpenLedger();
            } catch (...) {
                fd = -1;
            }
            if (fd < 0) return;
            gLedgerFd.store(fd);
        }
        const size_t size = std::strlen(slot.path) + 1;
        if (::pwrite(fd, slot.path, size, offset) != ssize_t(size)) return;
        offset += off_t(size);
    }
    if (offset == 0)
        CloseLedger();
    else
        (void)::ftruncate(fd, offset);
}

void RemoveListedFiles(int ledger) {
    struct stat info {};
    // A ledger already swept by someone else has no name any more.
    if (::fstat(ledger, &info) != 0 || info.st_nlink == 0 || info.st_size > kLedgerSizeLimit) return;
    std::string text(size_t(info.st_size), '\0');
    if (::pread(ledger, text.data(), text.size(), 0) != ssize_t(text.size())) return;
    size_t start = 0;
    while (start < text.size()) {
        size_t end = text.find('\0', start);
        if (end == std::string::npos) end = text.size();
        const std::string path = text.substr(start, end - start);
        struct stat file {};
        if (path.size() > 1 && path[0] == '/' && PathsNamedLikeOurs(path) && ::lstat(path.c_str(), &file) == 0 &&
            S_ISREG(file.st_mode)) {
            ::unlink(path.c_str());
        }
        start = end + 1;
    }
}

}  // namespace

TemporaryFileRecord& TemporaryFileRecord::operator=(TemporaryFileRecord&& other) noexcept {
    if (this != &other) {
        Forget();
        slot_ = other.slot_;
        other.slot_ = -1;
    }
    return *this;
}

TemporaryFileRecord TemporaryFileRecord::Make(const std::string& path) {
    TemporaryFileRecord record;
    if (path.size() >= kPathCapacity || path.find('\0') != std::string::npos) return record;
    for (int i = 0; i < kSlotCount; ++i) {
        int expected = kFree;
        if (!gSlots[i].state.compare_exchange_strong(expected, kFilling)) continue;
        std::memcpy(gSlots[i].path, path.c_str(), path.size() + 1);
        gSlots[i].state.store(kRecorded, std::memory_order_release);
        record.slot_ = i;
        std::lock_guard lock(gLedgerMutex);
        RewriteLedger();
        break;
    }
    return record;
}

void TemporaryFileRecord::Forget() noexcept {
    if (slot_ < 0) return;
    gSlots[slot_].state.store(kFree, std::memory_order_release);
    slot_ = -1;
    std::lock_guard lock(gLedgerMutex);
    RewriteLedger();
}

void RemoveRecordedFilesNow() noexcept {
    for (Slot& slot : gSlots)
        if (slot.state.load(std::memory_order_acquire) == kRecorded) ::unlink(slot.path);
    // The process may go on (an interrupted calculation at a prompt); its ledger is made afresh
    // once the interrupted call has let go of its records.
    if (gLedgerFd.load() >= 0) ::unlink(gLedgerPath);
}

void SweepAbandonedTemporaryFiles() noexcept {
    try {
        std::string folder;
        if (MakeTemporaryFolder(folder) != util::kNoError) return;
        const UniqueFd folderFd(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
        if (!folderFd.Valid()) return;
        FolderStream stream(::fdopendir(::dup(folderFd.Get())));
        if (!stream) return;
        std::vector<std::string> ledgers;
        while (const dirent* entry = ::readdir(stream.get())) {
            if (std::strncmp(entry->d_name, kLedgerPrefix, sizeof kLedgerPrefix - 1) == 0) ledgers.emplace_back(entry->d_name);
        }
        for (const std::string& name : ledgers) {
            const UniqueFd ledger(::openat(folderFd.Get(), name.c_str(), O_RDWR | O_NOFOLLOW | O_CLOEXEC));
            if (!ledger.Valid()) continue;
            // Locked while its process lives (our own included: a lock belongs to the open file).
            if (::flock(ledger.Get(), LOCK_EX | LOCK_NB) != 0) continue;
            RemoveListedFiles(ledger.Get());
            ::unlinkat(folderFd.Get(), name.c_str(), 0);
        }
    } catch (...) {
        // Out of memory while tidying up: leave it for the next start.
    }
}

}  // namespace vd::platform
