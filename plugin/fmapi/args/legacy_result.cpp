#include "fmapi/args/legacy_result.h"

#include <algorithm>
#include <cstdio>
#include <cstring>

namespace vd {

namespace {

struct MemoryCallbacks {
    FMX_NewHandleProc newHandle = nullptr;
    FMX_SetHandleSizeProc setHandleSize = nullptr;
    FMX_GetHandleSizeProc getHandleSize = nullptr;
    FMX_HandleDataProc handleData = nullptr;
    FMX_DisposeHandleProc disposeHandle = nullptr;

    bool complete() const { return newHandle && setHandleSize && getHandleSize && handleData && disposeHandle; }
};

MemoryCallbacks gMemory;
FMX_MemHandle gLegacyBlock = nullptr;

}  // namespace

void KeepMemoryCallbacks(const ExternCallBlock& block) noexcept {
    // A block made with one host's callbacks must be given back through the same ones.
    if (gLegacyBlock && block.disposeHandle != gMemory.disposeHandle) ReleaseLegacyResult();
    gMemory = {block.newHandle, block.setHandleSize, block.getHandleSize, block.handleData, block.disposeHandle};
}

void SetLegacyResult(long code, std::string_view message) noexcept {
    char text[512];
    int length = std::snprintf(text, sizeof text, "$%ld:%.*s", code, static_cast<int>(message.size()),
                               message.data());
    if (length < 0 || !gMemory.complete()) return;
    size_t size = std::min(static_cast<size_t>(length), sizeof text - 1);
    if (!gLegacyBlock) gLegacyBlock = gMemory.newHandle(0);
    if (!gLegacyBlock) return;
    if (gMemory.setHandleSize(gLegacyBlock, 0) != 0) return;
    if (gMemory.setHandleSize(gLegacyBlock, static_cast<int32_t>(size)) != 0) return;
    if (char* data = gMemory.handleData(gLegacyBlock)) std::memcpy(data, text, size);
}

FMX_MemHandle LegacyResultBlock() noexcept { return gLegacyBlock; }

std::string LegacyResultText() {
    if (!gLegacyBlock || !gMemory.complete()) return {};
    int32_t size = gMemory.getHandleSize(gLegacyBlock);
    const char* data = gMemory.handleData(gLegacyBlock);
    return size > 0 && data ? std::string(data, static_cast<size_t>(size)) : std::string();
}

void ReleaseLegacyResult() noexcept {
    if (gLegacyBlock && gMemory.disposeHandle) gMemory.disposeHandle(gLegacyBlock);
    gLegacyBlock = nullptr;
}

}  // namespace vd
