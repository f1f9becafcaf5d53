# Pictures are encoded and decoded through libvips. Included from plugin/CMakeLists.txt after
# vandrel_core is defined; only plugin/platform/graphics/ includes its headers. As with FFmpeg, the
# layer takes the headers only: libvips is loaded with dlopen when the first picture needs it
# (platform/graphics/vips_functions.cpp). ImageMagick (the Mac formats libvips lacks) and libcurl
# (web images) are taken the same way: headers here, the libraries on first use.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VIPS REQUIRED vips)
pkg_check_modules(MAGICKCORE REQUIRED MagickCore)
pkg_check_modules(CURL REQUIRED libcurl)
target_include_directories(vd_platform_graphics SYSTEM PRIVATE ${VIPS_INCLUDE_DIRS} ${MAGICKCORE_INCLUDE_DIRS}
                           ${CURL_INCLUDE_DIRS})
target_compile_options(vd_platform_graphics PRIVATE ${VIPS_CFLAGS_OTHER})
# The defines that say which build of ImageMagick the headers describe (16-bit quanta, no HDRI);
# its -fopenmp is for code that runs ImageMagick's loops, which ours never does.
target_compile_definitions(vd_platform_graphics PRIVATE MAGICKCORE_HDRI_ENABLE=0 MAGICKCORE_QUANTUM_DEPTH=16)
