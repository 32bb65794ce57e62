# All QML modules of kubelor_qml_module(), for those who need them all.
add_library(kubelor_modules INTERFACE)

# kubelor_qml_module(<name>
#   [SOURCES ...]         C++ of the module
#   [QML ...]             QML files, singletons marked before by kubelor_qml_singletons()
#   [IMAGES ...]          icons
#   [LINK ...])           further libraries of SOURCES
#
# Makes the static QML module brovik.<name> from the folder it is called in: the targets <name>_module and
# <name>_moduleplugin, which come with kubelor_modules.
function(kubelor_qml_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;QML;IMAGES;LINK")

  set(cache_option "")
  if(NOT KUBELOR_QML_CACHE)
    set(cache_option NO_CACHEGEN)
  endif()
  qt_add_library(${name}_module STATIC)
  set_target_properties(${name}_module PROPERTIES AUTOMOC ON)
  qt_add_qml_module(${name}_module
    URI brovik.${name}
    VERSION 1.0
    RESOURCE_PREFIX /
    OUTPUT_DIRECTORY "${KUBELOR_QML_DIR}/brovik/${name}"
    IMPORT_PATH ${KUBELOR_QML_IMPORTS}
    SOURCES ${arg_SOURCES}
    QML_FILES ${arg_QML}
    RESOURCES ${arg_IMAGES}
    ${cache_option})
  kubelor_compiled_together(${name}_module)
  # What Qt generates names the headers without a folder.
  target_include_directories(${name}_module PRIVATE "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name}_module PUBLIC kubelor_shared Qt6::Qml Qt6::Quick ${arg_LINK})
  kubelor_precompiled_module(${name}_module)
  target_link_libraries(kubelor_modules INTERFACE ${name}_module ${name}_moduleplugin)
endfunction()

# Gives a module the precompiled headers, and what Qt adds to it, which is nothing but headers.
function(kubelor_precompiled_module target)
  foreach(part IN ITEMS ${target} ${target}_qmlcache ${target}plugin ${target}plugin_init)
    if(TARGET ${part})
      target_link_libraries(${part} PRIVATE kubelor_options)
      target_precompile_headers(${part} REUSE_FROM kubelor_precompiled_qml)
    endif()
  endforeach()
endfunction()

# Marks QML files of this folder as singletons. Call before kubelor_qml_module().
function(kubelor_qml_singletons)
  set_source_files_properties(${ARGN} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
endfunction()

# Compiles the C++ of a module in one go, with what registers its types, and what qmlcachegen writes several files in one
# go: most of the time of each is that of the headers.
function(kubelor_compiled_together target)
  set(files_in_one 8)
  get_target_property(sources ${target} SOURCES)
  list(FILTER sources INCLUDE REGEX "\\.cpp$")
  kubelor_in_units(${target} 0)
  set_target_properties(${target} PROPERTIES UNITY_BUILD_MODE GROUP)
  set(count 0)
  foreach(source IN LISTS sources)
    set(group cpp)
    if(source MATCHES "/qmlcache/.*_qml\\.cpp$")
      math(EXPR group "${count} / ${files_in_one}")
      math(EXPR count "${count} + 1")
      set(group qml_${group})
      kubelor_careless(${target} ${group})
    endif()
    set_source_files_properties(${source} TARGET_DIRECTORY ${target} PROPERTIES
      SKIP_UNITY_BUILD_INCLUSION OFF
      UNITY_GROUP ${group})
  endforeach()
endfunction()

# The carelessness of what qmlcachegen writes must not fail the build.
function(kubelor_careless target group)
  set_source_files_properties("${CMAKE_CURRENT_BINARY_DIR}/CMakeFiles/${target}.dir/Unity/unity_${group}_cxx.cxx"
    TARGET_DIRECTORY ${target} PROPERTIES
    COMPILE_OPTIONS "-Wno-conversion;-Wno-float-conversion;-Wno-shadow")
endfunction()

# Where modules are looked for. By itself qmlcachegen finds Qt's own on the machine that it runs on, and leaves uncompiled
# what uses types that it does not find.
set(KUBELOR_QML_STUBS_DIR "${PROJECT_BINARY_DIR}/qml-stubs")
set(KUBELOR_QML_IMPORTS "${KUBELOR_QML_DIR}" "${KUBELOR_QML_STUBS_DIR}")
if(CMAKE_CROSSCOMPILING)
  list(APPEND KUBELOR_QML_IMPORTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_QML}")
endif()

# Debian's Qt5Compat.GraphicalEffects lacks a type file that its qmldir names, and qmllint fails on that. Lint a copy
# that has it.
set(KUBELOR_EFFECTS Qt5Compat/GraphicalEffects)
file(COPY "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_QML}/${KUBELOR_EFFECTS}"
     DESTINATION "${KUBELOR_QML_STUBS_DIR}/Qt5Compat" PATTERN "*.so" EXCLUDE)
file(WRITE "${KUBELOR_QML_STUBS_DIR}/${KUBELOR_EFFECTS}/private/plugins.qmltypes" "import QtQuick.tooling 1.2\nModule {}\n")

# That of QtCharts has one class under two names, of which qmllint knows the last alone. The copy tells them apart.
set(KUBELOR_CHARTS "${QT6_INSTALL_PREFIX}/${QT6_INSTALL_QML}/QtCharts")
file(COPY "${KUBELOR_CHARTS}/qmldir" DESTINATION "${KUBELOR_QML_STUBS_DIR}/QtCharts")
file(READ "${KUBELOR_CHARTS}/plugins.qmltypes" charts_types)
string(REGEX REPLACE "name: \"QValueAxis\"([^\n]*\n[^\n]*\n[^\n]*\n[^\n]*\n *\"QtCharts/ValuesAxis)"
                     "name: \"QValuesAxis\"\\1" charts_types "${charts_types}")
file(WRITE "${KUBELOR_QML_STUBS_DIR}/QtCharts/plugins.qmltypes" "${charts_types}")
