#include "fmapi/args/host_binary.h"

#include "fmapi/args/host_call.h"

namespace vd::fmapi {

FMX_BinaryData* NewBinaryData() {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_Constructor1(r); });
}

FMX_BinaryData* CopyBinaryData(const FMX_BinaryData* other) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_Constructor2(other, r); });
}

void DeleteBinaryData(FMX_BinaryData* binary) noexcept {
    if (binary) Unchecked([&](FMX_CallRecord* r) { FM_BinaryData_Delete(binary, r); });
}

int32_t BinaryGetCount(const FMX_BinaryData* binary) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_GetCount(binary, r); });
}

int32_t BinaryGetIndex(const FMX_BinaryData* binary, const FMX_QuadChar* type) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_GetIndex(binary, type, r); });
}

void BinaryGetType(const FMX_BinaryData* binary, int32_t index, FMX_QuadChar* type) {
    Checked([&](FMX_CallRecord* r) { FM_BinaryData_GetType(binary, index, type, r); });
}

uint32_t BinaryGetSize(const FMX_BinaryData* binary, int32_t index) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_GetSize(binary, index, r); });
}

FMX_ErrCode BinaryGetData(const FMX_BinaryData* binary, int32_t index, uint32_t offset, uint32_t amount,
                          void* buffer) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_GetData(binary, index, offset, amount, buffer, r); });
}

FMX_ErrCode BinaryAdd(FMX_BinaryData* binary, const FMX_QuadChar* type, uint32_t amount, const void* buffer) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_Add(binary, type, amount, buffer, r); });
}

bool BinaryRemove(FMX_BinaryData* binary, const FMX_QuadChar* type) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_Remove(binary, type, r); });
}

void BinaryRemoveAll(FMX_BinaryData* binary) {
    Checked([&](FMX_CallRecord* r) { FM_BinaryData_RemoveAll(binary, r); });
}

FMX_ErrCode BinaryAddFNAMData(FMX_BinaryData* binary, const FMX_Text* name) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_AddFNAMData(binary, name, r); });
}

FMX_ErrCode BinaryGetFNAMData(const FMX_BinaryData* binary, FMX_Text* name) {
    return Checked([&](FMX_CallRecord* r) { return FM_BinaryData_GetFNAMData(binary, name, r); });
}

FMX_QuadChar* NewEmptyQuadChar() {
    return Checked([&](FMX_CallRecord* r) { return FM_QuadChar_Constructor1(r); });
}

uint32_t QuadCharGetMacType(const FMX_QuadChar* code) {
    return Checked([&](FMX_CallRecord* r) { return FM_QuadChar_GetMacType(code, r); });
}

void QuadCharSetMacType(FMX_QuadChar* code, uint32_t type) {
    Checked([&](FMX_CallRecord* r) { FM_QuadChar_SetMacType(code, type, r); });
}

const FMX_BinaryData* DataGetBinaryData(const FMX_Data* data) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_GetBinaryData(data, r); });
}

FMX_Data* NewData() {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_Constructor1(r); });
}

void DeleteData(FMX_Data* data) noexcept {
    if (data) Unchecked([&](FMX_CallRecord* r) { FM_Data_Delete(data, r); });
}

}  // namespace vd::fmapi
