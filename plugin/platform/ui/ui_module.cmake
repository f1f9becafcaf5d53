# The GTK dialog module of the bundle, Resources/ui-gtk.so. The layers never link GTK: it loads this
# module with dlopen when a dialog must be shown on a display. Included from plugin/CMakeLists.txt
# after the layers and Vandrel are defined.

set(VD_UI_GTK_SOURCES ${CMAKE_CURRENT_LIST_DIR}/gtk/ui_gtk_module.cpp)

find_package(PkgConfig)
if(PkgConfig_FOUND)
  pkg_check_modules(GTK3 IMPORTED_TARGET gtk+-3.0)
endif()
if(NOT GTK3_FOUND)
  message(STATUS "GTK 3 not found: the bundle has no ui-gtk.so; dialogs work only through VANDREL_UI_SCRIPT")
  return()
endif()

function(vd_ui_gtk_module target output_dir)
  add_library(${target} MODULE ${VD_UI_GTK_SOURCES})
  target_include_directories(${target} PRIVATE ${CMAKE_CURRENT_SOURCE_DIR})
  target_link_libraries(${target} PRIVATE PkgConfig::GTK3)
  target_compile_options(${target} PRIVATE ${VD_WARNINGS})
  target_compile_definitions(${target} PRIVATE VD_UI_GTK_MODULE)
  set_target_properties(${target} PROPERTIES
    PREFIX "" OUTPUT_NAME ui-gtk LIBRARY_OUTPUT_DIRECTORY ${output_dir}
    C_VISIBILITY_PRESET hidden CXX_VISIBILITY_PRESET hidden VISIBILITY_INLINES_HIDDEN ON)
  if(NOT VD_SANITIZE)
    target_link_options(${target} PRIVATE -Wl,--no-undefined)
  endif()
  add_dependencies(Vandrel ${target})
endfunction()

vd_ui_gtk_module(ui-gtk ${VD_PLUGIN_DIR}/Vandrel.fmxplugin/Resources)

# The tests' build cancels its own dialog once it is shown (see VD_UI_GTK_SELF_CANCEL), so a test
# under Xvfb can watch the real chooser appear without a person at the keyboard.
if(VD_BUILD_TESTS)
  vd_ui_gtk_module(ui-gtk-test ${CMAKE_BINARY_DIR}/tests/ui-gtk-test)
  target_compile_definitions(ui-gtk-test PRIVATE VD_UI_GTK_SELF_CANCEL)
endif()
