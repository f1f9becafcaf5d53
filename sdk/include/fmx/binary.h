/* Container data: an ordered list of typed streams, and four-character codes. */
#ifndef FMX_BINARY_H
#define FMX_BINARY_H

#include "fmx/types.h"

/* Four-character codes; the first character is the most significant byte of the Mac type. */
FMX_API FMX_QuadChar* FM_QuadChar_Constructor1(FMX_CallRecord* rec);
FMX_API FMX_QuadChar* FM_QuadChar_Constructor2(char c0, char c1, char c2, char c3, FMX_CallRecord* rec);
FMX_API void FM_QuadChar_Delete(FMX_QuadChar* code, FMX_CallRecord* rec);
FMX_API uint32_t FM_QuadChar_GetMacType(const FMX_QuadChar* code, FMX_CallRecord* rec);
FMX_API void FM_QuadChar_SetMacType(FMX_QuadChar* code, uint32_t type, FMX_CallRecord* rec);
FMX_API bool FM_QuadChar_operatorEQ(const FMX_QuadChar* a, const FMX_QuadChar* b, FMX_CallRecord* rec);

FMX_API FMX_BinaryData* FM_BinaryData_Constructor1(FMX_CallRecord* rec);
FMX_API FMX_BinaryData* FM_BinaryData_Constructor2(const FMX_BinaryData* other, FMX_CallRecord* rec);
FMX_API void FM_BinaryData_Delete(FMX_BinaryData* binary, FMX_CallRecord* rec);

FMX_API int32_t FM_BinaryData_GetCount(const FMX_BinaryData* binary, FMX_CallRecord* rec);
/* Index of the stream of that type, or -1 when there is none. */
FMX_API int32_t FM_BinaryData_GetIndex(const FMX_BinaryData* binary, const FMX_QuadChar* type,
                                       FMX_CallRecord* rec);
FMX_API void FM_BinaryData_GetType(const FMX_BinaryData* binary, int32_t index, FMX_QuadChar* type,
                                   FMX_CallRecord* rec);
FMX_API uint32_t FM_BinaryData_GetSize(const FMX_BinaryData* binary, int32_t index, FMX_CallRecord* rec);
/* Copies amount bytes from offset of stream index; FMX_ERR_PARAMETER when the range is outside it. */
FMX_API FMX_ErrCode FM_BinaryData_GetData(const FMX_BinaryData* binary, int32_t index, uint32_t offset,
                                          uint32_t amount, void* buffer, FMX_CallRecord* rec);
/* Appends a stream; FMX_ERR_ALREADY_EXISTS when the type is already present. */
FMX_API FMX_ErrCode FM_BinaryData_Add(FMX_BinaryData* binary, const FMX_QuadChar* type, uint32_t amount,
                                      const void* buffer, FMX_CallRecord* rec);
/* Removes the stream of that type; answers whether there was one. */
FMX_API bool FM_BinaryData_Remove(FMX_BinaryData* binary, const FMX_QuadChar* type, FMX_CallRecord* rec);
FMX_API void FM_BinaryData_RemoveAll(FMX_BinaryData* binary, FMX_CallRecord* rec);
/* The "FNAM" stream in the host's own encoding: written and read only through these two calls. */
FMX_API FMX_ErrCode FM_BinaryData_AddFNAMData(FMX_BinaryData* binary, const FMX_Text* name,
                                              FMX_CallRecord* rec);
FMX_API FMX_ErrCode FM_BinaryData_GetFNAMData(const FMX_BinaryData* binary, FMX_Text* name,
                                              FMX_CallRecord* rec);

#endif
