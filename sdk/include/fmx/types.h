/* Basic types of the host API: the host-call record, the opaque host objects, error codes and the
 * signature of an external function's handler. Every host call is a plain C function that takes a
 * host-call record as its last argument. */
#ifndef FMX_TYPES_H
#define FMX_TYPES_H

#include <stdbool.h>
#include <stdint.h>

#ifdef __cplusplus
#define FMX_EXTERN_C extern "C"
#define FMX_BEGIN_DECLS extern "C" {
#define FMX_END_DECLS }
#else
#define FMX_EXTERN_C
#define FMX_BEGIN_DECLS
#define FMX_END_DECLS
#endif

#define FMX_API FMX_EXTERN_C __attribute__((visibility("default")))

/* The record every host call takes last. The caller sets it to { 1, 0 } before the call; afterwards
 * code 1 means the host ran out of memory and code 2 any other failure of the call itself. */
typedef struct FMX_CallRecord {
    int32_t version;
    int32_t code;
} FMX_CallRecord;

enum {
    FMX_RECORD_VERSION = 1,
    FMX_RECORD_OK = 0,
    FMX_RECORD_OUT_OF_MEMORY = 1,
    FMX_RECORD_FAILED = 2
};

/* Error codes answered as function results by some host calls (distinct from the record's code). */
typedef int16_t FMX_ErrCode;
enum {
    FMX_NO_ERROR = 0,
    FMX_ERR_ALREADY_EXISTS = -48,  /* a stream type or function id that is already present */
    FMX_ERR_PARAMETER = -50,       /* bad pointer, index out of range, unknown id */
    FMX_ERR_MEMORY = -108,
    FMX_ERR_CALCULATION = 1200     /* FM_ExprEnv_Evaluate: the text did not parse or evaluate */
};

/* Opaque host objects. The plug-in only ever holds pointers to them. */
typedef struct FMX_Text FMX_Text;
typedef struct FMX_FixPt FMX_FixPt;
typedef struct FMX_Data FMX_Data;
typedef struct FMX_DataVect FMX_DataVect;
typedef struct FMX_BinaryData FMX_BinaryData;
typedef struct FMX_QuadChar FMX_QuadChar;
typedef struct FMX_Locale FMX_Locale;
typedef struct FMX_ExprEnv FMX_ExprEnv;

/* Native types of a data value. */
enum {
    FMX_TYPE_INVALID = 0,
    FMX_TYPE_TEXT = 1,
    FMX_TYPE_NUMBER = 2,
    FMX_TYPE_DATE = 3,
    FMX_TYPE_TIME = 4,
    FMX_TYPE_TIMESTAMP = 5,
    FMX_TYPE_BINARY = 6,
    FMX_TYPE_BOOLEAN = 7
};

/* Text encodings for 8-bit conversions. 0 is the host's native 8-bit encoding (ISO-8859-1). */
enum {
    FMX_ENCODING_NATIVE = 0,
    FMX_ENCODING_UTF8 = 1
};

/* Locale kinds; the host treats every kind alike, 21 is the one plug-ins use for results. */
enum { FMX_LOCALE_CURRENT = 21 };

/* "All units to the end" for position/size pairs, and "not found" for FM_Text_Find. */
#define FMX_TEXT_ALL 0xFFFFFFFFu
#define FMX_TEXT_NOT_FOUND 0xFFFFFFFFu

/* Flags of an external function. */
enum {
    FMX_FLAG_DISPLAY_IN_ALL_DIALOGS = 0xFF00,
    FMX_FLAG_NO_USER_INTERFACE = 0x0001  /* may also be evaluated where no UI is present */
};

/* An external function's handler. 0 is success; any other value is the call's error code. */
typedef FMX_ErrCode (*FMX_ExtPluginType)(int16_t functionId, const FMX_ExprEnv* env,
                                         const FMX_DataVect* args, FMX_Data* result);

#endif
