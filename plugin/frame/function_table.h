// The plug-in's calculation functions: one declarative list that registration, unregistration,
// the dispatch and the tests all read.
#pragma once

#include "fmapi/function_call.h"

#include <cstdint>
#include <span>

namespace vd {

// The plug-in identifier every function is registered under.
inline constexpr char kPluginId[4] = {'V', 'D', '7', '0'};

inline constexpr uint32_t kShownEverywhere = 0xFF00;          // in all calculation dialogs
inline constexpr uint32_t kShownEverywhereNoUI = 0xFF00 | 1;  // and usable where there is no UI

enum class FunctionGroup {
    Sound,         // fixed ids 1..27, prototypes from the localization table
    Image,         // ids from 51 on, literal prototypes
    File,          // registered from inside the image group, same numbering
    Unregistered,  // uses up its id and registers nothing
};

// A function's own rule for its argument count, with what it answers outside it. The host refuses
// counts outside the registered minArgs..maxArgs before the plug-in sees a call, and no rule here is
// narrower than that, so a rule is met only by a host that does not check the registered counts;
// the dispatch applies it all the same, so that such a call answers what it always has.
struct CountRule {
    int16_t min = 0, max = -1;      // max -1: no upper limit
    int32_t status = 0;             // 0: no rule of its own, every count reaches the handler
    const char* message = nullptr;  // none: the status's table text
};

// How the dispatch reports a function's outcome.
enum class Reporting {
    kStatusText,      // a failure answers its status text as the result
    kEmptyResult,     // a failure leaves the result empty; the status is for Vandrel_GetLastError
    kEmptyContainer,  // a failure answers a container without streams; the status likewise
    kKeepsLastError,  // reports on the error object, which it leaves as it is; a refused count
                      // answers a status text without a name
    kErrorCode,       // a failure is the call's error code to the host, beside whatever number
                      // the outcome still sets; the error object holds its message as usual
};

struct FunctionEntry {
    int16_t id;
    const char* name;       // Sound: also derived from the localized prototype at registration
    int prototypeKey;       // Sound: "String<key>" of the localization table; 0 otherwise
    const char* prototype;  // Image and File: the literal prototype
    int16_t minArgs, maxArgs;  // maxArgs -1: no upper limit
    uint32_t flags;
    Handler handler;
    FunctionGroup group;
    CountRule ownCount = {};
    Reporting reporting = Reporting::kStatusText;
    // 0, or the id of the function whose name the status text of a failed outcome carries. The
    // error object always names the function itself.
    int16_t answersAs = 0;
};

// Sound entries in id order, then the image and file entries in registration order (their ids
// are consecutive from kFirstNumberedId, which the table checks at compile time).
std::span<const FunctionEntry> FunctionTable();

inline constexpr int16_t kFirstNumberedId = 51;
inline constexpr int16_t kNextIdAfterRegistration = 96;

// The registered entry with that id, or none (placeholders and unused ids have none).
const FunctionEntry* FindFunction(int16_t id);

}  // namespace vd
