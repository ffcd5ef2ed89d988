# Makes the targets of the project: one library per folder, the same language level, warnings and
# sanitizers for all, and an installed package that other projects can link.

function(velmora_common_options target)
  target_compile_features(${target} PUBLIC cxx_std_20)
  set_target_properties(${target} PROPERTIES CXX_EXTENSIONS OFF POSITION_INDEPENDENT_CODE ON)
  target_compile_options(${target} PRIVATE -Wall -Wextra -Wpedantic -Wconversion -Wshadow)
  if(VELMORA_WARNINGS_AS_ERRORS)
    target_compile_options(${target} PRIVATE -Werror)
  endif()
  if(VELMORA_SANITIZERS)
    target_compile_options(${target} PRIVATE -fsanitize=${VELMORA_SANITIZERS}
                                             -fno-sanitize-recover=all -fno-omit-frame-pointer)
    target_link_options(${target} PUBLIC $<BUILD_INTERFACE:-fsanitize=${VELMORA_SANITIZERS}>)
  endif()
  if(VELMORA_BUILD_FUZZERS)
    # The fuzzer is also guided by the branches of the libraries.
    target_compile_options(${target} PRIVATE -fsanitize=fuzzer-no-link)
  endif()
  if(VELMORA_COVERAGE)
    # Each compiler has its own format, and a program can use only one for its counters.
    set(counted $<COMPILE_LANGUAGE:CXX>)
    if(CMAKE_CXX_COMPILER_ID STREQUAL CMAKE_OBJCXX_COMPILER_ID)
      set(counted 1)
    endif()
    # Several threads count. Without atomic counters, some counts become negative.
    target_compile_options(${target} PRIVATE $<${counted}:--coverage>
                                             $<${counted}:-fprofile-update=atomic>)
    target_link_options(${target} PUBLIC $<BUILD_INTERFACE:--coverage>)
  endif()
endfunction()

# Options that make a build with tests faster, for libraries that tests link.
function(velmora_options_for_tests target)
  # Optimised libraries save the tests more time than they cost the compiler. A build for coverage
  # is not optimised, because the optimiser merges lines.
  if(NOT VELMORA_COVERAGE)
    target_compile_options(${target} PRIVATE $<$<CONFIG:Debug>:-Og>)
  endif()
  # All libraries share one precompiled header of the standard library. Users' builds and clang-tidy
  # have none, so that each source must include all that it uses. Objective-C++ cannot use it: it is
  # another language with another compiler.
  get_target_property(sources ${target} SOURCES)
  if(VELMORA_BUILD_TESTS AND NOT sources MATCHES "\\.mm")
    set(owner velmora_platform)
    if(target STREQUAL owner)
      target_precompile_headers(${target} PRIVATE ${PROJECT_SOURCE_DIR}/src/Precompiled.h)
    else()
      target_precompile_headers(${target} REUSE_FROM ${owner})
    endif()
  endif()
endfunction()

# velmora_add_library(NAME [INTERFACE] [NOT_INSTALLED] [SOURCES …] [HEADERS …] [DEPENDS …]
# [PRIVATE_DEPENDS …]) makes the static library velmora_NAME, exported as velmora::NAME, of the
# current folder. HEADERS are the public ones: only they are installed. A header is included as
# "folder/Header.h", in the tree and when installed.
function(velmora_add_library name)
  cmake_parse_arguments(PARSE_ARGV 1 arg "INTERFACE;NOT_INSTALLED" ""
                        "SOURCES;HEADERS;DEPENDS;PRIVATE_DEPENDS")
  set(target velmora_${name})
  set(scope PUBLIC)
  if(arg_INTERFACE)
    set(scope INTERFACE)
    add_library(${target} INTERFACE)
    target_compile_features(${target} INTERFACE cxx_std_20)
  else()
    add_library(${target} STATIC ${arg_SOURCES})
    velmora_common_options(${target})
    velmora_options_for_tests(${target})
    # Another compiler must also be able to link an installed library.
    if(CMAKE_INTERPROCEDURAL_OPTIMIZATION AND CMAKE_CXX_COMPILER_ID STREQUAL "GNU")
      target_compile_options(${target} PRIVATE -ffat-lto-objects)
    endif()
  endif()
  add_library(velmora::${name} ALIAS ${target})
  target_include_directories(
    ${target} ${scope} $<BUILD_INTERFACE:${PROJECT_SOURCE_DIR}/src>
                       $<INSTALL_INTERFACE:${CMAKE_INSTALL_INCLUDEDIR}/velmora>)
  target_link_libraries(${target} ${scope} ${arg_DEPENDS})
  if(arg_PRIVATE_DEPENDS)
    target_link_libraries(${target} PRIVATE ${arg_PRIVATE_DEPENDS})
  endif()
  set_target_properties(${target} PROPERTIES EXPORT_NAME ${name})
  if(arg_NOT_INSTALLED)
    return()
  endif()
  install(TARGETS ${target} EXPORT velmora-finder-actions COMPONENT development)
  set_property(GLOBAL APPEND PROPERTY VELMORA_INSTALLED_LIBRARIES ${name})
  file(RELATIVE_PATH folder ${PROJECT_SOURCE_DIR}/src ${CMAKE_CURRENT_SOURCE_DIR})
  foreach(header IN LISTS arg_HEADERS)
    cmake_path(GET header PARENT_PATH room)
    install(FILES ${header} DESTINATION ${CMAKE_INSTALL_INCLUDEDIR}/velmora/${folder}/${room}
            COMPONENT development)
  endforeach()
endfunction()

function(velmora_install_package)
  include(CMakePackageConfigHelpers)
  set(directory ${CMAKE_INSTALL_LIBDIR}/cmake/velmora-finder-actions)
  install(EXPORT velmora-finder-actions NAMESPACE velmora:: DESTINATION ${directory}
          COMPONENT development FILE velmora-finder-actions-targets.cmake)
  get_property(components GLOBAL PROPERTY VELMORA_INSTALLED_LIBRARIES)
  list(JOIN components ", " component_names)
  configure_package_config_file(
    ${PROJECT_SOURCE_DIR}/cmake/velmora-finder-actions-config.cmake.in
    ${PROJECT_BINARY_DIR}/velmora-finder-actions-config.cmake INSTALL_DESTINATION ${directory})
  write_basic_package_version_file(
    ${PROJECT_BINARY_DIR}/velmora-finder-actions-config-version.cmake
    COMPATIBILITY SameMinorVersion)
  install(FILES ${PROJECT_BINARY_DIR}/velmora-finder-actions-config.cmake
                ${PROJECT_BINARY_DIR}/velmora-finder-actions-config-version.cmake
                ${PROJECT_SOURCE_DIR}/cmake/VelmoraLibraries.cmake
          DESTINATION ${directory} COMPONENT development)
endfunction()
