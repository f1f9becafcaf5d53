#include "platform/media/movie_from_file.h"

#include "platform/media/av_owners.h"
#include "platform/media/codec_formats.h"
#include "platform/media/decoded_sample_store.h"
#include "platform/media/decoding_sample_store.h"
#include "platform/media/ffmpeg_functions.h"
#include "platform/media/importer_subtypes.h"
#include "platform/media/mac_time.h"
#include "platform/media/plain_wav.h"

extern "C" {
#include <libavutil/bswap.h>
#include <libavutil/parseutils.h>
}

#include <algorithm>
#include <cerrno>
#include <new>
#include <string_view>

#include <sys/stat.h>

namespace vd::media {

namespace {

// Containers whose PCM lies in one contiguous block after the header, so that frame n is at
// data start + n × frame size.
bool ContiguousPcmContainer(std::string_view demuxer) {
    return demuxer == "wav" || demuxer == "aiff" || demuxer == "caf" || demuxer == "au" || demuxer == "w64";
}

// How far we read packets at open to find the first text sample and the PCM data offset.
constexpr int kMaxProbePackets = 4096;
constexpr size_t kMaxTextSample = 1 << 20;

uint32_t CreationTime(const AVFormatContext& format, const struct stat& info) {
    if (const AVDictionaryEntry* entry = av_dict_get(format.metadata, "creation_time", nullptr, 0)) {
        int64_t microseconds = 0;
        if (av_parse_time(&microseconds, entry->value, 0) == 0) return MacSecondsFromUnix(microseconds / 1000000);
    }
    return MacSecondsFromUnix(int64_t(info.st_mtime));
}

int64_t StreamDurationIn(const AVFormatContext& format, const AVStream& stream, int32_t scale) {
    if (stream.duration > 0 && stream.duration != AV_NOPTS_VALUE)
        return av_rescale_q(stream.duration, stream.time_base, AVRational{1, scale});
    if (format.duration > 0 && format.duration != AV_NOPTS_VALUE)
        return av_rescale_q(format.duration, AV_TIME_BASE_Q, AVRational{1, scale});
    return -1;
}

// Codecs whose stated length counts whole packets, encoder delay and padding included (an MP3's
// frames of 1152, an Apple Lossless file's packets of 4096), while the decoder drops those: the
// stated length would be longer than every sound made from the file. Their length is counted by
// decoding, as the edits read them.
bool StatedLengthIncludesPadding(AVCodecID codec) { return codec == AV_CODEC_ID_MP3 || codec == AV_CODEC_ID_ALAC; }

// A compressed format's code: the table's, else the stream's own tag when it is a readable code
// (the sample entry of a QuickTime or MP4 file), else the codec's FFmpeg name. A WAVE format tag
// (0x0031 for GSM) is no four-character code, and "????" tells nobody what the sound is.
FourCharCode CompressedFormatCode(const CodecFormat* row, const AVCodecParameters& p, const char* codecName) {
    if (row) return row->dataFormat;
    const auto tag = FourCharCode(av_bswap32(p.codec_tag));
    if (p.codec_tag && PrintableFourCC(tag)) return tag;
    return FourCCFromName(codecName ? codecName : "", false);
}

SampleDescription DescribeSound(const AVCodecParameters& p) {
    const char* codecName = avcodec_get_name(p.codec_id);
    const CodecFormat* row = FindCodecFormat(codecName);
    const int channels = p.ch_layout.nb_channels;
    SampleDescription d;
    if (row && row->pcm) {
        d = PcmSoundDescription(row->dataFormat, channels, row->sampleSize, double(p.sample_rate));
        d.bigEndian = row->bigEndian;
        return d;
    }
    d.dataFormat = CompressedFormatCode(row, p, codecName);
    d.numberOfChannels = int16_t(channels);
    // Compressed sound was described with the size it decodes to; 16 unless the stream says more
    // (a lossless stream's raw size, or the coded size of one that stores whole samples).
    int bits = row && row->sampleSize ? row->sampleSize : p.bits_per_raw_sample;
    if (bits <= 0 && p.bits_per_coded_sample >= 8) bits = p.bits_per_coded_sample;
    d.sampleSize = int16_t(bits > 0 && bits <= 64 ? bits : 16);
    d.sampleRate = RateToFixed(p.sample_rate);
    d.exactSampleRate = p.sample_rate;
    d.version = 1;
    d.compressionId = kVariableCompression;
    d.bitRate = p.bit_rate > 0 ? p.bit_rate : 0;
    return d;
}

SampleDescription DescribeOther(const AVCodecParameters& p) {
    SampleDescription d;
    const CodecFormat* row = FindCodecFormat(avcodec_get_name(p.codec_id));
    d.dataFormat = CompressedFormatCode(row, p, avcodec_get_name(p.codec_id));
    d.width = p.width;
    d.height = p.height;
    d.bitRate = p.bit_rate > 0 ? p.bit_rate : 0;
    return d;
}

struct PendingPcm {
    int streamIndex;
    Track* track;
    int64_t statedFrames;  // -1 when the container did not say
};

struct PendingText {
    int streamIndex;
    Track* track;
};

// One pass over the first packets: the byte offset of the first PCM packet (where the data
// block starts) and the first sample of each text track.
Status ReadFirstPackets(AVFormatContext& format, std::vector<PendingPcm>& pcm, std::vector<PendingText>& texts,
                        std::vector<int64_t>& pcmOffsets) {
    pcmOffsets.assign(pcm.size(), -1);
    size_t missing = pcm.size() + texts.size();
    PacketPtr packet(av_packet_alloc());
    if (!packet) return MediaFailure(util::kMemoryFull, "no memory for a packet");
    for (int n = 0; missing > 0 && n < kMaxProbePackets; ++n) {
        int rc = av_read_frame(&format, packet.get());
        if (rc == AVERROR(EAGAIN)) continue;
        if (rc < 0) break;  // the end, or damage: whatever was not found stays empty
        for (size_t i = 0; i < pcm.size(); ++i)
            if (pcm[i].streamIndex == packet->stream_index && pcmOffsets[i] < 0 && packet->pos >= 0) {
                pcmOffsets[i] = packet->pos;
                --missing;
            }
        for (auto& text : texts)
            if (text.streamIndex == packet->stream_index && text.track->media.FirstTextSample().empty() &&
                packet->size > 0) {
                size_t size = std::min(size_t(packet->size), kMaxTextSample);
                text.track->media.SetFirstTextSample(std::vector<uint8_t>(packet->data, packet->data + size));
                --missing;
            }
        av_packet_unref(packet.get());
    }
    return util::kNoError;
}

Status AttachPcmStore(const std::string& path, int64_t fileSize, int64_t dataOffset, PendingPcm& pending) {
    Media& media = pending.track->media;
    const SampleDescription& d = media.Descriptions().front();
    const int64_t bytesPerFrame = BytesPerFrame(d);
    // A header that states no frames (or none at all) and no packet: an empty sound (an empty selection
    // written out), not a damaged file.
    if (dataOffset < 0 && pending.statedFrames <= 0) return util::kNoError;
    if (dataOffset < 0 || dataOffset > fileSize) return MediaFailure(util::kMovieNotFound, path + ": no sound data found");
    // What the header states, but never more than the file holds: a cut-off file plays what it has.
    int64_t frames = (fileSize - dataOffset) / bytesPerFrame;
    if (pending.statedFrames >= 0 && pending.statedFrames < frames) frames = pending.statedFrames;
    std::shared_ptr<FileSampleStore> store;
    if (Status s = FileSampleStore::Open(path, dataOffset, frames * bytesPerFrame, store)) return s;
    return media.AppendRun(SampleRun{std::move(store), 0, frames, 1}, d);
}

// What every opener checks first: the file is there, is a file, and is not empty.
Status StatMediaFile(const std::string& path, struct stat& info) {
    if (::stat(path.c_str(), &info) != 0) return StatusFromErrno(errno, MediaStep::kOpening);
    if (S_ISDIR(info.st_mode)) return MediaFailure(util::kNotAFile, path + " is a folder");
    if (info.st_size == 0) return MediaFailure(util::kMovieNotFound, path + " is empty");
    return util::kNoError;
}

// The file's demuxer, its streams found.
Status OpenInput(const std::string& path, InputFormatPtr& format) {
    AVFormatContext* raw = nullptr;  // avformat_open_input frees the context itself when it fails
    int rc = avformat_open_input(&raw, path.c_str(), nullptr, nullptr);
    if (rc < 0) return StatusFromAvError(rc, MediaStep::kOpening);
    format.reset(raw);
    if ((rc = avformat_find_stream_info(raw, nullptr)) < 0) return StatusFromAvError(rc, MediaStep::kOpening);
    return util::kNoError;
}

}  // namespace

Status MovieFromFile(const std::string& path, Movie& movie, const OpenOptions& options) {
    struct stat info {};
    if (Status s = StatMediaFile(path, info)) return s;
    bool handled = false;
    if (Status s = MovieFromPlainWav(path, info, movie, handled); handled) return s;
    return MovieFromFileByLibraries(path, movie, options);
}

Status StatedSoundFrames(const std::string& path, int64_t decodedFrames, int64_t& frames) {
    if (Status s = StartFfmpeg()) return s;
    InputFormatPtr format;
    if (Status s = OpenInput(path, format)) return s;
    AVFormatContext* raw = format.get();
    for (unsigned i = 0; i < raw->nb_streams; ++i) {
        const AVStream& stream = *raw->streams[i];
        const AVCodecParameters& p = *stream.codecpar;
        if (p.codec_type != AVMEDIA_TYPE_AUDIO || p.sample_rate <= 0) continue;
        frames = StreamDurationIn(*raw, stream, p.sample_rate);
        if (frames < 0 || StatedLengthIncludesPadding(p.codec_id)) frames = decodedFrames;
        return util::kNoError;
    }
    return MediaFailure(util::kNoSoundTrack, path + " holds no sound");
}

Status MovieFromFileByLibraries(const std::string& path, Movie& movie, const OpenOptions& options) {
    PredecodedSound* predecoded = options.predecoded;
    struct stat info {};
    if (Status s = StatMediaFile(path, info)) return s;
    if (Status s = StartFfmpeg()) return s;
    InputFormatPtr format;
    if (Status s = OpenInput(path, format)) return s;
    AVFormatContext* raw = format.get();

    try {
        Movie opened;
        opened.dataReference = {DataReference::Kind::kFile, path};
        opened.creationTime = opened.modificationTime = CreationTime(*raw, info);
        const std::string_view demuxer = raw->iformat->name;
        const AVDictionaryEntry* brand = av_dict_get(raw->metadata, "major_brand", nullptr, 0);

        int audioStreams = 0;
        bool hasVisual = false;
        for (unsigned i = 0; i < raw->nb_streams; ++i) {
            audioStreams += raw->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO;
            hasVisual |= raw->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_VIDEO &&
                         !(raw->streams[i]->disposition & AV_DISPOSITION_ATTACHED_PIC);
        }
        const char* audioCodec = "";
        for (unsigned i = 0; i < raw->nb_streams && !*audioCodec; ++i)
            if (raw->streams[i]->codecpar->codec_type == AVMEDIA_TYPE_AUDIO)
                audioCodec = avcodec_get_name(raw->streams[i]->codecpar->codec_id);
        opened.importerSubtype = ImporterSubtypeFor(demuxer, brand ? brand->value : "", hasVisual, audioCodec);

        std::vector<PendingPcm> pcm;
        std::vector<PendingText> texts;
        std::vector<std::pair<std::shared_ptr<DecodingSampleStore>, Track*>> counted;
        for (unsigned i = 0; i < raw->nb_streams; ++i) {
            const AVStream& stream = *raw->streams[i];
            const AVCodecParameters& p = *stream.codecpar;
            if (p.codec_type == AVMEDIA_TYPE_AUDIO) {
                // A stream without a rate or channels cannot be timed or read: a damaged header.
                if (p.sample_rate <= 0 || p.ch_layout.nb_channels <= 0 || p.ch_layout.nb_channels > 64) continue;
                Media media(kSoundMediaType, p.sample_rate);
                media.creationTime = media.modificationTime = opened.creationTime;
                SampleDescription d = DescribeSound(p);
                media.AddDescription(d);
                Track& track = opened.AddTrack(Characteristic::kAudio, std::move(media));
                track.InsertMedia(0);
                int64_t frames = StreamDurationIn(*raw, stream, p.sample_rate);
                if (IsPcm(d) && audioStreams == 1 && ContiguousPcmContainer(demuxer)) {
                    pcm.push_back({int(i), &track, frames});
                    continue;
                }
                if (predecoded && audioStreams == 1 && predecoded->channels == p.ch_layout.nb_channels) {
                    if (frames < 0 || StatedLengthIncludesPadding(p.codec_id)) frames = predecoded->Frames();
                    auto decoded = std::make_shared<DecodedSampleStore>(std::move(*predecoded));
                    if (Status s = track.media.AppendRun(SampleRun{decoded, 0, frames, 1}, d)) return s;
                    continue;
                }
                auto store = std::make_shared<DecodingSampleStore>(path, int(i), p.ch_layout.nb_channels);
                if (frames < 0 || (options.exactLength && StatedLengthIncludesPadding(p.codec_id))) {
                    counted.emplace_back(store, &track);
                    continue;
                }
                if (Status s = track.media.AppendRun(SampleRun{store, 0, frames, 1}, d)) return s;
            } else if (p.codec_type == AVMEDIA_TYPE_VIDEO || p.codec_type == AVMEDIA_TYPE_SUBTITLE) {
                const bool text = p.codec_type == AVMEDIA_TYPE_SUBTITLE;
                if (!text && (stream.disposition & AV_DISPOSITION_ATTACHED_PIC)) continue;  // cover art
                int32_t scale = stream.time_base.den > 0 && stream.time_base.num == 1 ? stream.time_base.den : 600;
                Media media(text ? kTextMediaType : kVideoMediaType, scale);
                media.creationTime = media.modificationTime = opened.creationTime;
                media.AddDescription(DescribeOther(p));
                media.SetNonSoundDuration(std::max<int64_t>(0, StreamDurationIn(*raw, stream, scale)));
                Track& track = opened.AddTrack(text ? Characteristic::kText : Characteristic::kVisual, std::move(media));
                track.InsertMedia(0);
                if (text) texts.push_back({int(i), &track});
            }
        }
        if (opened.TrackCount() == 0) return MediaFailure(util::kMovieNotFound, path + " holds no sound, picture or text");

        std::vector<int64_t> offsets;
        if (!pcm.empty() || !texts.empty())
            if (Status s = ReadFirstPackets(*raw, pcm, texts, offsets)) return s;
        for (size_t i = 0; i < pcm.size(); ++i)
            if (Status s = AttachPcmStore(path, int64_t(info.st_size), offsets[i], pcm[i])) return s;
        format.reset();  // the stores open the file again themselves; no descriptor stays with us

        for (auto& [store, track] : counted) {
            int64_t frames = 0;
            if (Status s = store->CountFrames(frames)) return s;
            if (Status s = track->media.AppendRun(SampleRun{store, 0, frames, 1}, track->media.Descriptions().front()))
                return s;
        }
        movie = std::move(opened);
    } catch (const std::bad_alloc&) {
        return MediaFailure(util::kMemoryFull, "no memory to open " + path);
    }
    return util::kNoError;
}

}  // namespace vd::media
