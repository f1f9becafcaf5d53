// The one way the sound functions make temporary files: "temp-" + the tick count + an extension,
// in the user's private temporary folder, created with O_EXCL, and owned. The owner removes the file
// when it goes away unless the file was handed on, so no path through a function (failure and
// exception included) leaves one behind.
#pragma once

#include "platform/common/temporary_file_ledger.h"
#include "platform/media/errors.h"

#include <string>
#include <string_view>

namespace vd::sound {

// The whole name stays within the length a Mac file name could have.
inline constexpr size_t kTemporaryNameLimit = 63;

class TemporaryFile {
public:
    TemporaryFile() = default;
    ~TemporaryFile();
    TemporaryFile(TemporaryFile&& other) noexcept;
    TemporaryFile& operator=(TemporaryFile&& other) noexcept;  // removes the file held before
    TemporaryFile(const TemporaryFile&) = delete;
    TemporaryFile& operator=(const TemporaryFile&) = delete;

    // Makes an empty file "temp-<ticks><extension>" (the extension cut so the name fits the limit).
    // A name that exists already is not retried within the same tick: we wait for the counter to
    // move on, so names stay in the order they were asked for. The folder's own code when it cannot
    // be had; -48 when no free name came up for several seconds.
    static media::Status Create(std::string_view extension, TemporaryFile& file);

    bool Held() const { return !path_.empty(); }
    const std::string& Path() const { return path_; }

    // The file is someone else's now: it is no longer removed here.
    std::string Release();
    // Removes the file now; the status of the removal.
    media::Status Remove();

private:
    std::string path_;
    platform::TemporaryFileRecord record_;  // so that a stop signal or the next start removes it too
};

}  // namespace vd::sound
