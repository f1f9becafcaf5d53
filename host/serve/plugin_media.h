// What only the plug-in can make of a container, made once and kept while the server runs: a sound
// as a WAV file the audio element plays and a picture of its waveform, a picture of a kind browsers
// do not show as a JPEG. Everything here runs on the session's thread (see session_worker.h).
#pragma once

#include "session/session.h"
#include "stream_kinds.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>

namespace vdhost::serve {

// A private folder for the converted files, removed with everything in it when the server ends.
class TemporaryFolder {
public:
    TemporaryFolder();  // throws std::runtime_error
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;
    const std::filesystem::path& path() const { return path_; }

private:
    std::filesystem::path path_;
};

// An open file that stays readable while a response streams it, even after it is removed.
class OpenFile {
public:
    explicit OpenFile(const std::filesystem::path& path);  // throws std::runtime_error
    ~OpenFile();
    OpenFile(const OpenFile&) = delete;
    OpenFile& operator=(const OpenFile&) = delete;
    uint64_t size() const { return size_; }
    // Reads up to length bytes at offset; the count read, 0 at the end or on failure.
    size_t read(uint64_t offset, char* into, size_t length) const;

private:
    int fd_ = -1;
    uint64_t size_ = 0;
};

struct SoundMedia {
    std::shared_ptr<OpenFile> wav;       // the sound converted to WAV
    std::optional<ByteSlice> waveform;   // a JPEG of its waveform
    std::string problem;                 // why either is missing
};

struct PictureMedia {
    std::optional<ByteSlice> picture;
    std::string problem;
};

class PluginMedia {
public:
    static constexpr int kWaveformWidth = 600;   // the picture is one pixel narrower and lower
    static constexpr int kWaveformHeight = 140;

    PluginMedia(Session& session, std::filesystem::path folder);

    // Asks the plug-in once for the settings of 16-bit WAV files, answering the settings dialog
    // through a script of our own. Without them no sound is converted. Call before the server's
    // threads start: it changes the environment for that moment.
    void prepare();

    // For a container with a "snd " stream.
    const SoundMedia& sound(const FMX_Data& container);
    // For a container with a picture only the plug-in can convert.
    const PictureMedia& picture(const FMX_Data& container);

private:
    FMX_Data callPlugin(const std::u16string& calculation, const std::map<std::u16string, FMX_Data>& variables,
                        std::string& problem);
    std::string lastError();

    Session& session_;
    std::filesystem::path folder_;
    std::optional<std::u16string> waveSettings_;
    std::string waveSettingsProblem_;
    std::map<std::string, SoundMedia> sounds_;
    std::map<std::string, PictureMedia> pictures_;
};

// A key that tells containers apart by their streams' types and bytes.
std::string containerFingerprint(const FMX_BinaryData& binary);

}  // namespace vdhost::serve
