# Pictures are encoded and decoded through libvips. Included from plugin/CMakeLists.txt after
# vandrel_core is defined; only plugin/platform/graphics/ includes its headers. As with FFmpeg, the
# layer takes the headers only: libvips is loaded with dlopen when the first picture needs it
# (platform/graphics/vips_functions.cpp).
find_package(PkgConfig REQUIRED)
pkg_check_modules(VIPS REQUIRED vips)
target_include_directories(vd_platform_graphics SYSTEM PRIVATE ${VIPS_INCLUDE_DIRS})
target_compile_options(vd_platform_graphics PRIVATE ${VIPS_CFLAGS_OTHER})
