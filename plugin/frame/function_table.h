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

struct FunctionEntry {
    int16_t id;
    const char* name;       // Sound: also derived from the localized prototype at registration
    int prototypeKey;       // Sound: "String<key>" of the localization table; 0 otherwise
    const char* prototype;  // Image and File: the literal prototype
    int16_t minArgs, maxArgs;  // maxArgs -1: no upper limit
    uint32_t flags;
    Handler handler;
    FunctionGroup group;
};

// Sound entries in id order, then the image and file entries in registration order (their ids
// are consecutive from kFirstNumberedId, which the table checks at compile time).
std::span<const FunctionEntry> FunctionTable();

inline constexpr int16_t kFirstNumberedId = 51;
inline constexpr int16_t kNextIdAfterRegistration = 96;

// The registered entry with that id, or none (placeholders and unused ids have none).
const FunctionEntry* FindFunction(int16_t id);

}  // namespace vd
