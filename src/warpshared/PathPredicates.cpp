#include "warpshared/PathPredicates.h"

#include "text/Characters.h"
#include "text/UTF8.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace velmora {
namespace {

// Bytes are looked at eight at a time, each as a part of one word.
using Word = std::uint64_t;

constexpr char separator = '/';
constexpr Word inEachByte = 0x0101010101010101U;

Word wordAt(const char* bytes) {
  Word word = 0;
  std::memcpy(&word, bytes, sizeof word);
  return word;
}

// Not 0 exactly if a byte of `word` is 0. The highest bit of each such byte is set then, and of no
// byte that is even.
constexpr Word zeroBytes(Word word) { return (word - inEachByte) & ~word & (inEachByte << 7U); }

// The highest bits of the bytes that are "." or "/", which differ in the lowest bit only.
constexpr Word dotsAndSeparators(Word word) {
  static_assert(('.' | 1) == separator);
  return zeroBytes((word | inEachByte) ^ (inEachByte * separator));
}

// Whether the three bytes after a separator begin a component that is empty, "." or "..".
bool beginForbiddenComponent(const char* next) {
  return next[0] == separator ||
         (next[0] == '.' && (next[1] == separator || (next[1] == '.' && next[2] == separator)));
}

// How far beyond the bytes in question the functions above and below look.
constexpr std::size_t lookAhead = 3;

bool hasForbiddenComponentAfterSeparator(const char* bytes) {
  for (std::size_t index = 0; index < sizeof(Word); ++index) {
    if (bytes[index] == separator && beginForbiddenComponent(bytes + index + 1)) {
      return true;
    }
  }
  return false;
}

// Whether there is a NUL, or a separator before a forbidden component, among the bytes of a word
// that has `lookAhead` more behind it.
bool hasFault(const char* bytes) {
  const Word word = wordAt(bytes);
  const Word nuls = zeroBytes(word);
  // Where neither "." nor "/" follows one of both, nothing is forbidden. Where one does, as in the
  // path of a hidden file, there is more to see.
  const Word pairs = dotsAndSeparators(word) & dotsAndSeparators(wordAt(bytes + 1));
  return (nuls | pairs) != 0 && (nuls != 0 || hasForbiddenComponentAfterSeparator(bytes));
}

// The last bytes of a text, then the separator that counts as being there, and harmless bytes up to
// whole words.
class PaddedEnd {
 public:
  static constexpr std::size_t capacity = 2 * sizeof(Word);

  explicit PaddedEnd(std::string_view text) {
    bytes_.fill('x');
    if (text.size() >= capacity) {
      // The usual case, for which compilers need no loop.
      std::memcpy(bytes_.data(), text.data() + text.size() - capacity, capacity);
      bytes_[capacity] = separator;
    } else {
      std::ranges::copy(text, bytes_.begin());
      bytes_[text.size()] = separator;
    }
  }

  [[nodiscard]] bool hasFault() const {
    return velmora::hasFault(bytes_.data()) || velmora::hasFault(bytes_.data() + sizeof(Word));
  }

  [[nodiscard]] bool beginsWithName() const { return !beginForbiddenComponent(bytes_.data()); }

 private:
  std::array<char, capacity + lookAhead> bytes_{};
};

// Whether `text`, taken as bytes, holds no NUL, and only names after its separators. What comes
// after the end counts as a separator.
bool hasOnlyNamesAfterSeparators(std::string_view text) {
  for (std::size_t position = 0; position + PaddedEnd::capacity < text.size();
       position += sizeof(Word)) {
    if (hasFault(text.data() + position)) {
      return false;
    }
  }
  return !PaddedEnd(text).hasFault();
}

bool beginsWithName(std::string_view text) {
  return PaddedEnd(text.substr(0, lookAhead)).beginsWithName();
}

bool isName(std::string_view component) {
  return !component.empty() && component != "." && component != "..";
}

}  // namespace

bool isCanonicalAbsolutePath(std::string_view path) {
  if (!hasCharacterPrefix(path, "/")) {
    return false;
  }
  // Standardisation takes out whole components or separators, or nothing: what it changes has fewer
  // code points than before, and is not equal to it in any form.
  return path.size() == 1 || hasOnlyNamesAfterSeparators(path);
}

bool isSafeRelativeObjectKey(std::string_view key) {
  if (beginsWithName(key) && hasOnlyNamesAfterSeparators(key)) {
    // Names stay names when a "/" between them is part of a larger character and separates nothing.
    return true;
  }
  if (isASCIIText(key) || key.find('\0') != std::string_view::npos) {
    return false;
  }
  return std::ranges::all_of(splitAtCharacter(key, separator), isName);
}

}  // namespace velmora
