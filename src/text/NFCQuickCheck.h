// Checks whether a text is in NFC without normalizing it: the quick check of Unicode UAX #15,
// "Detecting Normalization Forms". Only the pieces that it cannot decide have to be normalized. For
// the text functions of this folder; all other code uses Text.h.
//
// The character data come from the linked utf8proc, so that check and normalization use the same
// version of Unicode.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string_view>

namespace velmora::internal {

/// The property NFC_Quick_Check: whether a code point occurs in texts in NFC.
enum class NFCQuickCheck : std::uint8_t {
  yes,
  no,
  maybe,  ///< it occurs, unless it composes with a code point before it
};

/// The properties of a code point that the quick check needs.
struct NFCProperties {
  NFCQuickCheck quickCheck = NFCQuickCheck::yes;
  std::uint8_t combiningClass = 0;

  /// Whether this and all later code points are independent of those before. A text may be cut
  /// before such a code point, and both parts normalized separately.
  [[nodiscard]] bool beginsPiece() const {
    return quickCheck == NFCQuickCheck::yes && combiningClass == 0;
  }

  bool operator==(const NFCProperties&) const = default;
};

/// The properties of any code point, assigned or not.
[[nodiscard]] NFCProperties nfcProperties(std::int32_t codePoint);

/// The bytes of a text from `begin` up to, but not including, `end`. Not empty.
struct TextPiece {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// The first piece at or after `begin` that may not be in NFC; none when all the text from `begin`
/// on is in NFC. A piece must begin at `begin`. The text between `begin` and the result is in NFC,
/// and the text after the result can be normalized separately. A byte that is not UTF-8 counts as
/// ASCII.
[[nodiscard]] std::optional<TextPiece> findPieceNotInNFC(std::string_view text, std::size_t begin);

}  // namespace velmora::internal
