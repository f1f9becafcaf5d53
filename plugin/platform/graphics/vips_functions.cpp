// libvips's functions (and the few of GLib and GObject that its objects need), reached through
// addresses resolved on first use, as FFmpeg's are (platform/media/ffmpeg_functions.cpp): each is
// defined here with the parameters of its header, hidden, and the module's --no-undefined link
// fails on any call missing from the list. libvips's one-call operations (vips_crop ...) take C
// varargs and cannot be passed on like this; the layer calls operations through VipsCall instead.
#include "platform/graphics/vips_functions.h"

#include "platform/common/lazy_library.h"
#include "platform/common/library_sonames.h"

#include <vips/vips.h>

#include <iterator>

static_assert(VIPS_MAJOR_VERSION == 8, "the libvips headers do not match libvips.so.42 in library_sonames.h");

namespace vd::platform {

namespace {

// GLib and GObject come with libvips (they are its dependencies), so its soname is the one the
// start-up check looks for and the only one we load.
constexpr const char* kSonames[] = {kVipsLibrary};

// library (the one soname), function, parameters, arguments
#define VD_VIPS_FUNCTIONS(X)                                                                             \
    X(0, vips_init, (const char* argv0), (argv0))                                                           \
    X(0, vips_version, (int flag), (flag))                                                                  \
    X(0, g_module_open, (const gchar* file_name, GModuleFlags flags), (file_name, flags))                   \
    X(0, g_module_make_resident, (GModule* module), (module))                                               \
    X(0, vips_cache_set_max, (int max), (max))                                                              \
    X(0, vips_error_buffer, (void), ())                                                                     \
    X(0, vips_error_clear, (void), ())                                                                      \
    X(0, vips_image_new_from_memory, (const void* data, size_t size, int width, int height, int bands,      \
                                   VipsBandFormat format), (data, size, width, height, bands, format))   \
    X(0, vips_image_get_width, (const VipsImage* image), (image))                                           \
    X(0, vips_image_get_height, (const VipsImage* image), (image))                                          \
    X(0, vips_image_get_n_pages, (VipsImage* image), (image))                                               \
    X(0, vips_type_find, (const char* basename, const char* nickname), (basename, nickname))                \
    X(0, vips_array_double_new, (const double* array, int n), (array, n))                                   \
    X(0, vips_array_image_new, (VipsImage** array, int n), (array, n))                                      \
    X(0, vips_array_double_get_type, (void), ())                                                            \
    X(0, vips_array_int_new, (const int* array, int n), (array, n))                                         \
    X(0, vips_array_int_get_type, (void), ())                                                               \
    X(0, vips_extend_get_type, (void), ())                                                                  \
    X(0, vips_image_new_matrix_from_array, (int width, int height, const double* array, int size),          \
      (width, height, array, size))                                                                      \
    X(0, vips_array_image_get_type, (void), ())                                                             \
    X(0, vips_foreign_tiff_compression_get_type, (void), ())                                                \
    X(0, vips_operation_relational_get_type, (void), ())                                                    \
    X(0, vips_region_new, (VipsImage* image), (image))                                                      \
    X(0, vips_region_prepare, (VipsRegion* reg, const VipsRect* r), (reg, r))                               \
    X(0, g_value_set_double, (GValue* value, gdouble v_double), (value, v_double))                          \
    X(0, g_value_set_boolean, (GValue* value, gboolean v_boolean), (value, v_boolean))                      \
    X(0, vips_image_write_to_memory, (VipsImage* in, size_t* size), (in, size))                             \
    X(0, vips_image_new, (void), ())                                                                        \
    X(0, vips_image_init_fields, (VipsImage* image, int xsize, int ysize, int bands, VipsBandFormat format,   \
                                  VipsCoding coding, VipsInterpretation interpretation, double xres,      \
                                  double yres),                                                           \
      (image, xsize, ysize, bands, format, coding, interpretation, xres, yres))                            \
    X(0, vips_image_pipeline_array, (VipsImage* image, VipsDemandStyle hint, VipsImage** in),               \
      (image, hint, in))                                                                                   \
    X(0, vips_image_generate, (VipsImage* image, VipsStartFn start_fn, VipsGenerateFn generate_fn,           \
                               VipsStopFn stop_fn, void* a, void* b),                                      \
      (image, start_fn, generate_fn, stop_fn, a, b))                                                       \
    X(0, vips_sink_disc, (VipsImage* im, VipsRegionWrite write_fn, void* a), (im, write_fn, a))             \
    X(0, vips_foreign_find_load_buffer, (const void* data, size_t size), (data, size))                      \
    X(0, vips_foreign_find_load, (const char* filename), (filename))                                        \
    X(0, vips_operation_new, (const char* name), (name))                                                    \
    X(0, vips_cache_operation_build, (VipsOperation* operation), (operation))                               \
    X(0, vips_object_unref_outputs, (VipsObject* object), (object))                                         \
    X(0, vips_blob_new, (VipsCallbackFn free_fn, const void* data, size_t length), (free_fn, data, length)) \
    X(0, vips_blob_get, (VipsBlob* blob, size_t* length), (blob, length))                                   \
    X(0, vips_area_unref, (VipsArea* area), (area))                                                         \
    X(0, vips_image_get_type, (void), ())                                                                   \
    X(0, vips_blob_get_type, (void), ())                                                                    \
    X(0, vips_access_get_type, (void), ())                                                                  \
    X(0, vips_interpretation_get_type, (void), ())                                                          \
    X(0, vips_band_format_get_type, (void), ())                                                             \
    X(0, g_value_init, (GValue* value, GType g_type), (value, g_type))                                      \
    X(0, g_value_unset, (GValue* value), (value))                                                           \
    X(0, g_value_set_int, (GValue* value, gint v_int), (value, v_int))                                      \
    X(0, g_value_set_string, (GValue* value, const gchar* v_string), (value, v_string))                     \
    X(0, g_value_set_enum, (GValue* value, gint v_enum), (value, v_enum))                                   \
    X(0, g_value_set_object, (GValue* value, gpointer v_object), (value, v_object))                         \
    X(0, g_value_dup_object, (const GValue* value), (value))                                                \
    X(0, g_value_set_boxed, (GValue* value, gconstpointer v_boxed), (value, v_boxed))                       \
    X(0, g_value_get_boxed, (const GValue* value), (value))                                                 \
    X(0, g_object_set_property, (GObject* object, const gchar* property_name, const GValue* value),         \
      (object, property_name, value))                                                                    \
    X(0, g_object_get_property, (GObject* object, const gchar* property_name, GValue* value),               \
      (object, property_name, value))                                                                    \
    X(0, g_object_unref, (gpointer object), (object))                                                       \
    X(0, vips_target_custom_new, (void), ())                                                                \
    X(0, vips_target_get_type, (void), ())                                                                  \
    X(0, g_signal_connect_data, (gpointer instance, const gchar* detailed_signal, GCallback c_handler,       \
                                 gpointer data, GClosureNotify destroy_data, GConnectFlags connect_flags), \
      (instance, detailed_signal, c_handler, data, destroy_data, connect_flags))                           \
    X(0, g_free, (gpointer mem), (mem))                                                                     \
    X(0, g_strfreev, (gchar** str_array), (str_array))                                                      \
    X(0, vips_image_get_fields, (VipsImage* image), (image))                                                \
    X(0, vips_precision_get_type, (void), ())

enum Function : size_t { VD_VIPS_FUNCTIONS(VD_LAZY_INDEX) kFunctionCount };
constexpr LazySymbol kSymbols[] = {VD_VIPS_FUNCTIONS(VD_LAZY_SYMBOL)};
static_assert(std::size(kSymbols) == kFunctionCount);

void* gAddresses[kFunctionCount];
constinit LazyLibraries gVips(kSonames, kSymbols, gAddresses, "VANDREL_GRAPHICS_LAYER");

}  // namespace

std::string_view LoadVips() { return gVips.Load(); }

}  // namespace vd::platform

#define VD_FORWARDER(library, name, parameters, arguments) \
    VD_LAZY_FORWARDER(vd::platform::gVips, vd::platform, name, parameters, arguments)
VD_VIPS_FUNCTIONS(VD_FORWARDER)
#undef VD_FORWARDER
