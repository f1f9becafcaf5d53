#include "sound/information/sound_info.h"

#include "platform/media/sound_description.h"
#include "util/date_text.h"
#include "util/duration_text.h"

#include <algorithm>
#include <cstdarg>
#include <cstdint>
#include <cstdio>
#include <limits>

namespace vd::sound {

namespace {

// Shown in place of the format of a movie that was not read from a file.
constexpr media::FourCharCode kLocalFileFormat = media::FourCC("lifs");

// Lines are formatted into a fixed buffer and appended up to the capacity, so one overlong
// field cannot make the report grow past it.
class Report {
public:
    Report(std::string& text, size_t capacity) : text_(text), capacity_(capacity) { text_.clear(); }

    __attribute__((format(printf, 2, 3))) void Line(const char* format, ...) {
        char line[256];
        va_list arguments;
        va_start(arguments, format);
        int length = std::vsnprintf(line, sizeof line, format, arguments);
        va_end(arguments);
        if (length < 0) return;
        size_t size = std::min(size_t(length), sizeof line - 1);
        size = std::min(size, capacity_ - std::min(capacity_, text_.size()));
        text_.append(line, size);
    }

private:
    std::string& text_;
    size_t capacity_;
};

// Four characters, those below 32 shown as blanks so that the line stays one line.
std::string CodeText(media::FourCharCode code) {
    std::string text(4, ' ');
    for (int i = 0; i < 4; ++i) {
        const auto c = char((code >> (24 - 8 * i)) & 0xFF);
        if (static_cast<unsigned char>(c) >= 32) text[size_t(i)] = c;
    }
    return text;
}

// A duration of any length in a 32-bit value: long media at a high time scale are counted in
// coarser units first (the text shows milliseconds at most).
std::string DurationText(int64_t value, int32_t scale) {
    while (value > std::numeric_limits<int32_t>::max() && scale > 1) value /= 2, scale /= 2;
    if (value > std::numeric_limits<int32_t>::max()) value = std::numeric_limits<int32_t>::max();
    return util::FormatDuration(int32_t(std::max<int64_t>(value, 0)), scale);
}

double RateOf(const media::SampleDescription& d) {
    return d.exactSampleRate > 0 ? d.exactSampleRate : double(d.sampleRate) / 65536.0;
}

void DescribeSamples(Report& report, const media::SampleDescription& d) {
    report.Line("      Sample Format: %s\r", CodeText(d.dataFormat).c_str());
    report.Line("      Number of Channels: %d\r", int(d.numberOfChannels));
    // Our descriptions carry the decoded bit depth for every format, Apple Lossless included (the
    // decoder reads it from the stream's configuration, as the format flags would give it).
    report.Line("      Sample Size (b): %d\r", int(d.sampleSize));
    report.Line("      Sample Rate (Hz): %.0f\r", RateOf(d));
    double bitsPerSecond = double(d.bitRate);
    if (bitsPerSecond <= 0 && media::IsPcm(d)) bitsPerSecond = RateOf(d) * d.numberOfChannels * d.sampleSize;
    if (bitsPerSecond > 0) report.Line("      Bit Rate (kbps): %.0lf\r", bitsPerSecond / 1000.0);
    else report.Line("      Bit Rate (kbps): N/A\r");
}

void DescribeTrack(Report& report, const media::Track& track, int32_t movieTimeScale) {
    const std::string trackDate = util::FormatDateTime(track.creationTime);
    report.Line("Track %d\r", 1);
    report.Line("  Volume: %d\r", int(track.volume));
    report.Line("  Duration (s): %s\r", DurationText(track.Duration(movieTimeScale), movieTimeScale).c_str());
    report.Line("  Creation Date (ts): %s\r", trackDate.c_str());
    report.Line("  Modification Date (ts): %s\r", trackDate.c_str());
    const media::Media& media = track.media;
    report.Line("  Media\r");
    report.Line("    Media Duration (s): %s\r", DurationText(media.Duration(), media.timeScale).c_str());
    report.Line("    Media Creation Date (ts): %s\r", util::FormatDateTime(media.creationTime).c_str());
    report.Line("    Media Modification Date (ts): %s\r", util::FormatDateTime(media.modificationTime).c_str());
    report.Line("    Media Language: %d\r", int(media.language));
    report.Line("    Media Quality: %d\r", int(media.quality));
    int n = 0;
    for (const media::SampleDescription& d : media.Descriptions()) {
        if (++n > 1) report.Line("\r");
        report.Line("    Sample Description %d\r", n);
        DescribeSamples(report, d);
    }
}

}  // namespace

media::Status SoundInfoReport(const media::Movie& movie, std::string& report, size_t capacity) {
    const auto tracks = movie.TracksWith(media::Characteristic::kAudio);
    if (tracks.empty()) return util::kNoSoundTrack;
    media::FourCharCode format = 0;
    if (media::Status s = movie.SourceFormat(format)) {
        if (s != util::kFeatureUnsupported) return s;
        format = kLocalFileFormat;
    }
    std::string text;
    Report lines(text, capacity);
    lines.Line("Format: %s\r", CodeText(format).c_str());
    for (const media::Track* track : tracks) DescribeTrack(lines, *track, movie.timeScale);
    report = std::move(text);
    return util::kNoError;
}

}  // namespace vd::sound
