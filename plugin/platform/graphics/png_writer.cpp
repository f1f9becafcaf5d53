#include "platform/graphics/png_writer.h"

#include "platform/graphics/vips_call.h"

#include <zlib.h>

#include <cmath>
#include <condition_variable>
#include <cstring>
#include <deque>
#include <memory>
#include <mutex>
#include <new>
#include <string_view>
#include <system_error>
#include <thread>

namespace vd::platform {

namespace {

constexpr size_t kBandBytes = size_t(1) << 20;
constexpr size_t kWindow = 32768;  // how far back deflate looks: what primes the next band
constexpr int kLevel = 6;          // zlib's default, which libvips's saver keeps
constexpr int kMemLevel = 8;
constexpr int kWorkers = 2;
constexpr size_t kMostWaiting = 4;  // bands read but not yet taken by a worker

struct Band {
    std::vector<uint8_t> input;       // rows, each after its filter byte
    std::vector<uint8_t> dictionary;  // the end of the band before
    bool last = false;
    std::vector<uint8_t> output;      // raw deflate, ending on a byte boundary
    uLong adler = 1;
    size_t size = 0;  // of the input, which is let go once deflated
    bool ok = false;
};

// One worker's deflater, reset for each band, and the room it deflates into: both made once, as
// fresh memory costs more here than deflating into memory already touched.
class BandDeflater {
public:
    ~BandDeflater() {
        if (ready_) deflateEnd(&z_);
    }

    bool Deflate(Band& band) {
        if (!ready_) {
            if (deflateInit2(&z_, kLevel, Z_DEFLATED, -15, kMemLevel, Z_DEFAULT_STRATEGY) != Z_OK) return false;
            ready_ = true;
        } else if (deflateReset(&z_) != Z_OK) {
            return false;
        }
        if (!band.dictionary.empty() &&
            deflateSetDictionary(&z_, band.dictionary.data(), uInt(band.dictionary.size())) != Z_OK)
            return false;
        // The bound, and room for the flush's empty stored block.
        const size_t room = deflateBound(&z_, uLong(band.input.size())) + 16;
        try {
            if (roomSize_ < room) room_.reset(new uint8_t[room]), roomSize_ = room;
        } catch (const std::bad_alloc&) {
            return false;
        }
        z_.next_in = band.input.data();
        z_.avail_in = uInt(band.input.size());
        z_.next_out = room_.get();
        z_.avail_out = uInt(roomSize_);
        const int result = deflate(&z_, band.last ? Z_FINISH : Z_SYNC_FLUSH);
        if (z_.avail_in != 0 || (band.last ? result != Z_STREAM_END : result != Z_OK)) return false;
        band.adler = adler32(1, band.input.data(), uInt(band.input.size()));
        try {
            band.output.assign(room_.get(), room_.get() + (roomSize_ - z_.avail_out));
        } catch (const std::bad_alloc&) {
            return false;
        }
        return true;
    }

private:
    z_stream z_{};
    bool ready_ = false;
    std::unique_ptr<uint8_t[]> room_;
    size_t roomSize_ = 0;
};

// Bands deflated by a few worker threads, in any order; Finish joins them in the order added.
class ParallelDeflate {
public:
    ~ParallelDeflate() { Stop(); }

    util::Status Start() {
        try {
            for (int i = 0; i < kWorkers; ++i) workers_.emplace_back([this] { Work(); });
        } catch (const std::system_error&) {
            if (workers_.empty()) return util::kMemoryFull;
        }
        return util::kNoError;
    }

    // Blocks while enough bands are waiting, so that reading never runs far ahead of deflating.
    util::Status Add(std::vector<uint8_t> rows, std::vector<uint8_t> dictionary, bool last) {
        try {
            auto band = std::make_unique<Band>();
            band->input = std::move(rows);
            band->dictionary = std::move(dictionary);
            band->last = last;
            std::unique_lock lock(mutex_);
            room_.wait(lock, [this] { return waiting_.size() < kMostWaiting; });
            waiting_.push_back(band.get());
            bands_.push_back(std::move(band));
        } catch (const std::bad_alloc&) {
            return util::kMemoryFull;
        }
        work_.notify_one();
        return util::kNoError;
    }

    // The zlib stream: its header, every band's deflate, and the checksum of all rows.
    util::Status Finish(std::vector<std::vector<uint8_t>>& pieces, uint8_t trailer[4]) {
        Stop();
        uLong adler = 1;
        for (auto& band : bands_) {
            if (!band->ok) return util::kMemoryFull;
            adler = adler32_combine(adler, band->adler, z_off_t(band->size));
            pieces.push_back(std::move(band->output));
        }
        for (int i = 0; i < 4; ++i) trailer[i] = uint8_t(adler >> (24 - 8 * i));
        return util::kNoError;
    }

    // A band's buffer, one a deflated band gave back when there is one.
    std::vector<uint8_t> TakeBuffer() {
        std::lock_guard lock(mutex_);
        if (spare_.empty()) return {};
        std::vector<uint8_t> buffer = std::move(spare_.back());
        spare_.pop_back();
        buffer.clear();
        return buffer;
    }

private:
    void Work() {
        BandDeflater deflater;
        for (;;) {
            Band* band = nullptr;
            {
                std::unique_lock lock(mutex_);
                work_.wait(lock, [this] { return stopping_ || !waiting_.empty(); });
                if (waiting_.empty()) return;
                band = waiting_.front();
                waiting_.pop_front();
            }
            room_.notify_one();
            band->size = band->input.size();
            band->ok = deflater.Deflate(*band);
            std::lock_guard lock(mutex_);
            try {
                spare_.push_back(std::move(band->input));
            } catch (const std::bad_alloc&) {
            }
            band->input = {};
            band->dictionary = {};
        }
    }

    void Stop() {
        {
            std::lock_guard lock(mutex_);
            stopping_ = true;
        }
        work_.notify_all();
        for (auto& worker : workers_) worker.join();
        workers_.clear();
    }

    std::mutex mutex_;
    std::condition_variable work_, room_;
    std::deque<Band*> waiting_;
    std::vector<std::vector<uint8_t>> spare_;
    std::vector<std::unique_ptr<Band>> bands_;
    std::vector<std::thread> workers_;
    bool stopping_ = false;
};

void PutWord(std::vector<uint8_t>& out, uint32_t v) {
    for (int shift = 24; shift >= 0; shift -= 8) out.push_back(uint8_t(v >> shift));
}

void PutChunk(std::vector<uint8_t>& out, const char type[4], const uint8_t* data, size_t size,
              const uint8_t* more = nullptr, size_t moreSize = 0) {
    PutWord(out, uint32_t(size + moreSize));
    const size_t start = out.size();
    out.insert(out.end(), type, type + 4);
    out.insert(out.end(), data, data + size);
    if (more) out.insert(out.end(), more, more + moreSize);
    PutWord(out, uint32_t(crc32(0, out.data() + start, uInt(out.size() - start))));
}

// Gathers the rows libvips hands over into bands.
struct RowSink {
    ParallelDeflate& deflate;
    size_t rowBytes;
    std::vector<uint8_t> band;
    std::vector<uint8_t> previous;  // the end of the band handed on last
    util::Status status = util::kNoError;

    util::Status Submit(bool last) {
        std::vector<uint8_t> dictionary;
        std::vector<uint8_t> next;
        try {
            const size_t keep = std::min(kWindow, band.size());
            dictionary.assign(band.end() - std::ptrdiff_t(keep), band.end());
            if (!last) next = deflate.TakeBuffer(), next.reserve(kBandBytes + rowBytes + 1);
        } catch (const std::bad_alloc&) {
            return util::kMemoryFull;
        }
        const util::Status added = deflate.Add(std::move(band), std::move(previous), last);
        previous = std::move(dictionary);
        band = std::move(next);
        return added;
    }
};

}  // namespace

bool WritesAsPlainPng(VipsImage* image) {
    if (image->BandFmt != VIPS_FORMAT_UCHAR || image->Coding != VIPS_CODING_NONE || image->Bands < 1 ||
        image->Bands > 4)
        return false;
    gchar** fields = vips_image_get_fields(image);
    bool plain = fields != nullptr;
    for (gchar** field = fields; field && *field; ++field) {
        const std::string_view name(*field);
        if (name == "icc-profile-data" || name == "exif-data" || name == "xmp-data" ||
            name.substr(0, 12) == "png-comment-")
            plain = false;
    }
    g_strfreev(fields);
    return plain;
}

util::Status WritePlainPng(VipsImage* image, std::vector<uint8_t>& out) {
    out.clear();
    const size_t rowBytes = size_t(image->Xsize) * size_t(image->Bands);
    ParallelDeflate deflate;
    if (util::Status status = deflate.Start()) return status;
    RowSink sink{deflate, rowBytes, {}, {}};
    try {
        sink.band.reserve(kBandBytes + rowBytes + 1);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    const VipsRegionWrite write = [](VipsRegion* region, VipsRect* area, void* a) {
        auto& to = *static_cast<RowSink*>(a);
        const size_t stride = size_t(VIPS_REGION_LSKIP(region));
        const auto* row = reinterpret_cast<const uint8_t*>(region->data) +
                          size_t(area->top - region->valid.top) * stride +
                          size_t(area->left - region->valid.left) * size_t(region->im->Bands);
        for (int y = 0; y < area->height; ++y, row += stride) {
            try {
                to.band.push_back(0);  // no filter
                to.band.insert(to.band.end(), row, row + to.rowBytes);
            } catch (const std::bad_alloc&) {
                to.status = util::kMemoryFull;
                return -1;
            }
            if (to.band.size() >= kBandBytes) {
                to.status = to.Submit(false);
                if (to.status) return -1;
            }
        }
        return 0;
    };
    if (vips_sink_disc(image, write, &sink) != 0) {
        const util::Status failure = StatusFromVipsError(GraphicsStep::kEncoding);
        return sink.status != util::kNoError ? sink.status : failure;
    }
    if (util::Status status = sink.Submit(true)) return status;
    std::vector<std::vector<uint8_t>> pieces;
    uint8_t trailer[4];
    if (util::Status status = deflate.Finish(pieces, trailer)) return status;

    try {
        size_t total = 8 + 25 + 21 + 12 + 4 + 2;
        for (const auto& piece : pieces) total += piece.size() + 12;
        out.reserve(total);
        static const uint8_t kSignature[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1A, '\n'};
        out.insert(out.end(), std::begin(kSignature), std::end(kSignature));
        static const uint8_t kColourTypes[5] = {0, 0, 4, 2, 6};  // by band count
        std::vector<uint8_t> header;
        PutWord(header, uint32_t(image->Xsize));
        PutWord(header, uint32_t(image->Ysize));
        header.insert(header.end(), {8, kColourTypes[image->Bands], 0, 0, 0});
        PutChunk(out, "IHDR", header.data(), header.size());
        std::vector<uint8_t> physical;  // pixels per metre, from libvips's pixels per millimetre
        PutWord(physical, uint32_t(std::lround(image->Xres * 1000)));
        PutWord(physical, uint32_t(std::lround(image->Yres * 1000)));
        physical.push_back(1);
        PutChunk(out, "pHYs", physical.data(), physical.size());
        // zlib's header for a 32 KiB window at the default level opens the first piece; the
        // checksum closes the last.
        static const uint8_t kZlibHeader[2] = {0x78, 0x9C};
        for (size_t i = 0; i < pieces.size(); ++i) {
            std::vector<uint8_t>& piece = pieces[i];
            if (i == 0) piece.insert(piece.begin(), std::begin(kZlibHeader), std::end(kZlibHeader));
            const bool last = i + 1 == pieces.size();
            PutChunk(out, "IDAT", piece.data(), piece.size(), last ? trailer : nullptr, last ? 4 : 0);
            piece = {};
        }
        PutChunk(out, "IEND", nullptr, 0);
    } catch (const std::bad_alloc&) {
        out.clear();
        return util::kMemoryFull;
    }
    return util::kNoError;
}

}  // namespace vd::platform
