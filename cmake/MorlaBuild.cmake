# What every target of this project has in common: the language, the warnings, the sanitizers, where programs go.
include_guard()

set(CMAKE_CXX_STANDARD 20)
set(CMAKE_CXX_STANDARD_REQUIRED ON)
# Without the GNU dialect `linux` stays an ordinary identifier, and nothing leans on extensions by accident.
set(CMAKE_CXX_EXTENSIONS OFF)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)
set(CMAKE_EXPORT_COMPILE_COMMANDS ON)
# -O3, CMake's own choice, compiles a sixth longer; these programs wait for people, buses and displays.
set(CMAKE_CXX_FLAGS_RELEASE "-O2 -DNDEBUG")
set(CMAKE_RUNTIME_OUTPUT_DIRECTORY "${CMAKE_BINARY_DIR}/bin")

set(MORLA_SANITIZE "" CACHE STRING "Sanitizers for every target, as -fsanitize= takes them: address,undefined or thread")

option(MORLA_FUZZ "Build everything for libFuzzer, and of the tests only the fuzz targets; clang only" OFF)

find_package(Threads REQUIRED)

add_library(morla_options INTERFACE)
target_include_directories(morla_options INTERFACE "${CMAKE_SOURCE_DIR}/src" "${CMAKE_BINARY_DIR}/generated")
target_compile_options(morla_options INTERFACE
  -Wall -Wextra -Wpedantic -Werror -Wshadow -Wnon-virtual-dtor -Woverloaded-virtual -Wold-style-cast
  -Wcast-align -Wconversion -Wsign-conversion -Wdouble-promotion -Wformat=2 -Wimplicit-fallthrough)
target_link_libraries(morla_options INTERFACE Threads::Threads)
if(CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
  # g++ 12 reports these inside the standard library's own headers (std::variant, std::string) once optimised.
  target_compile_options(morla_options INTERFACE
    -Wno-maybe-uninitialized -Wno-restrict -Wno-stringop-overflow -Wno-array-bounds -Wno-free-nonheap-object)
endif()
if(MORLA_SANITIZE)
  target_compile_options(morla_options INTERFACE
    -fsanitize=${MORLA_SANITIZE} -fno-omit-frame-pointer -fno-sanitize-recover=all)
  target_link_options(morla_options INTERFACE -fsanitize=${MORLA_SANITIZE})
endif()
if(MORLA_FUZZ)
  # Counts the branches that an input takes; the targets themselves are linked with the fuzzer.
  target_compile_options(morla_options INTERFACE -fsanitize=fuzzer-no-link)
  target_compile_definitions(morla_options INTERFACE _GLIBCXX_ASSERTIONS)
endif()

# morla_library(NAME SOURCES a.cpp ... [DEPENDS lib ...] [PRIVATE lib ...])
# One static library, one folder: DEPENDS are the arrows that its headers follow, PRIVATE what only its sources use.
function(morla_library name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS;PRIVATE" ${ARGN})
  add_library(${name} STATIC ${ARG_SOURCES})
  target_link_libraries(${name} PUBLIC morla_options ${ARG_DEPENDS} PRIVATE ${ARG_PRIVATE})
endfunction()

# morla_program(NAME SOURCES a.cpp ... DEPENDS lib ...)
function(morla_program name)
  cmake_parse_arguments(ARG "" "" "SOURCES;DEPENDS" ${ARGN})
  add_executable(${name} ${ARG_SOURCES})
  target_link_libraries(${name} PRIVATE morla_options ${ARG_DEPENDS})
endfunction()

# morla_embed(HEADER path NAMESPACE name FILES a.txt ...)
# Writes the bytes of each file, unchanged, into the generated header that is included as HEADER: one constant
# `std::string_view` a file in NAMESPACE, called k + the file's stem in UpperCamelCase.
function(morla_embed)
  cmake_parse_arguments(ARG "" "HEADER;NAMESPACE" "FILES" ${ARGN})
  set(body "// Generated from the files named below; edit those.\n#pragma once\n#include <string_view>\n\nnamespace ${ARG_NAMESPACE} {\n")
  foreach(file IN LISTS ARG_FILES)
    get_filename_component(stem "${file}" NAME_WE)
    string(REGEX REPLACE "[^A-Za-z0-9]" ";" words "${stem}")
    set(constant "k")
    foreach(word IN LISTS words)
      string(SUBSTRING "${word}" 0 1 head)
      string(SUBSTRING "${word}" 1 -1 tail)
      string(TOUPPER "${head}" head)
      string(APPEND constant "${head}${tail}")
    endforeach()
    file(READ "${file}" hex HEX)
    string(LENGTH "${hex}" digits)
    math(EXPR bytes "${digits} / 2")
    # Short adjacent literals keep every compiler's limit on a literal's length out of reach.
    string(REGEX REPLACE "(................................)" "\\1\n" lines "${hex}")
    string(REGEX REPLACE "([0-9a-f][0-9a-f])" "\\\\x\\1" lines "${lines}")
    string(REPLACE "\n" "\"\n    \"" literals "${lines}")
    string(APPEND body "inline constexpr std::string_view ${constant}{\n    \"${literals}\",\n    ${bytes}};\n")
    set_property(DIRECTORY APPEND PROPERTY CMAKE_CONFIGURE_DEPENDS "${file}")
  endforeach()
  string(APPEND body "}  // namespace ${ARG_NAMESPACE}\n")
  file(GENERATE OUTPUT "${CMAKE_BINARY_DIR}/generated/${ARG_HEADER}" CONTENT "${body}")
endfunction()
