#include "platform/graphics/web_fetch.h"

#include "platform/common/lazy_library.h"
#include "platform/common/library_sonames.h"

#include <curl/curl.h>

#include <cstdlib>
#include <iterator>
#include <memory>
#include <new>

namespace vd::platform {

namespace {

// libcurl's option setters take C varargs, which a forwarder of the library's own name cannot pass
// on; its functions are called through typed pointers to the resolved addresses instead.
constexpr const char* kSonames[] = {kCurlLibrary};
constexpr LazySymbol kSymbols[] = {
    {0, "curl_easy_init"}, {0, "curl_easy_setopt"}, {0, "curl_easy_perform"},
    {0, "curl_easy_getinfo"}, {0, "curl_easy_cleanup"}, {0, "curl_easy_strerror"},
};
enum Function : size_t { kInit, kSetopt, kPerform, kGetinfo, kCleanup, kStrerror, kFunctionCount };
static_assert(std::size(kSymbols) == kFunctionCount);

void* gAddresses[kFunctionCount];
constinit LazyLibraries gCurl(kSonames, kSymbols, gAddresses, "VANDREL_WEB_LAYER");

template <class Function>
Function Call(size_t index) {
    return reinterpret_cast<Function>(gCurl.Address(index));
}

struct EasyRelease {
    void operator()(CURL* easy) const { Call<void (*)(CURL*)>(kCleanup)(easy); }
};
using EasyPtr = std::unique_ptr<CURL, EasyRelease>;

struct Sink {
    std::vector<uint8_t>* body;
    uint64_t maxBytes;
    bool tooLarge = false;
    bool noMemory = false;
};

size_t Receive(char* data, size_t size, size_t count, void* context) {
    auto* sink = static_cast<Sink*>(context);
    const size_t n = size * count;
    if (sink->body->size() + n > sink->maxBytes) {
        sink->tooLarge = true;
        return 0;  // libcurl ends the transfer
    }
    try {
        sink->body->insert(sink->body->end(), data, data + n);
    } catch (const std::bad_alloc&) {
        sink->noMemory = true;
        return 0;
    }
    return n;
}

int64_t MillisecondsFrom(const char* name, int64_t fallback) {
    const char* text = std::getenv(name);
    if (!text || !*text) return fallback;
    char* end = nullptr;
    const double seconds = std::strtod(text, &end);
    if (*end != '\0' || !(seconds > 0) || seconds > 86'400) return fallback;
    return int64_t(seconds * 1000 + 0.5) > 0 ? int64_t(seconds * 1000 + 0.5) : 1;
}

}  // namespace

WebLimits WebLimitsFromEnvironment() {
    WebLimits limits;
    limits.connectMilliseconds = MillisecondsFrom("VANDREL_WEB_CONNECT_TIMEOUT", limits.connectMilliseconds);
    limits.totalMilliseconds = MillisecondsFrom("VANDREL_WEB_TIMEOUT", limits.totalMilliseconds);
    if (const char* text = std::getenv("VANDREL_WEB_MAX_BYTES"); text && *text) {
        char* end = nullptr;
        const unsigned long long bytes = std::strtoull(text, &end, 10);
        if (*end == '\0' && bytes > 0) limits.maxBytes = bytes;
    }
    return limits;
}

util::Status FetchUrl(const std::string& url, const WebLimits& limits, std::vector<uint8_t>& body, std::string& detail) {
    body.clear();
    if (url.rfind("http://", 0) != 0 && url.rfind("https://", 0) != 0) {
        detail = "not a web address";
        return util::kBadParameter;
    }
    if (const std::string_view problem = gCurl.Load(); !problem.empty()) {
        detail = "libcurl cannot be loaded: " + std::string(problem);
        return util::kNoComponent;
    }
    EasyPtr easy(Call<CURL* (*)()>(kInit)());
    if (!easy) return util::kMemoryFull;
    const auto setopt = Call<CURLcode (*)(CURL*, CURLoption, ...)>(kSetopt);
    Sink sink{&body, limits.maxBytes};
    CURL* e = easy.get();
    setopt(e, CURLOPT_URL, url.c_str());
    setopt(e, CURLOPT_PROTOCOLS_STR, "http,https");
    setopt(e, CURLOPT_REDIR_PROTOCOLS_STR, "http,https");
    setopt(e, CURLOPT_FOLLOWLOCATION, 1L);
    setopt(e, CURLOPT_MAXREDIRS, 5L);
    setopt(e, CURLOPT_NOSIGNAL, 1L);  // time-outs without SIGALRM, which belongs to the host
    setopt(e, CURLOPT_FAILONERROR, 1L);
    setopt(e, CURLOPT_CONNECTTIMEOUT_MS, long(limits.connectMilliseconds));
    setopt(e, CURLOPT_TIMEOUT_MS, long(limits.totalMilliseconds));
    setopt(e, CURLOPT_MAXFILESIZE_LARGE, curl_off_t(limits.maxBytes));
    setopt(e, CURLOPT_WRITEFUNCTION, &Receive);
    setopt(e, CURLOPT_WRITEDATA, &sink);
    const CURLcode code = Call<CURLcode (*)(CURL*)>(kPerform)(e);
    if (code == CURLE_OK) return util::kNoError;
    body.clear();
    body.shrink_to_fit();
    detail = Call<const char* (*)(CURLcode)>(kStrerror)(code);
    if (sink.tooLarge || code == CURLE_FILESIZE_EXCEEDED) {
        detail = "the image is larger than " + std::to_string(limits.maxBytes) + " bytes";
        return util::kMemoryFull;
    }
    if (sink.noMemory || code == CURLE_OUT_OF_MEMORY) return util::kMemoryFull;
    if (code == CURLE_OPERATION_TIMEDOUT) return util::kIoError;
    if (code == CURLE_HTTP_RETURNED_ERROR || code == CURLE_COULDNT_CONNECT || code == CURLE_COULDNT_RESOLVE_HOST ||
        code == CURLE_URL_MALFORMAT || code == CURLE_UNSUPPORTED_PROTOCOL)
        return util::kFileNotFound;
    return util::kIoError;
}

}  // namespace vd::platform
