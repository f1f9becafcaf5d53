// Stream bytes are copies, on the heap or in a memory file by their size: either way they read
// back byte for byte and outlive the buffer they were copied from.
#include "api/stream_bytes.h"

#include <gtest/gtest.h>

#include <memory>

namespace {

TEST(StreamBytes, CopiesOnEitherSideOfTheMemoryFileSizeReadBackExactly) {
    for (size_t size : {size_t(0), size_t(1), (size_t(1) << 20) - 1, size_t(1) << 20, (size_t(5) << 20) + 7}) {
        SCOPED_TRACE(size);
        auto source = std::make_unique<vdhost::Bytes>(size);
        for (size_t i = 0; i < size; ++i) (*source)[i] = uint8_t((i * 2654435761u) >> 11);
        const vdhost::Bytes expected = *source;
        const auto copy = vdhost::StreamBytes::copyOf(source->data(), source->size());
        source.reset();
        EXPECT_EQ(copy->size(), size);
        EXPECT_TRUE(*copy == expected);
    }
}

}  // namespace
