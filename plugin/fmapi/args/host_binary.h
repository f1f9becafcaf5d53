// Thin wrappers over the host's container calls (FM_BinaryData_*, FM_QuadChar_* beyond the
// constructor, FM_Data_GetBinaryData), one per call, and owners for what the plug-in makes.
// Host-call failures throw (host_call.h); the host's own error codes are answered unchanged.
#pragma once

#include <fmx/binary.h>
#include <fmx/data.h>

#include <cstdint>
#include <memory>

namespace vd::fmapi {

FMX_BinaryData* NewBinaryData();
FMX_BinaryData* CopyBinaryData(const FMX_BinaryData* other);
void DeleteBinaryData(FMX_BinaryData* binary) noexcept;

int32_t BinaryGetCount(const FMX_BinaryData* binary);
int32_t BinaryGetIndex(const FMX_BinaryData* binary, const FMX_QuadChar* type);
void BinaryGetType(const FMX_BinaryData* binary, int32_t index, FMX_QuadChar* type);
uint32_t BinaryGetSize(const FMX_BinaryData* binary, int32_t index);
FMX_ErrCode BinaryGetData(const FMX_BinaryData* binary, int32_t index, uint32_t offset, uint32_t amount,
                          void* buffer);
FMX_ErrCode BinaryAdd(FMX_BinaryData* binary, const FMX_QuadChar* type, uint32_t amount, const void* buffer);
bool BinaryRemove(FMX_BinaryData* binary, const FMX_QuadChar* type);
void BinaryRemoveAll(FMX_BinaryData* binary);
FMX_ErrCode BinaryAddFNAMData(FMX_BinaryData* binary, const FMX_Text* name);
FMX_ErrCode BinaryGetFNAMData(const FMX_BinaryData* binary, FMX_Text* name);

FMX_QuadChar* NewEmptyQuadChar();
uint32_t QuadCharGetMacType(const FMX_QuadChar* code);
void QuadCharSetMacType(FMX_QuadChar* code, uint32_t type);

const FMX_BinaryData* DataGetBinaryData(const FMX_Data* data);
FMX_Data* NewData();
void DeleteData(FMX_Data* data) noexcept;

struct BinaryDataDeleter {
    void operator()(FMX_BinaryData* binary) const noexcept { DeleteBinaryData(binary); }
};
using OwnedBinaryData = std::unique_ptr<FMX_BinaryData, BinaryDataDeleter>;

struct DataDeleter {
    void operator()(FMX_Data* data) const noexcept { DeleteData(data); }
};
using OwnedData = std::unique_ptr<FMX_Data, DataDeleter>;

}  // namespace vd::fmapi
