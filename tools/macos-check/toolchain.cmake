# Compiles for macOS on Linux without Apple's SDK: clang and lld, libc++, our own declarations of the frameworks (sdk/),
# and link stubs that are made from these. MORLA_MACOS_ARCHITECTURE is arm64 or x86_64.
set(MORLA_MACOS_ARCHITECTURE arm64 CACHE STRING "The processor to compile for: arm64 or x86_64")
set(MORLA_MACOS_TARGET 13.0 CACHE STRING "The oldest macOS to compile for")
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR "${MORLA_MACOS_ARCHITECTURE}")
set(CMAKE_OSX_ARCHITECTURES "${MORLA_MACOS_ARCHITECTURE}" CACHE STRING "" FORCE)
set(CMAKE_OSX_DEPLOYMENT_TARGET "${MORLA_MACOS_TARGET}" CACHE STRING "" FORCE)
set(CMAKE_OSX_SYSROOT "" CACHE STRING "" FORCE)

# Where prepare.py puts what it makes: in the build folder, which CMake's own trial projects must be told of.
if(NOT MORLA_MACOS_PREPARED)
  set(MORLA_MACOS_PREPARED "${CMAKE_BINARY_DIR}/macos")
  execute_process(
    COMMAND /usr/bin/python3 "${CMAKE_CURRENT_LIST_DIR}/prepare.py" "${MORLA_MACOS_PREPARED}"
    COMMAND_ERROR_IS_FATAL ANY)
endif()
set(CMAKE_TRY_COMPILE_PLATFORM_VARIABLES MORLA_MACOS_ARCHITECTURE MORLA_MACOS_TARGET MORLA_MACOS_PREPARED)
set(CMAKE_TRY_COMPILE_TARGET_TYPE STATIC_LIBRARY)

set(_llvm /usr/lib/llvm-19)
foreach(language CXX OBJCXX)
  set(CMAKE_${language}_COMPILER "${_llvm}/bin/clang++")
  set(CMAKE_${language}_COMPILER_TARGET "${MORLA_MACOS_ARCHITECTURE}-apple-macos${MORLA_MACOS_TARGET}")
endforeach()
set(CMAKE_AR "${_llvm}/bin/llvm-ar")
set(CMAKE_RANLIB "${_llvm}/bin/llvm-ranlib")
set(CMAKE_INSTALL_NAME_TOOL "${_llvm}/bin/llvm-install-name-tool")

# glibc's C headers stand in for macOS's: __nonnull is a word of clang's for this target, and a macro of theirs; without
# __NO_CTYPE they would define functions that libc++ declares otherwise.
set(_here "${CMAKE_CURRENT_LIST_DIR}")
string(JOIN " " _flags
  -U__nonnull -D_GNU_SOURCE -D__NO_CTYPE -nostdinc++
  -isystem "${_here}/shim" -isystem "${_llvm}/include/c++/v1" -isystem "${MORLA_MACOS_PREPARED}/include"
  -isystem "${_here}/sdk" -isystem "/usr/include/${CMAKE_HOST_SYSTEM_PROCESSOR}-linux-gnu" -isystem /usr/include)
set(CMAKE_CXX_FLAGS_INIT "${_flags}")
set(CMAKE_OBJCXX_FLAGS_INIT "${_flags}")
set(_stubs "${MORLA_MACOS_PREPARED}/stubs")
set(CMAKE_EXE_LINKER_FLAGS_INIT
  "-fuse-ld=lld -nostdlib -F${_stubs} ${_stubs}/libSystem.tbd ${_stubs}/libobjc.tbd ${_stubs}/libc++.tbd")
