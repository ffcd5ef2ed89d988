# Finds the system libraries that the project needs. The message for a missing one names the Debian
# package that contains it. The installed package includes this file, too.

find_package(PkgConfig QUIET)
if(NOT PKG_CONFIG_FOUND)
  message(FATAL_ERROR "pkg-config is missing: install the package pkg-config")
endif()

# velmora_require_module(TARGET-NAME CONDITIONS DEBIAN-PACKAGE) finds a library by pkg-config, and
# makes the target PkgConfig::TARGET-NAME.
macro(velmora_require_module name module package)
  pkg_check_modules(${name} QUIET IMPORTED_TARGET GLOBAL ${module})
  if(NOT ${name}_FOUND)
    string(REPLACE ";" ", " conditions "${module}")
    message(FATAL_ERROR "${conditions} is missing: install the package ${package}")
  endif()
endmacro()

# velmora_require_package(CMAKE-PACKAGE DEBIAN-PACKAGE) finds a library by its CMake package.
macro(velmora_require_package name package)
  find_package(${name} QUIET)
  if(NOT ${name}_FOUND)
    message(FATAL_ERROR "${name} is missing: install the package ${package}")
  endif()
endmacro()

# velmora_require_found(VARIABLE WHAT DEBIAN-PACKAGE) checks the result of a find_… command.
macro(velmora_require_found variable what package)
  if(NOT ${variable})
    message(FATAL_ERROR "${what} is missing: install the package ${package}")
  endif()
endmacro()

find_package(Threads REQUIRED)
velmora_require_module(UTF8PROC libutf8proc libutf8proc-dev)
# Links the static library if there is one, so that each start loads one library less.
find_library(VELMORA_UTF8PROC_ARCHIVE
             ${CMAKE_STATIC_LIBRARY_PREFIX}utf8proc${CMAKE_STATIC_LIBRARY_SUFFIX}
             HINTS ${UTF8PROC_LIBDIR})
mark_as_advanced(VELMORA_UTF8PROC_ARCHIVE)
if(VELMORA_UTF8PROC_ARCHIVE)
  set_target_properties(PkgConfig::UTF8PROC PROPERTIES INTERFACE_LINK_LIBRARIES
                                                       ${VELMORA_UTF8PROC_ARCHIVE})
endif()
velmora_require_module(XXHASH libxxhash libxxhash-dev)
# TokenFinder.cpp uses the first stage of the parser, which the library does not document. So a new
# major release must be tried before it is allowed here. (vcpkg.json and Brewfile repeat the range.)
velmora_require_module(SIMDJSON "simdjson>=3.0.1;simdjson<5" libsimdjson-dev)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  velmora_require_module(GIO "gio-unix-2.0>=2.74" libglib2.0-dev)
endif()
