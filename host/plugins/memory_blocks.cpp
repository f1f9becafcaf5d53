#include "memory_blocks.h"

#include <mutex>
#include <new>
#include <unordered_set>
#include <vector>

namespace vdhost {
namespace {

struct Block {
    std::vector<char> bytes;
};

// Plug-ins call these from the main thread, but a background thread of a plug-in might too.
std::mutex gMutex;
std::unordered_set<Block*>& liveBlocks() {
    static std::unordered_set<Block*> blocks;
    return blocks;
}

Block* known(FMX_MemHandle handle) {
    auto* b = static_cast<Block*>(handle);
    return liveBlocks().count(b) ? b : nullptr;
}

FMX_MemHandle newHandle(int32_t size) {
    if (size < 0) return nullptr;
    std::lock_guard lock(gMutex);
    auto* b = new (std::nothrow) Block();
    if (!b) return nullptr;
    try {
        b->bytes.resize(static_cast<size_t>(size));
        liveBlocks().insert(b);
    } catch (...) {
        delete b;
        return nullptr;
    }
    return b;
}

int32_t setHandleSize(FMX_MemHandle handle, int32_t size) {
    std::lock_guard lock(gMutex);
    Block* b = known(handle);
    if (!b || size < 0) return -50;
    try {
        b->bytes.resize(static_cast<size_t>(size));
    } catch (...) {
        return -108;
    }
    return 0;
}

int32_t getHandleSize(FMX_MemHandle handle) {
    std::lock_guard lock(gMutex);
    Block* b = known(handle);
    return b ? static_cast<int32_t>(b->bytes.size()) : 0;
}

char* handleData(FMX_MemHandle handle) {
    std::lock_guard lock(gMutex);
    Block* b = known(handle);
    return b ? b->bytes.data() : nullptr;
}

void disposeHandle(FMX_MemHandle handle) {
    std::lock_guard lock(gMutex);
    if (Block* b = known(handle)) {
        liveBlocks().erase(b);
        delete b;
    }
}

}  // namespace

const MemoryBlockCallbacks& memoryBlockCallbacks() {
    static const MemoryBlockCallbacks callbacks{newHandle, setHandleSize, getHandleSize, handleData, disposeHandle};
    return callbacks;
}

std::string memoryBlockText(FMX_MemHandle handle) {
    std::lock_guard lock(gMutex);
    Block* b = known(handle);
    return b ? std::string(b->bytes.begin(), b->bytes.end()) : std::string();
}

size_t liveMemoryBlocks() {
    std::lock_guard lock(gMutex);
    return liveBlocks().size();
}

void disposeAllMemoryBlocks() {
    std::lock_guard lock(gMutex);
    for (Block* b : liveBlocks()) delete b;
    liveBlocks().clear();
}

}  // namespace vdhost
