# Finds the libraries that those of this project link. The installed package includes this file, too.
# So it prints nothing, and leaves the reasons why a library is missing in VELMORA_MISSING_LIBRARIES.

set(VELMORA_MISSING_LIBRARIES)

find_package(Threads QUIET)
if(NOT Threads_FOUND)
  list(APPEND VELMORA_MISSING_LIBRARIES "The system's threads are missing")
endif()
find_package(PkgConfig QUIET)
if(NOT PKG_CONFIG_FOUND)
  list(APPEND VELMORA_MISSING_LIBRARIES "pkg-config is missing: install the package pkg-config")
  return()
endif()

# velmora_find_module(NAME CONDITIONS DEBIAN-PACKAGE) finds a library by pkg-config, and makes the
# target PkgConfig::NAME.
macro(velmora_find_module name module package)
  pkg_check_modules(${name} QUIET IMPORTED_TARGET GLOBAL ${module})
  if(NOT ${name}_FOUND)
    string(REPLACE ";" ", " velmora_conditions "${module}")
    list(APPEND VELMORA_MISSING_LIBRARIES
         "${velmora_conditions} is missing: install the package ${package}")
  endif()
endmacro()

# The names begin with VELMORA_, so that the targets of the including project stay as they are.
velmora_find_module(VELMORA_UTF8PROC libutf8proc libutf8proc-dev)
# Links the static library if there is one, so that each start loads one library less. It must be the
# one beside the shared library: another may be of another version.
if(VELMORA_UTF8PROC_FOUND)
  find_library(VELMORA_UTF8PROC_ARCHIVE
               ${CMAKE_STATIC_LIBRARY_PREFIX}utf8proc${CMAKE_STATIC_LIBRARY_SUFFIX}
               PATHS ${VELMORA_UTF8PROC_LIBDIR} NO_DEFAULT_PATH)
  mark_as_advanced(VELMORA_UTF8PROC_ARCHIVE)
  if(VELMORA_UTF8PROC_ARCHIVE)
    set_target_properties(PkgConfig::VELMORA_UTF8PROC PROPERTIES INTERFACE_LINK_LIBRARIES
                                                                 ${VELMORA_UTF8PROC_ARCHIVE})
  endif()
endif()
velmora_find_module(VELMORA_XXHASH libxxhash libxxhash-dev)
# TokenFinder.cpp uses the first stage of the parser, which the library does not document. So a new
# major release must be tried before it is allowed here. (vcpkg.json and Brewfile repeat the range.)
velmora_find_module(VELMORA_SIMDJSON "simdjson>=3.0.1;simdjson<5" libsimdjson-dev)
