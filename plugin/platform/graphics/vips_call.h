// One libvips operation, called by name with its arguments set and read as GObject properties: the
// way libvips's own C++ binding calls operations. The C API's one-call functions (vips_crop,
// vips_jpegsave_buffer ...) take their optional arguments as C varargs, which nothing can pass on
// to a library loaded at run time, so the graphics layer goes through here instead.
#pragma once

#include "util/status_codes.h"
#include "platform/graphics/vips_library.h"
#include "platform/graphics/vips_owners.h"

#include <vips/vips.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace vd::platform {

class VipsCall {
public:
    // The operation of that name: a nickname ("crop") or a type name (as the loaders are found).
    // An unknown name is reported by Run.
    explicit VipsCall(const char* operation);
    ~VipsCall();

    VipsCall(const VipsCall&) = delete;
    VipsCall& operator=(const VipsCall&) = delete;

    VipsCall& Set(const char* name, VipsImage* image);
    VipsCall& Set(const char* name, int value);
    VipsCall& Set(const char* name, const char* text);  // copied
    VipsCall& Set(const char* name, double value);
    VipsCall& SetBool(const char* name, bool value);
    VipsCall& SetDoubles(const char* name, const std::vector<double>& values);
    VipsCall& SetInts(const char* name, const std::vector<int>& values);
    VipsCall& SetImages(const char* name, const std::vector<VipsImage*>& images);
    VipsCall& SetEnum(const char* name, GType type, int value);
    VipsCall& SetObject(const char* name, GType type, gpointer object);  // a target, a source
    // The bytes are not copied: they must outlive every image the operation makes (a loader reads
    // its pixels only when they are asked for).
    VipsCall& SetBlob(const char* name, const void* bytes, size_t size);

    // Runs the operation; when it fails, the status of libvips's error for that step.
    util::Status Run(GraphicsStep step);
    // Runs it and takes its "out" image, which most operations make.
    util::Status Run(GraphicsStep step, VipsImagePtr& out);
    // A blob the operation made (what a saver writes to memory), after Run.
    util::Status CopyBlob(const char* name, std::vector<uint8_t>& bytes);

private:
    GObject* Object() { return &operation_->parent_instance.parent_instance; }

    VipsOperation* operation_;
    bool built_ = false;
};

}  // namespace vd::platform
