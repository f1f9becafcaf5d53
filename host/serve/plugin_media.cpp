#include "plugin_media.h"

#include "api/function_registry.h"
#include "api/text_codec.h"
#include "api/values.h"
#include "calc/calc_error.h"
#include "calc/interruption.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <stdexcept>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace vdhost::serve {

namespace fs = std::filesystem;

namespace {

constexpr const char* kUiScriptVariable = "VANDREL_UI_SCRIPT";

bool registered(std::u16string_view name) { return FunctionRegistry::instance().find(name) != nullptr; }

bool isStatusText(const FMX_Data& value) {
    return !isContainer(value) && textOf(value).units.rfind(u"$-", 0) == 0;
}

// Sets an environment variable for the life of the object and puts the old value back after.
class EnvironmentOverride {
public:
    EnvironmentOverride(const char* name, const std::string& value) : name_(name) {
        if (const char* old = std::getenv(name)) previous_ = old;
        setenv(name, value.c_str(), 1);
    }
    ~EnvironmentOverride() {
        if (previous_) setenv(name_, previous_->c_str(), 1);
        else unsetenv(name_);
    }
    EnvironmentOverride(const EnvironmentOverride&) = delete;
    EnvironmentOverride& operator=(const EnvironmentOverride&) = delete;

private:
    const char* name_;
    std::optional<std::string> previous_;
};

}  // namespace

TemporaryFolder::TemporaryFolder() {
    std::string pattern = (fs::temp_directory_path() / "vdhost-serve-XXXXXX").string();
    if (!mkdtemp(pattern.data()))
        throw std::runtime_error("cannot make a temporary folder in " + fs::temp_directory_path().string() + ": " +
                                 std::strerror(errno));
    path_ = pattern;
}

TemporaryFolder::~TemporaryFolder() {
    std::error_code ignored;
    fs::remove_all(path_, ignored);
}

OpenFile::OpenFile(const fs::path& path) {
    fd_ = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat info {};
    if (fd_ < 0 || ::fstat(fd_, &info) != 0) {
        int error = errno;
        if (fd_ >= 0) ::close(fd_);
        throw std::runtime_error("cannot open " + path.string() + ": " + std::strerror(error));
    }
    size_ = static_cast<uint64_t>(info.st_size);
}

OpenFile::~OpenFile() { ::close(fd_); }

size_t OpenFile::read(uint64_t offset, char* into, size_t length) const {
    for (;;) {
        ssize_t n = ::pread(fd_, into, length, static_cast<off_t>(offset));
        if (n >= 0) return static_cast<size_t>(n);
        if (errno != EINTR) return 0;
    }
}

std::string containerFingerprint(const FMX_BinaryData& binary) {
    std::string key;
    for (const auto& s : binary.streams) {
        std::string_view bytes = s.bytes ? std::string_view(reinterpret_cast<const char*>(s.bytes->data()), s.size())
                                         : std::string_view();
        key += fourCharText(s.type) + ":" + std::to_string(s.size()) + ":" +
               std::to_string(std::hash<std::string_view>{}(bytes)) + ";";
    }
    return key;
}

PluginMedia::PluginMedia(Session& session, fs::path folder) : session_(session), folder_(std::move(folder)) {}

FMX_Data PluginMedia::callPlugin(const std::u16string& calculation, const std::map<std::u16string, FMX_Data>& variables,
                                 std::string& problem) {
    calc::Variables locals;
    for (const auto& [name, value] : variables) locals.set(name, value);
    try {
        FMX_Data result = session_.evaluate(calculation, locals);
        if (isStatusText(result)) problem = utf8Of(result);
        return result;
    } catch (const calc::Interrupted&) {
        throw;
    } catch (const std::exception& e) {
        problem = e.what();
        return {};
    }
}

std::string PluginMedia::lastError() {
    std::string ignored;
    FMX_Data error = callPlugin(u"Vandrel_GetLastError", {}, ignored);
    return utf8Of(error);
}

void PluginMedia::prepare() {
    if (!registered(u"Vandrel_SoundFormatDialog") || !registered(u"Vandrel_ConvertSound")) {
        waveSettingsProblem_ = "the plug-in that converts sounds is not loaded";
        return;
    }
    fs::path script = folder_ / "wave-settings.answers";
    {
        std::ofstream out(script);
        out << "ok size=16\n";
        if (!out) {
            waveSettingsProblem_ = "cannot write " + script.string();
            return;
        }
    }
    std::string problem;
    FMX_Data settings;
    {
        EnvironmentOverride answers(kUiScriptVariable, script.string());
        settings = callPlugin(u"Vandrel_SoundFormatDialog ( \"WAVE\" )", {}, problem);
    }
    std::error_code ignored;
    fs::remove(script, ignored);
    if (problem.empty() && textOf(settings).units.rfind(u"<hex>", 0) == 0)
        waveSettings_ = textOf(settings).units;
    else
        waveSettingsProblem_ = "no WAV settings: " + (problem.empty() ? utf8Of(settings) : problem);
}

const SoundMedia& PluginMedia::sound(const FMX_Data& container) {
    std::string key = containerFingerprint(container.binary);
    if (auto it = sounds_.find(key); it != sounds_.end()) return it->second;
    SoundMedia& media = sounds_[key];
    if (!waveSettings_) {
        media.problem = waveSettingsProblem_.empty() ? "sounds cannot be converted" : waveSettingsProblem_;
        return media;
    }
    fs::path wav = folder_ / ("sound-" + std::to_string(sounds_.size()) + ".wav");
    std::string problem;
    callPlugin(u"Vandrel_ConvertSound ( $sound ; $file ; \"WAVE\" ; $settings )",
               {{u"$sound", container}, {u"$file", makeTextUtf8(wav.string())}, {u"$settings", makeText(*waveSettings_)}},
               problem);
    std::error_code missing;
    if (!problem.empty() || !fs::exists(wav, missing)) {
        media.problem = problem.empty() ? "the sound was not converted" : problem;
        return media;
    }
    try {
        media.wav = std::make_shared<OpenFile>(wav);
    } catch (const std::exception& e) {
        media.problem = e.what();
        return media;
    }
    // The container's own sound is 8-bit, which the waveform is not drawn from; the WAV is 16-bit.
    FMX_Data picture = callPlugin(u"Vandrel_DrawWaveform ( $file ; \"1\" ; $width ; $height ; \"\" ; \"\" ; \"#24405f\" ; \"white\" )",
                                  {{u"$file", makeTextUtf8(wav.string())},
                                   {u"$width", makeNumber(kWaveformWidth)},
                                   {u"$height", makeNumber(kWaveformHeight)}},
                                  problem);
    if (auto jpeg = isContainer(picture) ? browserPicture(picture.binary) : std::nullopt)
        media.waveform = jpeg;
    else
        media.problem = problem.empty() ? lastError() : problem;
    return media;
}

const PictureMedia& PluginMedia::picture(const FMX_Data& container) {
    std::string key = containerFingerprint(container.binary);
    if (auto it = pictures_.find(key); it != pictures_.end()) return it->second;
    PictureMedia& media = pictures_[key];
    if (!registered(u"Vandrel_ConvertImage")) {
        media.problem = "the plug-in that converts pictures is not loaded";
        return media;
    }
    std::string problem;
    FMX_Data converted = callPlugin(u"Vandrel_ConvertImage ( $picture ; \"JPEG\" )", {{u"$picture", container}}, problem);
    if (auto jpeg = isContainer(converted) ? browserPicture(converted.binary) : std::nullopt)
        media.picture = jpeg;
    else
        media.problem = problem.empty() ? "the picture was not converted" : problem;
    return media;
}

}  // namespace vdhost::serve
