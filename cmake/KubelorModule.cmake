# kubelor_qml_module(<name>
#   [SOURCES ...]         C++ of the module, known to Qt alone
#   [BINDINGS ...]        C++ that shows it to Python
#   [QML ...]             QML files, singletons marked before by kubelor_qml_singletons()
#   [IMAGES ...]          icons
#   [LINK ...]            further libraries of SOURCES
#   [BINDINGS_LINK ...])  further libraries of BINDINGS
#
# Makes the static QML module brovik.<name> from the folder it is called in: the targets <name>_module and
# <name>_moduleplugin, and <name>_bindings if there are bindings.
function(kubelor_qml_module name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "SOURCES;BINDINGS;QML;IMAGES;LINK;BINDINGS_LINK")

  set(cache_option "")
  if(NOT KUBELOR_QML_CACHE)
    set(cache_option NO_CACHEGEN)
  endif()
  qt_add_library(${name}_module STATIC)
  qt_add_qml_module(${name}_module
    URI brovik.${name}
    VERSION 1.0
    RESOURCE_PREFIX /
    OUTPUT_DIRECTORY "${KUBELOR_QML_DIR}/brovik/${name}"
    IMPORT_PATH "${KUBELOR_QML_DIR}"
    SOURCES ${arg_SOURCES}
    QML_FILES ${arg_QML}
    RESOURCES ${arg_IMAGES}
    ${cache_option})
  target_include_directories(${name}_module PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
  target_link_libraries(${name}_module PUBLIC kubelor_shared Qt6::Qml Qt6::Quick ${arg_LINK}
                                       PRIVATE kubelor_options)
  set_property(GLOBAL APPEND PROPERTY KUBELOR_MODULES ${name}_module ${name}_moduleplugin)

  if(arg_BINDINGS)
    add_library(${name}_bindings STATIC ${arg_BINDINGS})
    target_include_directories(${name}_bindings PUBLIC "${CMAKE_CURRENT_SOURCE_DIR}")
    target_link_libraries(${name}_bindings PUBLIC ${name}_module kubelor_adapters ${arg_BINDINGS_LINK}
                                           PRIVATE kubelor_options)
    set_property(GLOBAL APPEND PROPERTY KUBELOR_BINDINGS ${name}_bindings)
  endif()
endfunction()

# Marks QML files of this folder as singletons. Call before kubelor_qml_module().
function(kubelor_qml_singletons)
  set_source_files_properties(${ARGN} PROPERTIES QT_QML_SINGLETON_TYPE TRUE)
endfunction()
