#include "platform/graphics/vips_call.h"

#include <new>

namespace vd::platform {

namespace {

// A GValue of one type, unset (releasing what it holds) when it goes.
struct OwnedValue {
    explicit OwnedValue(GType type) { g_value_init(&value, type); }
    ~OwnedValue() { g_value_unset(&value); }
    OwnedValue(const OwnedValue&) = delete;
    OwnedValue& operator=(const OwnedValue&) = delete;

    GValue value = G_VALUE_INIT;
};

}  // namespace

VipsCall::VipsCall(const char* operation) : operation_(vips_operation_new(operation)) {}

VipsCall::~VipsCall() {
    if (!operation_) return;
    // Until it is built, the operation owns whatever outputs it made on the way; once built, its
    // outputs belong to whoever reads them, and the operation only holds its own references.
    if (!built_) vips_object_unref_outputs(&operation_->parent_instance);
    g_object_unref(operation_);
}

VipsCall& VipsCall::Set(const char* name, VipsImage* image) {
    if (!operation_) return *this;
    OwnedValue value(VIPS_TYPE_IMAGE);
    g_value_set_object(&value.value, image);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::Set(const char* name, int number) {
    if (!operation_) return *this;
    OwnedValue value(G_TYPE_INT);
    g_value_set_int(&value.value, number);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::Set(const char* name, const char* text) {
    if (!operation_) return *this;
    OwnedValue value(G_TYPE_STRING);
    g_value_set_string(&value.value, text);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::Set(const char* name, double number) {
    if (!operation_) return *this;
    OwnedValue value(G_TYPE_DOUBLE);
    g_value_set_double(&value.value, number);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetBool(const char* name, bool flag) {
    if (!operation_) return *this;
    OwnedValue value(G_TYPE_BOOLEAN);
    g_value_set_boolean(&value.value, flag);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetDoubles(const char* name, const std::vector<double>& numbers) {
    if (!operation_) return *this;
    VipsArrayDouble* array = vips_array_double_new(numbers.data(), int(numbers.size()));
    OwnedValue value(VIPS_TYPE_ARRAY_DOUBLE);
    g_value_set_boxed(&value.value, array);  // the value takes a reference of its own
    vips_area_unref(VIPS_AREA(array));
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetInts(const char* name, const std::vector<int>& numbers) {
    if (!operation_) return *this;
    VipsArrayInt* array = vips_array_int_new(numbers.data(), int(numbers.size()));
    OwnedValue value(VIPS_TYPE_ARRAY_INT);
    g_value_set_boxed(&value.value, array);  // the value takes a reference of its own
    vips_area_unref(VIPS_AREA(array));
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetImages(const char* name, const std::vector<VipsImage*>& images) {
    if (!operation_) return *this;
    std::vector<VipsImage*> copy(images);  // the array takes references of its own
    VipsArrayImage* array = vips_array_image_new(copy.data(), int(copy.size()));
    OwnedValue value(VIPS_TYPE_ARRAY_IMAGE);
    g_value_set_boxed(&value.value, array);
    vips_area_unref(VIPS_AREA(array));
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetEnum(const char* name, GType type, int member) {
    if (!operation_) return *this;
    OwnedValue value(type);
    g_value_set_enum(&value.value, member);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetObject(const char* name, GType type, gpointer object) {
    if (!operation_) return *this;
    OwnedValue value(type);
    g_value_set_object(&value.value, object);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

VipsCall& VipsCall::SetBlob(const char* name, const void* bytes, size_t size) {
    if (!operation_) return *this;
    VipsBlob* blob = vips_blob_new(nullptr, bytes, size);
    OwnedValue value(VIPS_TYPE_BLOB);
    g_value_set_boxed(&value.value, blob);  // the value takes a reference of its own
    vips_area_unref(&blob->area);
    g_object_set_property(Object(), name, &value.value);
    return *this;
}

util::Status VipsCall::Run(GraphicsStep step) {
    if (!operation_) return StatusFromVipsError(step);
    VipsOperation* built = vips_cache_operation_build(operation_);
    if (!built) return StatusFromVipsError(step);
    // The cache answers this operation or an equal one it already held, with a reference for us.
    g_object_unref(operation_);
    operation_ = built;
    built_ = true;
    return util::kNoError;
}

util::Status VipsCall::Run(GraphicsStep step, VipsImagePtr& out) {
    if (util::Status s = Run(step)) return s;
    OwnedValue value(VIPS_TYPE_IMAGE);
    g_object_get_property(Object(), "out", &value.value);
    out.reset(static_cast<VipsImage*>(g_value_dup_object(&value.value)));
    return out ? util::kNoError : util::kInternalComponentError;
}

util::Status VipsCall::CopyBlob(const char* name, std::vector<uint8_t>& bytes) {
    if (!built_) return util::kInternalComponentError;
    OwnedValue value(VIPS_TYPE_BLOB);
    g_object_get_property(Object(), name, &value.value);
    auto* blob = static_cast<VipsBlob*>(g_value_get_boxed(&value.value));
    if (!blob) return util::kInternalComponentError;
    size_t length = 0;
    const auto* data = static_cast<const uint8_t*>(vips_blob_get(blob, &length));
    try {
        bytes.assign(data, data + length);
    } catch (const std::bad_alloc&) {
        return util::kMemoryFull;
    }
    return util::kNoError;
}

}  // namespace vd::platform
