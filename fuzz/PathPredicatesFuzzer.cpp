// A path or a key: the predicates agree with the rules in their simplest form.
#include "fuzz/Property.h"
#include "tests/warpshared/rules/SimplePathRules.h"
#include "warpshared/rules/TextRules.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  using namespace velmora;
  const std::string_view text = textOf(data, size);
  require(internal::isCanonicalAbsolutePath(text) == internal::isCanonicalByTheRules(text));
  require(internal::isSafeRelativeObjectKey(text) == internal::isSafeByTheRules(text));
  return 0;
}
