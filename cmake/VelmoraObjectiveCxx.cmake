# Objective-C++, and the interface library velmora_cocoa with all that its sources need. Every
# target with ".mm" sources links it. On macOS it uses Apple's compiler and frameworks. On other
# systems the sources are compiled for the tests only, and always by clang++. They use GNUstep, and
# the replacements in tests/gnustep for the parts that GNUstep lacks. A build without velmora_cocoa
# has no Objective-C++.

if(APPLE)
  set(objective_cxx ON)
elseif(NOT VELMORA_BUILD_TESTS OR NOT CMAKE_SYSTEM_NAME STREQUAL "Linux")
  set(objective_cxx OFF)
elseif(VELMORA_BUILD_FUZZERS)
  set(objective_cxx OFF)
  message(STATUS "Objective-C++ is left out: no fuzz target needs it")
elseif(VELMORA_SANITIZERS AND NOT CMAKE_CXX_COMPILER_ID MATCHES "Clang")
  set(objective_cxx OFF)
  message(STATUS "Objective-C++ is left out: only clang++ compiles it, and a program can hold the "
                 "sanitizers of one compiler only")
else()
  set(objective_cxx ON)
endif()
if(NOT objective_cxx)
  return()
endif()

add_library(velmora_cocoa INTERFACE)
set(CMAKE_OBJCXX_STANDARD 20)
set(CMAKE_OBJCXX_STANDARD_REQUIRED ON)
set(CMAKE_OBJCXX_EXTENSIONS OFF)

if(APPLE)
  if(CMAKE_CXX_COMPILER_ID STREQUAL "AppleClang" AND CMAKE_CXX_COMPILER_VERSION VERSION_LESS 15)
    message(FATAL_ERROR "Xcode 15 or later is needed: the standard library of this one has no "
                        "algorithms on ranges")
  endif()
  enable_language(OBJCXX)
  target_compile_options(velmora_cocoa INTERFACE $<$<COMPILE_LANGUAGE:OBJCXX>:-fno-objc-arc>)
  target_link_libraries(velmora_cocoa INTERFACE "-framework Foundation" "-framework AppKit")
  return()
endif()

find_program(VELMORA_CLANGXX NAMES clang++)
velmora_require_found(VELMORA_CLANGXX clang++ clang)
# The runtime's headers are in the folder of the gcc that built it.
file(GLOB gcc_include_directories /usr/lib/gcc/*/*/include)
find_path(VELMORA_OBJC_INCLUDE objc/objc.h HINTS ${gcc_include_directories})
velmora_require_found(VELMORA_OBJC_INCLUDE objc/objc.h libobjc-12-dev)
find_library(VELMORA_OBJC objc HINTS ${VELMORA_OBJC_INCLUDE}/..)
velmora_require_found(VELMORA_OBJC libobjc libobjc-12-dev)
find_path(VELMORA_GNUSTEP_INCLUDE AppKit/AppKit.h PATH_SUFFIXES GNUstep)
velmora_require_found(VELMORA_GNUSTEP_INCLUDE AppKit/AppKit.h libgnustep-gui-dev)
find_library(VELMORA_GNUSTEP_GUI gnustep-gui)
velmora_require_found(VELMORA_GNUSTEP_GUI libgnustep-gui libgnustep-gui-dev)
find_library(VELMORA_GNUSTEP_BASE gnustep-base)
velmora_require_found(VELMORA_GNUSTEP_BASE libgnustep-base libgnustep-base-dev)
find_path(VELMORA_BLOCKS_INCLUDE Block.h)
velmora_require_found(VELMORA_BLOCKS_INCLUDE Block.h libblocksruntime-dev)
find_library(VELMORA_BLOCKS_RUNTIME BlocksRuntime)
velmora_require_found(VELMORA_BLOCKS_RUNTIME libBlocksRuntime libblocksruntime-dev)

# g++ compiles Objective-C++, too, but does not support blocks.
set(CMAKE_OBJCXX_COMPILER ${VELMORA_CLANGXX})
set(pch_prologue ${CMAKE_PCH_PROLOGUE})
set(pch_extension ${CMAKE_PCH_EXTENSION})
enable_language(OBJCXX)
# CMake makes precompiled headers in the form of the last enabled compiler, but they are for C++.
set(CMAKE_PCH_PROLOGUE ${pch_prologue})
set(CMAKE_PCH_EXTENSION ${pch_extension})

# g++ may compile the other sources of these targets, and it supports few of these options. gcc's
# headers come last, because clang has most of them itself.
set(is_objcxx $<COMPILE_LANGUAGE:OBJCXX>)
target_compile_options(
  velmora_cocoa INTERFACE "$<${is_objcxx}:-fblocks;-fobjc-runtime=gcc;-fobjc-exceptions>"
                          "$<${is_objcxx}:-fconstant-string-class=NSConstantString>"
                          "$<${is_objcxx}:SHELL:-idirafter ${VELMORA_OBJC_INCLUDE}>")
target_compile_definitions(
  velmora_cocoa
  INTERFACE
    "$<${is_objcxx}:GNUSTEP;GNUSTEP_BASE_LIBRARY=1;GNU_GUI_LIBRARY=1;GNU_RUNTIME=1;_NATIVE_OBJC_EXCEPTIONS>"
)
# The replacements come first, because they wrap or replace headers of GNUstep.
target_include_directories(
  velmora_cocoa SYSTEM
  INTERFACE "$<${is_objcxx}:${PROJECT_SOURCE_DIR}/tests/gnustep/include;${VELMORA_GNUSTEP_INCLUDE}>")
# The order matters: libgnustep-base has its own function to copy blocks, which is faulty.
target_link_libraries(
  velmora_cocoa INTERFACE ${VELMORA_BLOCKS_RUNTIME} ${VELMORA_GNUSTEP_GUI}
                          ${VELMORA_GNUSTEP_BASE} ${VELMORA_OBJC})
