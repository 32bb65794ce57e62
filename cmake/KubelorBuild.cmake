# Language, warnings, sanitizers and the packages that the whole tree uses.

option(KUBELOR_QML_CACHE "Compile all QML ahead of time" ON)
option(KUBELOR_BENCH "Build the benchmarks" ON)
option(KUBELOR_FUZZ "Build the fuzzers; KUBELOR_SANITIZE has to contain fuzzer-no-link" OFF)
set(KUBELOR_SANITIZE "" CACHE STRING "Sanitizers, as -fsanitize= takes them")

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_CXX_VISIBILITY_PRESET hidden)
set(CMAKE_VISIBILITY_INLINES_HIDDEN ON)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)

# What ccache has to overlook to work with precompiled headers. What a source depends on it takes from the compiler, for
# a preprocessor of its own reads all of them once more; and it reads a file again only if that has changed, for the
# precompiled headers of GCC have 175 MB.
find_program(KUBELOR_CCACHE ccache)
if(KUBELOR_CCACHE)
  set(CMAKE_CXX_COMPILER_LAUNCHER
      env CCACHE_SLOPPINESS=pch_defines,time_macros CCACHE_DEPEND=1 CCACHE_INODECACHE=1 "${KUBELOR_CCACHE}")
  if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
    add_compile_options(-fpch-preprocess)
  else()
    add_compile_options("SHELL:-Xclang -fno-pch-timestamp")
  endif()
endif()

# Another Python first on PATH must not decide what is embedded.
set(Python_ROOT_DIR /usr)
set(Python_EXECUTABLE /usr/bin/python3)
set(Python_FIND_STRATEGY LOCATION)
set(PYBIND11_FINDPYTHON ON)

find_package(Qt6 6.4 REQUIRED COMPONENTS Core Gui Widgets Qml Quick QuickControls2 Network Charts Test QuickTest)
find_package(Python 3.11 REQUIRED COMPONENTS Interpreter Development)
find_package(pybind11 2.10 REQUIRED CONFIG)
find_package(PkgConfig REQUIRED)
pkg_check_modules(Gpiodcxx REQUIRED IMPORTED_TARGET libgpiodcxx>=1.6 libgpiodcxx<2)

set(KUBELOR_QML_DIR "${PROJECT_BINARY_DIR}/qml")

add_library(kubelor_options INTERFACE)
target_compile_definitions(kubelor_options INTERFACE QT_NO_KEYWORDS QT_NO_CAST_TO_ASCII
                                                     QT_DISABLE_DEPRECATED_BEFORE=0x060400)
target_compile_options(kubelor_options INTERFACE
  -Wall -Wextra -Wpedantic -Wconversion -Wnon-virtual-dtor -Woverloaded-virtual -Wshadow
  $<$<CXX_COMPILER_ID:GNU>:-Wduplicated-cond -Wlogical-op>)
# A board stands for years: what overruns its memory ends at once rather than goes on with it.
add_compile_options(-fstack-protector-strong)
add_compile_definitions(_GLIBCXX_ASSERTIONS)
# The libraries are those of a shared object, too: of the module for Python. On amd64 Qt asks for this by itself.
if(NOT CMAKE_SYSTEM_PROCESSOR STREQUAL "x86_64")
  add_compile_options(-fPIC)
endif()
if(KUBELOR_SANITIZE)
  add_compile_options(-fsanitize=${KUBELOR_SANITIZE} -fno-omit-frame-pointer -g1)
  add_link_options(-fsanitize=${KUBELOR_SANITIZE})
  # Qt leaves its assertions out of all builds but Debug.
  add_compile_definitions(QT_FORCE_ASSERTS)
endif()

# The headers that take longest, compiled once: of what qmlcachegen writes, of bindings, and of tests. A target takes
# them with target_precompile_headers(... REUSE_FROM kubelor_precompiled_<for>).
function(kubelor_precompile for)
  cmake_parse_arguments(PARSE_ARGV 1 arg "" "" "HEADERS;LINK;OPTIONS")
  set(source "${PROJECT_BINARY_DIR}/precompiled_${for}.cpp")
  file(WRITE "${source}" "")
  add_library(kubelor_precompiled_${for} STATIC "${source}")
  target_link_libraries(kubelor_precompiled_${for} PRIVATE ${arg_LINK} kubelor_options)
  target_compile_options(kubelor_precompiled_${for} PRIVATE ${arg_OPTIONS})
  target_precompile_headers(kubelor_precompiled_${for} PRIVATE ${arg_HEADERS})
endfunction()

kubelor_precompile(qml LINK Qt6::Qml Qt6::Quick
  HEADERS <QtQml/qqmlprivate.h> <QtQml/qjsengine.h> <QtQml/qjsprimitivevalue.h> <QtQml/qqmlcomponent.h>
          <QtQml/qqmlcontext.h> <QtQml/qqmlengine.h> <QtCore/qdatetime.h> <QtCore/qurl.h>)
kubelor_precompile(bindings LINK Qt6::Qml pybind11::embed
  HEADERS <pybind11/embed.h> <pybind11/stl.h> <QtQml/qqmlengine.h> <QtCore/qvariant.h> <QtCore/qdebug.h>)

# Compiles so many sources of a target in one go. Each source for itself pays for the headers, and with pybind11 for the
# two or three seconds of code that it leaves in every object, whether used or not.
function(kubelor_in_units target sources_of_a_unit)
  set_target_properties(${target} PROPERTIES UNITY_BUILD ON UNITY_BUILD_BATCH_SIZE ${sources_of_a_unit})
  # GCC takes what a source keeps for itself for the matter of a header, since the unit includes the source.
  target_compile_options(${target} PRIVATE $<$<CXX_COMPILER_ID:GNU>:-Wno-subobject-linkage>)
endfunction()
