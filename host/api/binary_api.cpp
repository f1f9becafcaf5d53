// FM_BinaryData_* and FM_QuadChar_*: container streams and four-character codes.
#include "fnam.h"
#include "host_call.h"
#include "objects.h"

#include <cstdint>
#include <cstring>

using namespace vdhost;

namespace {

const Stream& streamAt(const FMX_BinaryData* binary, int32_t index) {
    const auto& streams = deref(binary).streams;
    if (index < 0 || static_cast<size_t>(index) >= streams.size()) throw CallFailure();
    return streams[static_cast<size_t>(index)];
}

}  // namespace

FMX_API FMX_QuadChar* FM_QuadChar_Constructor1(FMX_CallRecord* rec) {
    return hostCall(rec, [] { return new FMX_QuadChar(); });
}

FMX_API FMX_QuadChar* FM_QuadChar_Constructor2(char c0, char c1, char c2, char c3, FMX_CallRecord* rec) {
    return hostCall(rec, [&] {
        auto byte = [](char c) { return static_cast<uint32_t>(static_cast<unsigned char>(c)); };
        return new FMX_QuadChar{byte(c0) << 24 | byte(c1) << 16 | byte(c2) << 8 | byte(c3)};
    });
}

FMX_API void FM_QuadChar_Delete(FMX_QuadChar* code, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete code; });
}

FMX_API uint32_t FM_QuadChar_GetMacType(const FMX_QuadChar* code, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return deref(code).code; });
}

FMX_API void FM_QuadChar_SetMacType(FMX_QuadChar* code, uint32_t type, FMX_CallRecord* rec) {
    hostCall(rec, [&] { deref(code).code = type; });
}

FMX_API bool FM_QuadChar_operatorEQ(const FMX_QuadChar* a, const FMX_QuadChar* b, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return deref(a).code == deref(b).code; });
}

FMX_API FMX_BinaryData* FM_BinaryData_Constructor1(FMX_CallRecord* rec) {
    return hostCall(rec, [] { return new FMX_BinaryData(); });
}

FMX_API FMX_BinaryData* FM_BinaryData_Constructor2(const FMX_BinaryData* other, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return new FMX_BinaryData(deref(other)); });
}

FMX_API void FM_BinaryData_Delete(FMX_BinaryData* binary, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete binary; });
}

FMX_API int32_t FM_BinaryData_GetCount(const FMX_BinaryData* binary, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return static_cast<int32_t>(deref(binary).streams.size()); });
}

FMX_API int32_t FM_BinaryData_GetIndex(const FMX_BinaryData* binary, const FMX_QuadChar* type,
                                       FMX_CallRecord* rec) {
    return hostCallOr(rec, int32_t{-1}, [&] { return deref(binary).indexOf(deref(type).code); });
}

FMX_API void FM_BinaryData_GetType(const FMX_BinaryData* binary, int32_t index, FMX_QuadChar* type,
                                   FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& out = deref(type);
        out.code = streamAt(binary, index).type;
    });
}

FMX_API uint32_t FM_BinaryData_GetSize(const FMX_BinaryData* binary, int32_t index, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return static_cast<uint32_t>(streamAt(binary, index).size()); });
}

FMX_API FMX_ErrCode FM_BinaryData_GetData(const FMX_BinaryData* binary, int32_t index, uint32_t offset,
                                          uint32_t amount, void* buffer, FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&]() -> FMX_ErrCode {
        const auto& s = streamAt(binary, index);
        if (static_cast<uint64_t>(offset) + amount > s.size()) return FMX_ERR_PARAMETER;
        if (amount) std::memcpy(&deref(static_cast<char*>(buffer)), s.bytes->data() + offset, amount);
        return FMX_NO_ERROR;
    });
}

FMX_API FMX_ErrCode FM_BinaryData_Add(FMX_BinaryData* binary, const FMX_QuadChar* type, uint32_t amount,
                                      const void* buffer, FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&]() -> FMX_ErrCode {
        auto& b = deref(binary);
        uint32_t code = deref(type).code;
        if (amount && !buffer) return FMX_ERR_PARAMETER;
        if (b.indexOf(code) >= 0) return FMX_ERR_ALREADY_EXISTS;
        const auto* p = static_cast<const uint8_t*>(buffer);
        b.streams.push_back({code, StreamBytes::copyOf(p, amount)});
        return FMX_NO_ERROR;
    });
}

FMX_API bool FM_BinaryData_Remove(FMX_BinaryData* binary, const FMX_QuadChar* type, FMX_CallRecord* rec) {
    return hostCall(rec, [&] {
        auto& b = deref(binary);
        int32_t i = b.indexOf(deref(type).code);
        if (i < 0) return false;
        b.streams.erase(b.streams.begin() + i);
        return true;
    });
}

FMX_API void FM_BinaryData_RemoveAll(FMX_BinaryData* binary, FMX_CallRecord* rec) {
    hostCall(rec, [&] { deref(binary).streams.clear(); });
}

FMX_API FMX_ErrCode FM_BinaryData_AddFNAMData(FMX_BinaryData* binary, const FMX_Text* name, FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&]() -> FMX_ErrCode {
        auto& b = deref(binary);
        if (b.indexOf(kFnamType) >= 0) return FMX_ERR_ALREADY_EXISTS;
        b.streams.push_back({kFnamType, std::make_shared<const StreamBytes>(encodeFnam(deref(name).units))});
        return FMX_NO_ERROR;
    });
}

FMX_API FMX_ErrCode FM_BinaryData_GetFNAMData(const FMX_BinaryData* binary, FMX_Text* name, FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&]() -> FMX_ErrCode {
        const auto& b = deref(binary);
        auto& out = deref(name);
        int32_t i = b.indexOf(kFnamType);
        if (i < 0) return FMX_ERR_PARAMETER;
        auto decoded = decodeFnam(*b.streams[static_cast<size_t>(i)].bytes);
        if (!decoded) return FMX_ERR_PARAMETER;
        out.units = std::move(*decoded);
        return FMX_NO_ERROR;
    });
}
