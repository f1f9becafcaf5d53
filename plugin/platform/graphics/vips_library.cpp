#include "platform/graphics/vips_library.h"

#include "platform/graphics/vips_functions.h"

#include <vips/vips.h>

#include <atomic>
#include <mutex>
#include <string_view>

namespace vd::platform {

namespace {

thread_local std::string tLastDetail;
std::atomic<bool> gStarted{false};

bool Mentions(std::string_view text, std::string_view word) { return text.find(word) != std::string_view::npos; }

}  // namespace

util::Status StartVips() {
    static std::once_flag once;
    static std::string problem;  // why libvips could not be started, for every caller that asks again
    std::call_once(once, [] {
        if (const std::string_view reason = LoadVips(); !reason.empty()) {
            problem = "libvips cannot be loaded: " + std::string(reason);
            return;
        }
        if (vips_init("vandrel") != 0) {
            StatusFromVipsError(GraphicsStep::kStarting);
            problem = tLastDetail;
            return;
        }
        // Each picture is encoded once and thrown away, so libvips's cache of operations would
        // only hold memory (and open images) between calls.
        vips_cache_set_max(0);
        gStarted = true;
    });
    if (gStarted) return util::kNoError;
    tLastDetail = problem;
    return util::kNoComponent;
}

bool VipsStarted() { return gStarted; }

util::Status StatusFromVipsError(GraphicsStep step) {
    tLastDetail = vips_error_buffer();
    vips_error_clear();
    if (step == GraphicsStep::kStarting) return util::kNoComponent;
    if (Mentions(tLastDetail, "out of memory") || Mentions(tLastDetail, "unable to allocate"))
        return util::kMemoryFull;
    if (Mentions(tLastDetail, "is not a known") || Mentions(tLastDetail, "class not found"))
        return util::kNoComponent;
    return step == GraphicsStep::kDecoding ? util::kCorruptData : util::kInternalComponentError;
}

const std::string& LastGraphicsErrorDetail() { return tLastDetail; }

}  // namespace vd::platform
