// The entry points of Resources/metadata.so: the C interface the plug-in loads, with every library
// exception turned into a result code and a sentence here, so none crosses into the plug-in.
//
// Only the module's own target defines VD_METADATA_MODULE: the plug-in's source glob also finds
// these files, and there they compile to nothing, since the core never links Exiv2 or TagLib.
#ifdef VD_METADATA_MODULE

#include "platform/metadata/module/module_tags.h"

#include <cstdio>
#include <new>
#include <string>
#include <vector>

#include <sys/stat.h>

namespace {

using vd::metadata_module::Assignment;
using vd::metadata_module::TagFailure;

void Tell(char* problem, size_t size, const std::string& why) {
    if (problem && size > 0) std::snprintf(problem, size, "%s", why.c_str());
}

template <typename Work>
int Guarded(char* problem, size_t problemSize, Work&& work) {
    try {
        work();
        return VD_METADATA_OK;
    } catch (const TagFailure& failure) {
        Tell(problem, problemSize, failure.what());
        return failure.Result();
    } catch (const std::bad_alloc&) {
        Tell(problem, problemSize, "out of memory");
        return VD_METADATA_NO_MEMORY;
    } catch (const std::exception& e) {
        Tell(problem, problemSize, e.what());
        return VD_METADATA_FAILED;
    } catch (...) {
        Tell(problem, problemSize, "a metadata library failed");
        return VD_METADATA_FAILED;
    }
}

void RequireFile(const char* path) {
    struct stat info {};
    if (!path || ::stat(path, &info) != 0 || !S_ISREG(info.st_mode))
        throw TagFailure(VD_METADATA_NOT_FOUND, std::string("no file at ") + (path ? path : "(none)"));
}

}  // namespace

extern "C" {

__attribute__((visibility("default"))) int vd_metadata_abi_version(void) { return VD_METADATA_MODULE_ABI_VERSION; }

__attribute__((visibility("default"))) int vd_metadata_read(const char* path, int forms, VdMetadataSink sink,
                                                            void* context, char* problem, size_t problemSize) {
    return Guarded(problem, problemSize, [&] {
        RequireFile(path);
        const vd::metadata_module::Sink to{sink, context};
        if (!vd::metadata_module::ReadImageTags(path, forms, to)) vd::metadata_module::ReadSoundTags(path, to);
    });
}

__attribute__((visibility("default"))) int vd_metadata_write(const char* path, const char* const* keys,
                                                             const char* const* values, int count, char* problem,
                                                             size_t problemSize) {
    return Guarded(problem, problemSize, [&] {
        RequireFile(path);
        std::vector<Assignment> image, sound;
        for (int i = 0; i < count; ++i) {
            Assignment a{keys[i] ? keys[i] : "", values[i] ? values[i] : ""};
            if (vd::metadata_module::IsImageKey(a.key)) image.push_back(std::move(a));
            else if (vd::metadata_module::IsSoundKey(a.key)) sound.push_back(std::move(a));
            else throw TagFailure(VD_METADATA_BAD_KEY, "\"" + a.key + "\" names no tag family (Exif., Iptc., Xmp., "
                                                       "ID3v1., ID3v2., Vorbis., MP4., APE.)");
        }
        // A picture's tags and a sound's tags never live in one file.
        if (!image.empty() && !sound.empty())
            throw TagFailure(VD_METADATA_BAD_KEY, "picture tags and sound tags cannot be set in one file");
        if (!image.empty()) vd::metadata_module::WriteImageTags(path, image);
        else vd::metadata_module::WriteSoundTags(path, sound);
    });
}

}  // extern "C"

#endif
