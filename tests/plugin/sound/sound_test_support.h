// What the sound tests share: a host session of the real bundle whose private temporary folder
// lives inside the test's own folder (so a file left behind is seen), the "snd " stream of a
// result, and the open descriptors of the process.
#pragma once

#include "plugin/plugin_test_support.h"
#include "plugin/platform/media/media_fixtures.h"

#include "frame/handler_dispatch.h"
#include "platform/media/movie_from_file.h"
#include "platform/media/sample_reading.h"
#include "sound/sound_function_steps.h"

#include <api/text_codec.h>
#include <api/values.h>
#include <session/session.h>
#include <support/temp_folder.h>

#include <gtest/gtest.h>

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

#include <unistd.h>

namespace vdtest {

class SoundSessionTest : public ::testing::Test {
protected:
    SoundSessionTest() : tmp_("TMPDIR", (root_ / "tmp").string()) {
        std::filesystem::create_directories(root_ / "tmp");
        std::filesystem::create_directories(Data());
        session_.emplace(BundleSession(Data() / "Base.vddb"));
    }

    std::filesystem::path Data() const { return root_.path() / "data"; }
    std::string Path(const std::string& name) const { return (Data() / name).string(); }
    // Writes a file into the data folder and answers its path.
    std::string Write(const std::string& name, const std::string& bytes) const {
        writeFile(Data() / name, bytes);
        return Path(name);
    }
    // The plug-in's private temporary folder under this test's TMPDIR.
    std::filesystem::path TemporaryItems() const { return root_.path() / "tmp" / ("vandrel-" + std::to_string(getuid())); }

    // Files of ours in the temporary folder: "temp-..." and the hidden names of files being written.
    std::vector<std::string> LeftoverTemporaryFiles() const {
        std::vector<std::string> names;
        if (!std::filesystem::exists(TemporaryItems())) return names;
        for (const auto& name : media::FolderEntries(TemporaryItems()))
            if (name.rfind("temp-", 0) == 0 || name.rfind(".temp-", 0) == 0) names.push_back(name);
        return names;
    }

    FMX_Data Eval(const std::u16string& calculation, const std::vector<FMX_Data>& values = {}) {
        return EvaluateWith(*session_, calculation, values);
    }
    std::string Text(const std::u16string& calculation, const std::vector<FMX_Data>& values = {}) {
        return vdhost::utf8Of(Eval(calculation, values));
    }

    TempFolder root_;
    ScopedEnv tmp_;
    std::optional<vdhost::Session> session_;
};

inline std::string SoundStreamOf(const FMX_Data& value) { return StreamOf(value, "snd "); }

// Calls a function through the dispatch as a host that does not check argument counts would: the
// only way to reach a function's own count messages. The dispatch is the tests' own copy of the
// plug-in's code, so its outcome is in this program's vd::gLastError and its playback pool, not in
// the loaded bundle's. Answers the result, its text and the code handed back to the host.
struct CallAnswer {
    std::string text;
    FMX_ErrCode code;
    FMX_Data value;
};
inline CallAnswer Call(int16_t id, std::vector<FMX_Data> arguments) {
    FMX_DataVect args;
    args.items = std::move(arguments);
    FMX_Data result;
    const FMX_ErrCode code = vd::DispatchCall(id, nullptr, &args, &result);
    return {vdhost::utf8Of(result), code, result};
}
inline std::string CallDirectly(int16_t id, std::vector<FMX_Data> arguments) { return Call(id, std::move(arguments)).text; }
inline FMX_Data T(const std::string& text) { return vdhost::makeTextUtf8(text); }
inline FMX_Data N(double number) { return vdhost::makeNumber(number); }

// An edited movie rendered as the editing functions render their results, then read back as
// interleaved 16-bit stereo samples.
inline std::vector<int16_t> RenderedSamples(vd::media::Movie&& edited, const vd::media::RenderOptions& options = {}) {
    vd::sound::SoundMovie rendered;
    vd::sound::RenderStep step;
    if (vd::sound::RenderResult(std::move(edited), options, rendered, step) != 0) return {};
    std::vector<int16_t> samples;
    const auto& media = rendered.movie.FirstSoundTrack()->media;
    if (vd::media::ReadFramesInt16(media, 0, media.Duration(), samples) != 0) return {};
    return samples;
}

inline vd::media::Movie OpenedMovie(const std::filesystem::path& path) {
    vd::media::Movie movie;
    EXPECT_EQ(vd::media::MovieFromFile(path, movie), 0) << path;
    return movie;
}

// count stereo frames of one value in both channels.
inline std::vector<int16_t> Constant(int16_t value, size_t frames) { return std::vector<int16_t>(2 * frames, value); }

inline uint32_t Be32(const std::string& b, size_t at) {
    return uint32_t(uint8_t(b[at])) << 24 | uint32_t(uint8_t(b[at + 1])) << 16 | uint32_t(uint8_t(b[at + 2])) << 8 |
           uint32_t(uint8_t(b[at + 3]));
}

}  // namespace vdtest
