# The movie layer reads, decodes, resamples and writes sound through FFmpeg. Included from
# plugin/CMakeLists.txt after vandrel_core is defined; only plugin/platform/ includes the headers.
find_package(PkgConfig REQUIRED)
pkg_check_modules(FFMPEG REQUIRED IMPORTED_TARGET libavformat libavcodec libswresample libavutil)
target_link_libraries(vandrel_core PUBLIC PkgConfig::FFMPEG)
