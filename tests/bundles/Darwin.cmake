# Makes CMake configure as on a Mac, so that tests can inspect its output. There is no SDK, so nothing
# can be compiled. This file therefore sets all results that CMake would find out by compiling.
set(CMAKE_SYSTEM_NAME Darwin)
set(CMAKE_SYSTEM_PROCESSOR arm64)

find_program(VELMORA_DARWIN_CLANG clang REQUIRED)
find_program(VELMORA_DARWIN_CLANGXX clang++ REQUIRED)
set(CMAKE_C_COMPILER ${VELMORA_DARWIN_CLANG})
set(CMAKE_CXX_COMPILER ${VELMORA_DARWIN_CLANGXX})
set(CMAKE_OBJCXX_COMPILER ${VELMORA_DARWIN_CLANGXX})
foreach(language C CXX OBJCXX)
  set(CMAKE_${language}_COMPILER_TARGET arm64-apple-macosx11.0)
  set(CMAKE_${language}_COMPILER_WORKS TRUE)
  set(CMAKE_${language}_ABI_COMPILED TRUE)
  set(CMAKE_${language}_SIZEOF_DATA_PTR 8)
endforeach()
set(CMAKE_SIZEOF_VOID_P 8)
# CMake writes the flags of several processors only with a folder for an SDK.
file(MAKE_DIRECTORY ${CMAKE_BINARY_DIR}/no-sdk)
set(CMAKE_OSX_SYSROOT ${CMAKE_BINARY_DIR}/no-sdk)
# CMake requires this program, but nothing here runs it.
set(CMAKE_INSTALL_NAME_TOOL /bin/false)

# Threads are part of the system's library.
set(CMAKE_HAVE_LIBC_PTHREAD TRUE)

# The libraries of this system stand for those of a Mac.
execute_process(COMMAND ${VELMORA_DARWIN_CLANGXX} -print-multiarch
                OUTPUT_VARIABLE CMAKE_LIBRARY_ARCHITECTURE OUTPUT_STRIP_TRAILING_WHITESPACE)
