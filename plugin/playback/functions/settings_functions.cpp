// Vandrel_Get and Vandrel_Set: tags looked up in a table, each row a handler. Their failures are
// the call's error code (the table row's Reporting::kErrorCode), with the message on the error
// object as usual.
#include "container/workaround_switches.h"
#include "fmapi/args/arguments.h"
#include "fmapi/args/host_number.h"
#include "platform/media/media_layer.h"
#include "playback/functions/playback_functions.h"
#include "playback/media_pool.h"
#include "playback/recorder_link.h"
#include "util/status_codes.h"

#include <cmath>
#include <cstdio>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace vd::playback {

namespace {

using Handler = fmapi::Outcome (*)(const FMX_DataVect* args);

struct TagRow {
    std::string_view tag;
    Handler handler;
};

std::string Decimal(int value) { return std::to_string(value); }

// Pool values are handed over cut down to hundredths.
double Hundredths(float value) { return std::floor(double(value) * 100.0) / 100.0; }

uint32_t SoundId(const FMX_DataVect* args, uint16_t at) {
    return ArgCount(args) > at ? uint32_t(fmapi::FixPtAsLong(ArgNumber(args, at))) : 0;
}

MediaPool& Pool() {
    MediaPool* pool = MediaPool::Instance();
    if (!pool) throw std::bad_alloc();
    return *pool;
}

// Get's handlers.
fmapi::Outcome RecorderState(const FMX_DataVect*) {
    const auto state = Recorder().state.load();
    return fmapi::Outcome::Text(Decimal(state ? state() : 0));
}

fmapi::Outcome MediaVersion(const FMX_DataVect*) {
    const uint32_t version = platform::MediaLayerVersion();
    if (version == 0) return fmapi::Outcome::Failure(util::kGestaltUndefined);
    char digits[16];
    std::snprintf(digits, sizeof digits, "%d%d%d", int(version >> 24 & 0xF), int(version >> 20 & 0xF),
                  int(version >> 16 & 0xF));
    return fmapi::Outcome::Text(std::string(digits));
}

fmapi::Outcome LinkMediaValue(const FMX_DataVect*) {
    return fmapi::Outcome::Text(Decimal(container::gLinkMediaWorkaround & 0x7FFF));
}

fmapi::Outcome RemoteFileValue(const FMX_DataVect*) {
    return fmapi::Outcome::Text(Decimal(container::gRemoteFileWorkaround & 0x7FFF));
}

fmapi::Outcome PlayStatus(const FMX_DataVect* args) {
    const uint32_t id = ArgCount(args) == 2 ? SoundId(args, 1) : 0;
    return fmapi::Outcome::Text(Pool().IsPlaying(id) ? "1" : "0");
}

template <float (MediaPool::*Read)(uint32_t)>
fmapi::Outcome PoolValue(const FMX_DataVect* args) {
    if (ArgCount(args) >= 3) return fmapi::Outcome::FailureWithNumber(util::kBadParameter, 0);
    return fmapi::Outcome::Number(Hundredths((Pool().*Read)(SoundId(args, 1))));
}

constexpr TagRow kGetTags[] = {
    {"recording", RecorderState},
    {"quicktime-version", MediaVersion},
    {"quicktime", MediaVersion},
    {"lmworkaround", LinkMediaValue},
    {"earlierqtcompatibility", LinkMediaValue},
    {"rfworkaround", RemoteFileValue},
    {"playstatus", PlayStatus},
    {"volume", PoolValue<&MediaPool::GetVolume>},
    {"tempo", PoolValue<&MediaPool::GetRate>},
    {"balance", PoolValue<&MediaPool::GetBalance>},
};

// Set's handlers. The value is ORed into the word, never assigned: once the value bit is 1, as it
// is from the start, setting 0 only marks the word as changed by the user.
fmapi::Outcome SetWorkaround(uint16_t& word, const FMX_DataVect* args) {
    if (ArgCount(args) < 2) {
        word = uint16_t((word & 0x7FFF) | 1);
        return fmapi::Outcome::Text(std::string());
    }
    const int value = ArgHostBoolean(args, 1) ? 1 : 0;
    word = uint16_t((word & 0x7FFF) | value);
    return fmapi::Outcome::Text(Decimal(value));
}

fmapi::Outcome SetLinkMedia(const FMX_DataVect* args) { return SetWorkaround(container::gLinkMediaWorkaround, args); }
fmapi::Outcome SetRemoteFile(const FMX_DataVect* args) { return SetWorkaround(container::gRemoteFileWorkaround, args); }

template <int32_t (MediaPool::*Write)(uint32_t, float)>
fmapi::Outcome SetPoolValue(const FMX_DataVect* args) {
    const uint16_t count = ArgCount(args);
    if (count != 2 && count != 3) return fmapi::Outcome::Failure(util::kBadParameter);
    const auto value = float(fmapi::FixPtAsFloat(ArgNumber(args, 1)));
    if (int32_t e = (Pool().*Write)(count == 3 ? SoundId(args, 2) : 0, value)) return fmapi::Outcome::Failure(e);
    return fmapi::Outcome::Nothing();
}

constexpr TagRow kSetTags[] = {
    {"lmworkaround", SetLinkMedia},
    {"earlierqtcompatibility", SetLinkMedia},
    {"rfworkaround", SetRemoteFile},
    {"volume", SetPoolValue<&MediaPool::SetVolume>},
    {"tempo", SetPoolValue<&MediaPool::SetRate>},
    {"balance", SetPoolValue<&MediaPool::SetBalance>},
};

fmapi::Outcome Dispatch(const FMX_DataVect* args, std::span<const TagRow> table, const char* countMessage) {
    if (ArgCount(args) < 1) return fmapi::Outcome::Failure(util::kBadParameter, countMessage);
    std::string tag = ArgCText(ArgText(args, 0));
    for (char& c : tag)
        if (c >= 'A' && c <= 'Z') c = char(c - 'A' + 'a');
    for (const TagRow& row : table)
        if (row.tag == tag) return row.handler(args);
    return fmapi::Outcome::Failure(util::kBadParameter, "Invalid tag.");
}

}  // namespace

fmapi::Outcome GetFunction(const FunctionCall& call) {
    return Dispatch(call.args, kGetTags, "This function requires exactly 1 parameter.");
}

fmapi::Outcome SetFunction(const FunctionCall& call) {
    return Dispatch(call.args, kSetTags, "This function requires 1 or 2 parameters.");
}

}  // namespace vd::playback
