// The host objects behind the opaque pointers of the C API. The host's own code (calculations,
// database, command line) works on these structures directly; plug-ins only see pointers.
#pragma once

#include "stream_bytes.h"

#include <fmx/fmx.h>

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <vector>

struct FMX_Text {
    std::u16string units;
};

struct FMX_FixPt {
    double value = 0;
};

struct FMX_QuadChar {
    uint32_t code = 0;
};

struct FMX_Locale {
    int32_t kind = FMX_LOCALE_CURRENT;
};

namespace vdhost {

// Stream bytes never change once added, so copies of a container share them.
struct Stream {
    uint32_t type = 0;
    std::shared_ptr<const StreamBytes> bytes;

    size_t size() const { return bytes ? bytes->size() : 0; }
};

}  // namespace vdhost

struct FMX_BinaryData {
    std::vector<vdhost::Stream> streams;

    int32_t indexOf(uint32_t type) const {
        for (size_t i = 0; i < streams.size(); ++i)
            if (streams[i].type == type) return static_cast<int32_t>(i);
        return -1;
    }
};

// A data value. Text, date, time and timestamp values keep their text; numbers and booleans their
// number; containers their streams and their own text (the reference text of a container stored by
// reference). Conversions to the other forms are made on demand and cached, because the C API hands
// out pointers to them.
struct FMX_Data {
    int32_t type = FMX_TYPE_TEXT;
    FMX_Text text;
    FMX_FixPt number;
    FMX_BinaryData binary;

    mutable std::optional<FMX_Text> textCache;
    mutable std::optional<FMX_FixPt> numberCache;

    void invalidate() {
        textCache.reset();
        numberCache.reset();
    }
};

struct FMX_DataVect {
    std::vector<FMX_Data> items;
};
