// What this process has left lying around for now: the temporary files it made and has not yet
// removed. Two things read it when the process cannot clean up the ordinary way:
// - a signal that ends the process (Ctrl-C, kill) removes every recorded file before it goes on;
// - a process killed outright leaves its list behind in a ledger file, locked while the process
//   lives, and the next plug-in to start removes what a ledger whose owner is gone still lists.
// The ledger exists only while something is recorded, so no descriptor is held between calls.
#pragma once

#include <string>

namespace vd::platform {

// One recorded file; the record is dropped when this goes away (after its owner removed the file,
// or handed it on).
class TemporaryFileRecord {
public:
    TemporaryFileRecord() = default;
    ~TemporaryFileRecord() { Forget(); }
    TemporaryFileRecord(TemporaryFileRecord&& other) noexcept : slot_(other.slot_) { other.slot_ = -1; }
    TemporaryFileRecord& operator=(TemporaryFileRecord&& other) noexcept;
    TemporaryFileRecord(const TemporaryFileRecord&) = delete;
    TemporaryFileRecord& operator=(const TemporaryFileRecord&) = delete;

    // Records an absolute path that this process has just made. When the table is full the file is
    // simply not recorded: it is still removed by its owner on every ordinary path.
    static TemporaryFileRecord Make(const std::string& path);
    void Forget() noexcept;

private:
    int slot_ = -1;
};

// Removes every recorded file and this process's ledger. Only async-signal-safe calls.
void RemoveRecordedFilesNow() noexcept;

// Removes the files listed by ledgers in the temporary items folder whose processes are gone.
// A live process's ledger is locked, so its files stay. Failures are silent: this is housekeeping.
void SweepAbandonedTemporaryFiles() noexcept;

}  // namespace vd::platform
