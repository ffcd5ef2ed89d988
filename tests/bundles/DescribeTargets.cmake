# Included after project(). At the end of the configuration it writes the targets and their Xcode
# properties to targets.txt, one "target|property|value" per line.

function(velmora_describe_targets directory)
  set(attributes APPLICATION_EXTENSION_API_ONLY CLANG_ENABLE_OBJC_ARC CODE_SIGN_ENTITLEMENTS
                 ENABLE_APP_SANDBOX ENABLE_HARDENED_RUNTIME PRODUCT_BUNDLE_IDENTIFIER SKIP_INSTALL)
  list(TRANSFORM attributes PREPEND XCODE_ATTRIBUTE_)
  get_property(targets DIRECTORY ${directory} PROPERTY BUILDSYSTEM_TARGETS)
  foreach(target IN LISTS targets)
    foreach(property IN ITEMS TYPE XCODE_PRODUCT_TYPE XCODE_EXPLICIT_FILE_TYPE ${attributes})
      get_property(value TARGET ${target} PROPERTY ${property})
      if(DEFINED value AND NOT value STREQUAL "")
        file(APPEND ${PROJECT_BINARY_DIR}/targets.txt "${target}|${property}|${value}\n")
      endif()
    endforeach()
  endforeach()
  get_property(subdirectories DIRECTORY ${directory} PROPERTY SUBDIRECTORIES)
  foreach(subdirectory IN LISTS subdirectories)
    velmora_describe_targets(${subdirectory})
  endforeach()
endfunction()

file(WRITE ${PROJECT_BINARY_DIR}/targets.txt "")
cmake_language(DEFER DIRECTORY ${PROJECT_SOURCE_DIR} CALL velmora_describe_targets
               ${PROJECT_SOURCE_DIR})
