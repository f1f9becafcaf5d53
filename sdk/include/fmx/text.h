/* Host texts: UTF-16 strings owned by the host. */
#ifndef FMX_TEXT_H
#define FMX_TEXT_H

#include "fmx/types.h"

FMX_API FMX_Text* FM_Text_Constructor1(FMX_CallRecord* rec);
FMX_API void FM_Text_Delete(FMX_Text* text, FMX_CallRecord* rec);

/* Replaces the text with a NUL-terminated 8-bit text in the given encoding. Invalid UTF-8 sequences
 * become U+FFFD; an unknown encoding fails the call. */
FMX_API void FM_Text_Assign(FMX_Text* text, const char* s, int32_t encoding, FMX_CallRecord* rec);
/* Replaces the text with NUL-terminated UTF-16 units. */
FMX_API void FM_Text_AssignUnicode(FMX_Text* text, const uint16_t* s, FMX_CallRecord* rec);
FMX_API void FM_Text_AssignUnicodeWithLength(FMX_Text* text, const uint16_t* s, uint32_t length,
                                             FMX_CallRecord* rec);

/* Number of UTF-16 units. */
FMX_API uint32_t FM_Text_GetSize(const FMX_Text* text, FMX_CallRecord* rec);
/* Copies units [position, position + size) into buffer (clamped to the text; no terminator). */
FMX_API void FM_Text_GetUnicode(const FMX_Text* text, uint16_t* buffer, uint32_t position,
                                uint32_t size, FMX_CallRecord* rec);
/* Converts units [position, position + size) into the encoding and writes at most bufferSize bytes,
 * never half a character; a NUL follows when there is room. Answers the bytes written, without the
 * NUL. Characters the native encoding lacks become '?'. */
FMX_API uint32_t FM_Text_GetBytes(const FMX_Text* text, char* buffer, uint32_t bufferSize,
                                  uint32_t position, uint32_t size, int32_t encoding,
                                  FMX_CallRecord* rec);

/* Position of the first occurrence of what at or after position, or FMX_TEXT_NOT_FOUND. */
FMX_API uint32_t FM_Text_Find(const FMX_Text* text, const FMX_Text* what, uint32_t position,
                              FMX_CallRecord* rec);
FMX_API void FM_Text_DeleteText(FMX_Text* text, uint32_t position, uint32_t size, FMX_CallRecord* rec);
/* Appends units [position, position + size) of other. */
FMX_API void FM_Text_AppendText(FMX_Text* text, const FMX_Text* other, uint32_t position,
                                uint32_t size, FMX_CallRecord* rec);
/* Unit-for-unit equality. */
FMX_API bool FM_Text_operatorEQ(const FMX_Text* a, const FMX_Text* b, FMX_CallRecord* rec);

#endif
