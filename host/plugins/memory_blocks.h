// Host memory blocks handed to plug-ins through the call block. The callbacks carry no context, so the
// blocks are process-wide; whatever a plug-in leaves behind is freed when the plug-ins are unloaded.
#pragma once

#include <fmx/callblock.h>

#include <string>

namespace vdhost {

struct MemoryBlockCallbacks {
    FMX_NewHandleProc newHandle;
    FMX_SetHandleSizeProc setHandleSize;
    FMX_GetHandleSizeProc getHandleSize;
    FMX_HandleDataProc handleData;
    FMX_DisposeHandleProc disposeHandle;
};

const MemoryBlockCallbacks& memoryBlockCallbacks();

// Text held in a block, for hosts that show a plug-in's last message ("" for an unknown block).
std::string memoryBlockText(FMX_MemHandle handle);

size_t liveMemoryBlocks();
void disposeAllMemoryBlocks();

}  // namespace vdhost
