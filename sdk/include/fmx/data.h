/* Numbers, locales, data values and data vectors. */
#ifndef FMX_DATA_H
#define FMX_DATA_H

#include "fmx/types.h"

/* Numbers (IEEE doubles). AsLong truncates toward zero and saturates at the int32 range. */
FMX_API FMX_FixPt* FM_FixPt_Constructor1(int32_t value, FMX_CallRecord* rec);
FMX_API void FM_FixPt_Delete(FMX_FixPt* number, FMX_CallRecord* rec);
FMX_API void FM_FixPt_AssignInt(FMX_FixPt* number, int32_t value, FMX_CallRecord* rec);
/* A value that is not finite fails the call and leaves the number as it was. */
FMX_API void FM_FixPt_AssignDouble(FMX_FixPt* number, double value, FMX_CallRecord* rec);
FMX_API int32_t FM_FixPt_AsLong(const FMX_FixPt* number, FMX_CallRecord* rec);
FMX_API double FM_FixPt_AsFloat(const FMX_FixPt* number, FMX_CallRecord* rec);
FMX_API bool FM_FixPt_AsBool(const FMX_FixPt* number, FMX_CallRecord* rec);

FMX_API FMX_Locale* FM_Locale_Constructor1(int32_t kind, FMX_CallRecord* rec);
FMX_API void FM_Locale_Delete(FMX_Locale* locale, FMX_CallRecord* rec);

/* Data values. A new value is empty text. The pointers answered by the GetAs calls belong to the
 * value and stay valid until it changes or is deleted. */
FMX_API FMX_Data* FM_Data_Constructor1(FMX_CallRecord* rec);
FMX_API void FM_Data_Delete(FMX_Data* data, FMX_CallRecord* rec);
FMX_API int32_t FM_Data_GetNativeType(const FMX_Data* data, FMX_CallRecord* rec);
FMX_API bool FM_Data_IsEmpty(const FMX_Data* data, FMX_CallRecord* rec);
/* The value as text; for a container, its own text (a reference container's reference text). */
FMX_API const FMX_Text* FM_Data_GetAsText(const FMX_Data* data, FMX_CallRecord* rec);
FMX_API const FMX_FixPt* FM_Data_GetAsNumber(const FMX_Data* data, FMX_CallRecord* rec);
FMX_API bool FM_Data_GetAsBoolean(const FMX_Data* data, FMX_CallRecord* rec);
/* The value's streams; a value that is not a container answers an empty binary data. */
FMX_API const FMX_BinaryData* FM_Data_GetBinaryData(const FMX_Data* data, FMX_CallRecord* rec);
/* Sets the value from text, converted to nativeType (text, number, date, time, timestamp, boolean;
 * FMX_TYPE_BINARY makes a container stored by reference whose text is the given text). */
FMX_API FMX_ErrCode FM_Data_SetAsText(FMX_Data* data, const FMX_Text* text, const FMX_Locale* locale,
                                      int32_t nativeType, FMX_CallRecord* rec);
FMX_API FMX_ErrCode FM_Data_SetAsNumber(FMX_Data* data, const FMX_FixPt* number, int32_t nativeType,
                                        FMX_CallRecord* rec);
/* Makes the value a container holding a copy of the streams. */
FMX_API FMX_ErrCode FM_Data_SetBinaryData(FMX_Data* data, const FMX_BinaryData* binary,
                                          bool forceBinaryNative, FMX_CallRecord* rec);
FMX_API void FM_Data_Clear(FMX_Data* data, int32_t nativeType, FMX_CallRecord* rec);

/* Data vectors (argument lists). An index out of range fails the call. */
FMX_API FMX_DataVect* FM_DataVect_Constructor1(FMX_CallRecord* rec);
FMX_API void FM_DataVect_Delete(FMX_DataVect* vect, FMX_CallRecord* rec);
FMX_API uint32_t FM_DataVect_Size(const FMX_DataVect* vect, FMX_CallRecord* rec);
FMX_API void FM_DataVect_Clear(FMX_DataVect* vect, FMX_CallRecord* rec);
FMX_API void FM_DataVect_PushBack(FMX_DataVect* vect, const FMX_Data* data, FMX_CallRecord* rec);
FMX_API const FMX_Data* FM_DataVect_At(const FMX_DataVect* vect, uint32_t position, FMX_CallRecord* rec);
FMX_API const FMX_Text* FM_DataVect_AtAsText(const FMX_DataVect* vect, uint32_t position,
                                             FMX_CallRecord* rec);
FMX_API const FMX_FixPt* FM_DataVect_AtAsNumber(const FMX_DataVect* vect, uint32_t position,
                                                FMX_CallRecord* rec);
FMX_API bool FM_DataVect_AtAsBoolean(const FMX_DataVect* vect, uint32_t position, FMX_CallRecord* rec);
FMX_API const FMX_BinaryData* FM_DataVect_AtAsBinaryData(const FMX_DataVect* vect, uint32_t position,
                                                         FMX_CallRecord* rec);

#endif
