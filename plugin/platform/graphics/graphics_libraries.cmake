# Pictures are encoded and decoded through libvips. Included from plugin/CMakeLists.txt after
# vandrel_core is defined; only plugin/platform/graphics/ includes its headers.
find_package(PkgConfig REQUIRED)
pkg_check_modules(VIPS REQUIRED IMPORTED_TARGET vips)
target_link_libraries(vandrel_core PUBLIC PkgConfig::VIPS)
