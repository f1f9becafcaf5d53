// Thin wrappers over the host's data-value and argument-vector calls (FM_Data_*, FM_DataVect_*),
// one per call.
#pragma once

#include <fmx/binary.h>
#include <fmx/data.h>

#include <cstdint>

namespace vd::fmapi {

int32_t DataGetNativeType(const FMX_Data* data);
bool DataIsEmpty(const FMX_Data* data);
const FMX_Text* DataGetAsText(const FMX_Data* data);
FMX_ErrCode DataSetAsText(FMX_Data* data, const FMX_Text* text, const FMX_Locale* locale,
                          int32_t nativeType);
FMX_ErrCode DataSetAsNumber(FMX_Data* data, const FMX_FixPt* number, int32_t nativeType);
FMX_ErrCode DataSetBinaryData(FMX_Data* data, const FMX_BinaryData* binary, bool forceBinaryNative);

uint32_t VectSize(const FMX_DataVect* vect);
const FMX_Data* VectAt(const FMX_DataVect* vect, uint32_t position);
const FMX_Text* VectAtAsText(const FMX_DataVect* vect, uint32_t position);
const FMX_FixPt* VectAtAsNumber(const FMX_DataVect* vect, uint32_t position);
bool VectAtAsBoolean(const FMX_DataVect* vect, uint32_t position);
const FMX_BinaryData* VectAtAsBinaryData(const FMX_DataVect* vect, uint32_t position);

}  // namespace vd::fmapi
