#include "platform/media/sound_writer.h"

#include "platform/media/wav_file_writer.h"

namespace vd::media {

Status SoundWriter::WriteSowtBytes(const uint8_t*, size_t) {
    return MediaFailure(util::kFeatureUnsupported, "this writer encodes; it takes no stored bytes");
}

Status SoundWriter::CopySowtBytes(int, int64_t, int64_t) {
    return MediaFailure(util::kFeatureUnsupported, "this writer encodes; it takes no stored bytes");
}

Status OpenSoundWriter(const OutputFormat& format, const std::string& target, std::unique_ptr<SoundWriter>& writer) {
    if (format.fileType == FourCC("WAVE")) return WavFileWriter::Open(format, target, writer);
    return MediaFailure(util::kNoComponent, "no writer for the format '" + FourCCText(format.fileType) + "'");
}

}  // namespace vd::media
