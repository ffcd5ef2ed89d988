// UTF-8 text as the whole system compares it: two texts are equal when canonically equivalent.
//
// "é" may be written as one code point or as "e" and a combining accent; users and file systems
// mix both. A path, identifier or key is therefore a Text and never compared byte by byte.
// TextView is the same without ownership of the bytes. Operations on whole characters (prefix,
// split, length) are in Characters.h.
#pragma once

#include <compare>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

/// Whether `a` and `b` are canonically equivalent (Unicode, UAX #15). Case matters. A text that is
/// not UTF-8 equals only the same bytes. Costs no more than comparing bytes when both are ASCII or
/// identical.
[[nodiscard]] bool canonicallyEqual(std::string_view a, std::string_view b);

/// Whether `text` surely has no other canonically equal spelling. True for ASCII without three
/// characters: "K" equals U+212A KELVIN SIGN, ";" U+037E GREEK QUESTION MARK, and "`" U+1FEF GREEK
/// VARIA. False for all other text, even if it has no other spelling.
[[nodiscard]] bool hasOneSpelling(std::string_view text);

/// Orders by the code points of the NFC forms (UAX #15). Two texts are equivalent in this order
/// exactly when they are canonicallyEqual. A text that is not UTF-8 is ordered by its bytes.
[[nodiscard]] std::weak_ordering canonicalOrder(std::string_view a, std::string_view b);

/// A hash that is equal for canonically equal texts. It is seeded at random once per process, so
/// that nobody can prepare texts that collide. Texts that collide for one `salt` most likely differ
/// for another.
[[nodiscard]] std::size_t canonicalHash(std::string_view text, std::uint64_t salt = 0);

/// The NFC form (UAX #15). Takes time linear in the length, except for sorting each run of
/// combining marks. A text that is not UTF-8 is returned unchanged.
[[nodiscard]] std::string normalizedNFC(std::string_view text);

/// Whether `bytes` are well-formed UTF-8 (RFC 3629).
[[nodiscard]] bool isUTF8(std::string_view bytes);

/// An owned text. Holds its bytes exactly as given; only comparisons see the canonical form.
class Text {
 public:
  Text() = default;
  Text(std::string utf8) : utf8_(std::move(utf8)) {}
  Text(std::string_view utf8) : utf8_(utf8) {}
  Text(const char* utf8) : utf8_(utf8) {}

  const std::string& utf8() const { return utf8_; }
  std::string_view view() const { return utf8_; }
  operator std::string_view() const { return utf8_; }
  [[nodiscard]] bool empty() const { return utf8_.empty(); }

  friend bool operator==(const Text& a, const Text& b) {
    return canonicallyEqual(a.utf8_, b.utf8_);
  }
  friend std::weak_ordering operator<=>(const Text& a, const Text& b) {
    return canonicalOrder(a.utf8_, b.utf8_);
  }

 private:
  std::string utf8_;
};

/// A text that refers to bytes of another owner, which must outlive it. Compares and hashes like
/// the Text of the same bytes, and also compares with a Text.
class TextView {
 public:
  TextView() = default;
  TextView(std::string_view utf8) : utf8_(utf8) {}
  TextView(const std::string& utf8) : utf8_(utf8) {}
  TextView(const Text& text) : utf8_(text.view()) {}
  TextView(const char* utf8) : utf8_(utf8) {}

  std::string_view view() const { return utf8_; }
  operator std::string_view() const { return utf8_; }
  [[nodiscard]] bool empty() const { return utf8_.empty(); }

  friend bool operator==(TextView a, TextView b) { return canonicallyEqual(a.utf8_, b.utf8_); }
  friend std::weak_ordering operator<=>(TextView a, TextView b) {
    return canonicalOrder(a.utf8_, b.utf8_);
  }

 private:
  std::string_view utf8_;
};

}  // namespace velmora

template <>
struct std::hash<velmora::Text> {
  std::size_t operator()(const velmora::Text& text) const {
    return velmora::canonicalHash(text.view());
  }
};

template <>
struct std::hash<velmora::TextView> {
  std::size_t operator()(velmora::TextView text) const {
    return velmora::canonicalHash(text.view());
  }
};
