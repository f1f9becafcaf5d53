/* The call block the host hands to a plug-in's entry point, FMExternCallProc. It is packed on 2-byte
 * boundaries; fields that held 32-bit pointers in the original layout are pointer-sized here, so the
 * offsets after parm2 move accordingly (pinned by the static checks below). */
#ifndef FMX_CALLBLOCK_H
#define FMX_CALLBLOCK_H

#include <stddef.h>

#include "fmx/types.h"

/* Selectors (whichCall). */
enum {
    FMX_CALL_INIT = 0,
    FMX_CALL_IDLE = 1,
    FMX_CALL_SHUTDOWN = 4,
    FMX_CALL_DO_APP_PREFERENCES = 5,
    FMX_CALL_GET_STRING = 7
};

/* String numbers of FMX_CALL_GET_STRING (parm1). */
enum {
    FMX_STRING_NAME = 128,
    FMX_STRING_DESCRIPTION = 129,
    FMX_STRING_OPTIONS = 131
};

/* Host memory blocks, kept by the host until the plug-in is unloaded. */
typedef void* FMX_MemHandle;
typedef FMX_MemHandle (*FMX_NewHandleProc)(int32_t size);
typedef int32_t (*FMX_SetHandleSizeProc)(FMX_MemHandle handle, int32_t size); /* 0 on success */
typedef int32_t (*FMX_GetHandleSizeProc)(FMX_MemHandle handle);
typedef char* (*FMX_HandleDataProc)(FMX_MemHandle handle);
typedef void (*FMX_DisposeHandleProc)(FMX_MemHandle handle);

#pragma pack(push, 2)
typedef struct ExternCallBlock {
    int16_t extnVersion;    /* the host's interface version */
    uint8_t reserved1[7];
    uint8_t whichCall;      /* selector */
    uint8_t reserved2;
    uint8_t parm1;          /* idle kind; string number */
    uintptr_t parm2;        /* start-up: the host's version text, NUL-terminated UTF-16 */
    uint32_t parm3;         /* string request: capacity of the output buffer in UTF-16 units */
    const void* pluginBundle; /* the absolute path of the plug-in's bundle folder, UTF-8 */
    intptr_t result;        /* start-up: the plug-in's answer; string request: the UTF-16 buffer */
    FMX_NewHandleProc newHandle;
    FMX_SetHandleSizeProc setHandleSize;
    FMX_GetHandleSizeProc getHandleSize;
    FMX_HandleDataProc handleData;
    FMX_DisposeHandleProc disposeHandle;
} ExternCallBlock;
#pragma pack(pop)

#ifdef __cplusplus
#define FMX_STATIC_ASSERT static_assert
#else
#define FMX_STATIC_ASSERT _Static_assert
#endif
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, extnVersion) == 0, "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, whichCall) == 9, "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, parm1) == 11, "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, parm2) == 12, "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, parm3) == 12 + sizeof(void*), "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, pluginBundle) == 16 + sizeof(void*), "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, result) == 16 + 2 * sizeof(void*), "call block layout");
FMX_STATIC_ASSERT(offsetof(ExternCallBlock, newHandle) == 16 + 3 * sizeof(void*), "call block layout");
FMX_STATIC_ASSERT(sizeof(ExternCallBlock) == 16 + 8 * sizeof(void*), "call block layout");

/* The one symbol a plug-in exports. */
typedef void (*FMX_ExternCallProc)(ExternCallBlock* block);
#define FMX_ENTRY_POINT_NAME "FMExternCallProc"

#endif
