// The plain C interface between the plug-in and its metadata module (Resources/metadata.so). Exiv2
// and TagLib are C++ libraries with their own exceptions and allocators; keeping them behind this
// interface in a module loaded on first use keeps start-up light and lets the plug-in load, and
// answer a clear status, where they are not installed.
#pragma once

#include <stddef.h>

#ifdef __cplusplus
extern "C" {
#endif

// Raised whenever a function below changes; the loader refuses a module of another version.
#define VD_METADATA_MODULE_ABI_VERSION 2

enum VdMetadataResult {
    VD_METADATA_OK = 0,
    VD_METADATA_NOT_FOUND = 1,      // the file cannot be opened
    VD_METADATA_UNSUPPORTED = 2,    // no library reads or writes tags of this kind of file
    VD_METADATA_BAD_KEY = 3,        // a key that names no tag the file's kind can hold
    VD_METADATA_BAD_VALUE = 4,      // a value the tag cannot take
    VD_METADATA_WRITE_FAILED = 5,   // the library could not save the file
    VD_METADATA_NO_MEMORY = 6,
    VD_METADATA_FAILED = 7,         // any other failure of a library
};

// Which of a tag's two values a read hands over (either or both); the other comes as "". Printing a
// value as interpreted and as stored are the dearest part of reading most pictures.
#define VD_METADATA_INTERPRETED 1
#define VD_METADATA_RAW 2

// One tag as read. family is the report's section ("EXIF", "ID3v2" ...), key the library's full key
// ("Exif.Photo.ExposureTime", "ID3v2.TIT2"), label the report's short name ("ExposureTime", "TIT2").
// Every text is UTF-8 (or, from files that do not say their encoding, bytes as stored) and lives
// only for the call.
typedef void (*VdMetadataSink)(void* context, const char* family, const char* key, const char* label,
                               const char* interpreted, const char* raw);

typedef int (*VdMetadataAbiVersionFn)(void);
// Hands every tag of the file to the sink, with the values that forms (VD_METADATA_INTERPRETED,
// VD_METADATA_RAW or both) asks for. A file no library knows is VD_METADATA_OK with no tags.
// On failure the reason is written into problem (at most problemSize bytes, terminated).
typedef int (*VdMetadataReadFn)(const char* path, int forms, VdMetadataSink sink, void* context, char* problem,
                                size_t problemSize);
// Sets each key to its value (an empty value removes the tag) and saves the file in place; the
// caller hands in a copy it replaces the original with. Nothing is saved when any key is refused.
typedef int (*VdMetadataWriteFn)(const char* path, const char* const* keys, const char* const* values, int count,
                                 char* problem, size_t problemSize);

#define VD_METADATA_ABI_VERSION_SYMBOL "vd_metadata_abi_version"
#define VD_METADATA_READ_SYMBOL "vd_metadata_read"
#define VD_METADATA_WRITE_SYMBOL "vd_metadata_write"

#ifdef __cplusplus
}
#endif
