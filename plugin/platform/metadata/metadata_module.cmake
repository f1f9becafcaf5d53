# The metadata module of the bundle, Resources/metadata.so: Exiv2 and TagLib behind a plain C
# interface. The layers never link either library: they load this module with dlopen the first time
# a tag is read or written. Included from plugin/CMakeLists.txt after the layers and Vandrel are
# defined.

file(GLOB VD_METADATA_MODULE_SOURCES CONFIGURE_DEPENDS ${CMAKE_CURRENT_LIST_DIR}/module/*.cpp)

find_package(PkgConfig)
if(PkgConfig_FOUND)
  pkg_check_modules(EXIV2 IMPORTED_TARGET exiv2)
  pkg_check_modules(TAGLIB IMPORTED_TARGET taglib)
endif()
if(NOT EXIV2_FOUND OR NOT TAGLIB_FOUND)
  message(STATUS "Exiv2 or TagLib not found: the bundle has no metadata.so; the metadata functions answer -2003")
  return()
endif()

add_library(vd-metadata MODULE ${VD_METADATA_MODULE_SOURCES})
target_include_directories(vd-metadata PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
target_link_libraries(vd-metadata PRIVATE PkgConfig::EXIV2 PkgConfig::TAGLIB)
# Exiv2 0.27's image handle is a std::auto_ptr.
target_compile_options(vd-metadata PRIVATE ${VD_WARNINGS} -Wno-deprecated-declarations)
target_compile_definitions(vd-metadata PRIVATE VD_METADATA_MODULE)
set_target_properties(vd-metadata PROPERTIES
  PREFIX "" OUTPUT_NAME metadata LIBRARY_OUTPUT_DIRECTORY ${VD_PLUGIN_DIR}/Vandrel.fmxplugin/Resources
  C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
if(NOT VD_SANITIZE)
  target_link_options(vd-metadata PRIVATE -Wl,--no-undefined)
endif()
add_dependencies(Vandrel vd-metadata)
