// FM_Data_* and FM_DataVect_*: data values and argument vectors.
#include "host_call.h"
#include "objects.h"
#include "values.h"

using namespace vdhost;

namespace {

const FMX_Data& itemAt(const FMX_DataVect* vect, uint32_t position) {
    const auto& items = deref(vect).items;
    if (position >= items.size()) throw CallFailure();
    return items[position];
}

FMX_Data fromText(const std::u16string& text, int32_t nativeType) {
    switch (nativeType) {
    case FMX_TYPE_TEXT:
        return makeText(text);
    case FMX_TYPE_NUMBER: {
        auto n = parseNumber(text);
        return n ? makeNumber(*n) : makeText(u"");
    }
    case FMX_TYPE_DATE:
    case FMX_TYPE_TIME:
    case FMX_TYPE_TIMESTAMP: {
        FMX_Data d = makeText(text);
        d.type = nativeType;
        return d;
    }
    case FMX_TYPE_BINARY:
        return makeContainer({}, text);  // a container stored by reference
    case FMX_TYPE_BOOLEAN:
        return makeBoolean(parseNumber(text).value_or(0) != 0);
    default:
        throw CallFailure();
    }
}

}  // namespace

FMX_API FMX_Data* FM_Data_Constructor1(FMX_CallRecord* rec) {
    return hostCall(rec, [] { return new FMX_Data(); });
}

FMX_API void FM_Data_Delete(FMX_Data* data, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete data; });
}

FMX_API int32_t FM_Data_GetNativeType(const FMX_Data* data, FMX_CallRecord* rec) {
    return hostCallOr(rec, int32_t{FMX_TYPE_INVALID}, [&] { return deref(data).type; });
}

FMX_API bool FM_Data_IsEmpty(const FMX_Data* data, FMX_CallRecord* rec) {
    return hostCallOr(rec, true, [&] { return emptyOf(deref(data)); });
}

FMX_API const FMX_Text* FM_Data_GetAsText(const FMX_Data* data, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return &textOf(deref(data)); });
}

FMX_API const FMX_FixPt* FM_Data_GetAsNumber(const FMX_Data* data, FMX_CallRecord* rec) {
    return hostCall(rec, [&]() -> const FMX_FixPt* {
        const auto& d = deref(data);
        if (isNumeric(d)) return &d.number;
        numberOf(d);  // fills the cache
        return &*d.numberCache;
    });
}

FMX_API bool FM_Data_GetAsBoolean(const FMX_Data* data, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return booleanOf(deref(data)); });
}

FMX_API const FMX_BinaryData* FM_Data_GetBinaryData(const FMX_Data* data, FMX_CallRecord* rec) {
    // Values that are not containers keep an empty stream list, so this is always safe to read.
    return hostCall(rec, [&] { return &deref(data).binary; });
}

FMX_API FMX_ErrCode FM_Data_SetAsText(FMX_Data* data, const FMX_Text* text, const FMX_Locale*, int32_t nativeType,
                                      FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&] {
        auto& d = deref(data);
        d = fromText(deref(text).units, nativeType);
        return FMX_ErrCode{FMX_NO_ERROR};
    });
}

FMX_API FMX_ErrCode FM_Data_SetAsNumber(FMX_Data* data, const FMX_FixPt* number, int32_t nativeType,
                                        FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&] {
        auto& d = deref(data);
        double v = deref(number).value;
        if (nativeType == FMX_TYPE_TEXT)
            d = makeText(formatNumber(v));
        else if (nativeType == FMX_TYPE_BOOLEAN)
            d = makeBoolean(v != 0);
        else if (nativeType == FMX_TYPE_NUMBER)
            d = makeNumber(v);
        else
            throw CallFailure();
        return FMX_ErrCode{FMX_NO_ERROR};
    });
}

FMX_API FMX_ErrCode FM_Data_SetBinaryData(FMX_Data* data, const FMX_BinaryData* binary, bool,
                                          FMX_CallRecord* rec) {
    return hostCallOr(rec, FMX_ErrCode{FMX_ERR_PARAMETER}, [&] {
        auto& d = deref(data);
        d = makeContainer(deref(binary));
        return FMX_ErrCode{FMX_NO_ERROR};
    });
}

FMX_API void FM_Data_Clear(FMX_Data* data, int32_t nativeType, FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& d = deref(data);
        if (nativeType < FMX_TYPE_INVALID || nativeType > FMX_TYPE_BOOLEAN) throw CallFailure();
        d = FMX_Data();
        d.type = nativeType == FMX_TYPE_INVALID ? FMX_TYPE_TEXT : nativeType;
    });
}

FMX_API FMX_DataVect* FM_DataVect_Constructor1(FMX_CallRecord* rec) {
    return hostCall(rec, [] { return new FMX_DataVect(); });
}

FMX_API void FM_DataVect_Delete(FMX_DataVect* vect, FMX_CallRecord* rec) {
    hostCall(rec, [&] { delete vect; });
}

FMX_API uint32_t FM_DataVect_Size(const FMX_DataVect* vect, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return static_cast<uint32_t>(deref(vect).items.size()); });
}

FMX_API void FM_DataVect_Clear(FMX_DataVect* vect, FMX_CallRecord* rec) {
    hostCall(rec, [&] { deref(vect).items.clear(); });
}

FMX_API void FM_DataVect_PushBack(FMX_DataVect* vect, const FMX_Data* data, FMX_CallRecord* rec) {
    hostCall(rec, [&] {
        auto& v = deref(vect);
        v.items.push_back(deref(data));
    });
}

FMX_API const FMX_Data* FM_DataVect_At(const FMX_DataVect* vect, uint32_t position, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return &itemAt(vect, position); });
}

FMX_API const FMX_Text* FM_DataVect_AtAsText(const FMX_DataVect* vect, uint32_t position, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return &textOf(itemAt(vect, position)); });
}

FMX_API const FMX_FixPt* FM_DataVect_AtAsNumber(const FMX_DataVect* vect, uint32_t position,
                                                FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return FM_Data_GetAsNumber(&itemAt(vect, position), nullptr); });
}

FMX_API bool FM_DataVect_AtAsBoolean(const FMX_DataVect* vect, uint32_t position, FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return booleanOf(itemAt(vect, position)); });
}

FMX_API const FMX_BinaryData* FM_DataVect_AtAsBinaryData(const FMX_DataVect* vect, uint32_t position,
                                                         FMX_CallRecord* rec) {
    return hostCall(rec, [&] { return &itemAt(vect, position).binary; });
}
