# Finds all that a build of the project needs. The message for a missing library names the Debian
# package that contains it.

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

# The compiler may find the header of another installation than that of the library: it searches
# /usr/local/include first. Such a program would build, and misread the library's tables.
function(velmora_check_utf8proc_version)
  try_run(
    status is_linked
    SOURCE_FROM_CONTENT utf8proc_version.cpp [[
      #include <utf8proc.h>
      #include <cstdio>
      #include <string>
      int main() {
        const std::string header = std::to_string(UTF8PROC_VERSION_MAJOR) + "." +
            std::to_string(UTF8PROC_VERSION_MINOR) + "." + std::to_string(UTF8PROC_VERSION_PATCH);
        std::printf("its header is of version %s, its library of version %s", header.c_str(),
                    utf8proc_version());
        return header == utf8proc_version() ? 0 : 1;
      }
    ]]
    NO_CACHE
    LINK_LIBRARIES PkgConfig::VELMORA_UTF8PROC
    COMPILE_OUTPUT_VARIABLE messages
    RUN_OUTPUT_VARIABLE versions)
  if(NOT is_linked)
    message(FATAL_ERROR "A program that uses utf8proc cannot be built:\n${messages}")
  endif()
  if(NOT status STREQUAL "0")
    message(FATAL_ERROR "utf8proc is installed twice: ${versions}. Remove one, or choose one by "
                        "CPATH (its headers) and PKG_CONFIG_PATH (its pkgconfig folder).")
  endif()
endfunction()

include(VelmoraLibraries)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux" AND PKG_CONFIG_FOUND)
  velmora_find_module(GIO "gio-unix-2.0>=2.74" libglib2.0-dev)
endif()
if(VELMORA_MISSING_LIBRARIES)
  list(JOIN VELMORA_MISSING_LIBRARIES "\n" reasons)
  message(FATAL_ERROR "${reasons}")
endif()
# The version of a library for another system is known only there.
if(NOT CMAKE_CROSSCOMPILING)
  velmora_check_utf8proc_version()
endif()
