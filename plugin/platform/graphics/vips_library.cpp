#include "platform/graphics/vips_library.h"

#include "platform/common/library_search.h"
#include "platform/common/library_sonames.h"
#include "platform/graphics/vips_functions.h"

#include <vips/vips.h>

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <optional>
#include <string_view>

namespace vd::platform {

namespace {

thread_local std::string tLastDetail;
std::atomic<bool> gStarted{false};

bool Mentions(std::string_view text, std::string_view word) { return text.find(word) != std::string_view::npos; }

// libvips loads every module of its folder as it starts (ImageMagick, Poppler, OpenSlide, JPEG XL,
// HEIF), which is most of its start-up time; of those formats we read and write only HEIF through
// libvips. VIPSHOME naming no folder makes it skip them while it starts; what the variable held
// before is put back at once, so that nothing else in the process, or started from it, sees it.
class ModulesLeftOut {
public:
    ModulesLeftOut() {
        if (const char* value = std::getenv(kVariable)) before_ = value;
        ::setenv(kVariable, "/nonexistent/vandrel-without-modules", 1);
    }
    ~ModulesLeftOut() {
        if (before_) ::setenv(kVariable, before_->c_str(), 1);
        else ::unsetenv(kVariable);
    }
    ModulesLeftOut(const ModulesLeftOut&) = delete;
    ModulesLeftOut& operator=(const ModulesLeftOut&) = delete;

private:
    static constexpr const char* kVariable = "VIPSHOME";
    std::optional<std::string> before_;
};

}  // namespace

util::Status StartVips() {
    static std::once_flag once;
    static std::string problem;  // why libvips could not be started, for every caller that asks again
    std::call_once(once, [] {
        if (const std::string_view reason = LoadVips(); !reason.empty()) {
            problem = "libvips cannot be loaded: " + std::string(reason);
            return;
        }
        int started = 0;
        {
            ModulesLeftOut withoutModules;
            started = vips_init("vandrel");
        }
        if (started != 0) {
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

void LoadHeifModule() {
    static std::once_flag once;
    std::call_once(once, [] {
        if (StartVips() != util::kNoError) return;
        // The module lives beside the library, in the folder named for the library's version.
        std::string library = FindLibrary(kVipsLibrary, LibrarySearchFolders());
        const size_t slash = library.rfind('/');
        if (slash == std::string::npos) return;
        const std::string module = library.substr(0, slash) + "/vips-modules-" + std::to_string(vips_version(0)) +
                                   "." + std::to_string(vips_version(1)) + "/vips-heif.so";
        // GModule runs the module's start, which adds its loader and saver; it stays for the process.
        if (GModule* heif = g_module_open(module.c_str(), G_MODULE_BIND_LAZY)) g_module_make_resident(heif);
    });
}

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
