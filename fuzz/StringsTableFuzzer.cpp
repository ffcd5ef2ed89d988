// A table of localized texts: an accepted table is written with all required escapes, and reads
// back as itself.
#include "fuzz/Property.h"
#include "platform/linux/StringsTable.h"
#include "text/Text.h"

#include <optional>
#include <string>

namespace velmora {
namespace {

void appendQuoted(std::string& table, std::string_view text) {
  table += '"';
  for (const char character : text) {
    if (character == '"' || character == '\\') {
      table += '\\';
    }
    table += character;
  }
  table += '"';
}

std::string written(const StringsTable& table) {
  std::string text;
  for (const auto& [key, value] : table) {
    appendQuoted(text, key);
    text += "/**/=// \n";
    appendQuoted(text, value);
    text += ';';
  }
  return text;
}

void requireStable(std::string_view text) {
  const std::optional<StringsTable> table = parseStringsTable(text);
  if (!table) {
    return;
  }
  for (const auto& [key, value] : *table) {
    require(isUTF8(key) && isUTF8(value));
  }
  require(parseStringsTable(written(*table)) == table);
  // The entry begins a new line, because the table may end in a comment.
  require(parseStringsTable(std::string(text) + "\n\"unfinished\" = \"entry\"") == std::nullopt);
}

}  // namespace
}  // namespace velmora

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  velmora::requireStable(velmora::textOf(data, size));
  return 0;
}
