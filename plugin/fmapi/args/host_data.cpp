#include "fmapi/args/host_data.h"

#include "fmapi/args/host_call.h"

namespace vd::fmapi {

int32_t DataGetNativeType(const FMX_Data* data) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_GetNativeType(data, r); });
}

bool DataIsEmpty(const FMX_Data* data) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_IsEmpty(data, r); });
}

const FMX_Text* DataGetAsText(const FMX_Data* data) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_GetAsText(data, r); });
}

FMX_ErrCode DataSetAsText(FMX_Data* data, const FMX_Text* text, const FMX_Locale* locale,
                          int32_t nativeType) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_SetAsText(data, text, locale, nativeType, r); });
}

FMX_ErrCode DataSetAsNumber(FMX_Data* data, const FMX_FixPt* number, int32_t nativeType) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_SetAsNumber(data, number, nativeType, r); });
}

FMX_ErrCode DataSetBinaryData(FMX_Data* data, const FMX_BinaryData* binary, bool forceBinaryNative) {
    return Checked([&](FMX_CallRecord* r) { return FM_Data_SetBinaryData(data, binary, forceBinaryNative, r); });
}

uint32_t VectSize(const FMX_DataVect* vect) {
    return Checked([&](FMX_CallRecord* r) { return FM_DataVect_Size(vect, r); });
}

const FMX_Data* VectAt(const FMX_DataVect* vect, uint32_t position) {
    return Checked([&](FMX_CallRecord* r) { return FM_DataVect_At(vect, position, r); });
}

const FMX_Text* VectAtAsText(const FMX_DataVect* vect, uint32_t position) {
    return Checked([&](FMX_CallRecord* r) { return FM_DataVect_AtAsText(vect, position, r); });
}

const FMX_FixPt* VectAtAsNumber(const FMX_DataVect* vect, uint32_t position) {
    return Checked([&](FMX_CallRecord* r) { return FM_DataVect_AtAsNumber(vect, position, r); });
}

bool VectAtAsBoolean(const FMX_DataVect* vect, uint32_t position) {
    return Checked([&](FMX_CallRecord* r) { return FM_DataVect_AtAsBoolean(vect, position, r); });
}

const FMX_BinaryData* VectAtAsBinaryData(const FMX_DataVect* vect, uint32_t position) {
    return Checked([&](FMX_CallRecord* r) { return FM_DataVect_AtAsBinaryData(vect, position, r); });
}

}  // namespace vd::fmapi
