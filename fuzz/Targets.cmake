# The fuzz targets. The including file defines velmora_fuzz_target(NAME SOURCES … DEPENDS …): fuzz/
# makes libFuzzer programs of them, and tests/fuzz/ tests of their seeds. Sources are relative to
# this folder.
velmora_fuzz_target(text SOURCES TextFuzzer.cpp DEPENDS velmora::text)
velmora_fuzz_target(file_url SOURCES FileURLFuzzer.cpp DEPENDS velmora::text)
velmora_fuzz_target(lexical_path SOURCES LexicalPathFuzzer.cpp DEPENDS velmora::text)
velmora_fuzz_target(
  path_predicates SOURCES PathPredicatesFuzzer.cpp DEPENDS velmora::warpshared velmora::text)
velmora_fuzz_target(
  json SOURCES JSONFuzzer.cpp DEPENDS velmora_json_judge velmora::json)
velmora_fuzz_target(manifest SOURCES ManifestFuzzer.cpp
                    DEPENDS velmora_json_judge velmora::warpshared)
velmora_fuzz_target(index SOURCES IndexFuzzer.cpp DEPENDS velmora_json_judge velmora::warpshared)
velmora_fuzz_target(marker SOURCES MarkerFuzzer.cpp DEPENDS velmora_json_judge velmora::resolution)
if(CMAKE_SYSTEM_NAME STREQUAL "Linux")
  velmora_fuzz_target(strings_table SOURCES StringsTableFuzzer.cpp DEPENDS velmora::platform_linux)
endif()
