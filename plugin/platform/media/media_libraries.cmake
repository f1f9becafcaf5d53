# The movie layer reads, decodes and resamples sound through FFmpeg. Included from
# plugin/CMakeLists.txt after its layer is defined; only plugin/platform/ includes the headers.
# The layer takes FFmpeg's headers but does not link it: the libraries are loaded with dlopen when a
# function first needs them (platform/media/ffmpeg_functions.cpp), so loading the plug-in stays cheap.
find_package(PkgConfig REQUIRED)
pkg_check_modules(FFMPEG REQUIRED libavformat libavcodec libswresample libavutil)
target_include_directories(vd_platform_media SYSTEM PRIVATE ${FFMPEG_INCLUDE_DIRS})
target_compile_options(vd_platform_media PRIVATE ${FFMPEG_CFLAGS_OTHER})
