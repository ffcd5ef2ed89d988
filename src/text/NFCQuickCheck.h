// Whether a text is in NFC already, without normalizing it: the quick check of Unicode UAX #15,
// "Detecting Normalization Forms". What it cannot tell is confined to pieces, which alone are
// normalized then. Shared by the text functions of this folder; the rest of the system uses Text.h.
//
// The data are those of the utf8proc that we are linked with, so that both are of one version of
// Unicode.
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
  maybe,  ///< where it does not compose with what comes before it
};

/// What decides about a code point's place in NFC.
struct NFCProperties {
  NFCQuickCheck quickCheck = NFCQuickCheck::yes;
  std::uint8_t combiningClass = 0;

  /// Whether nothing from here on has to do with what comes before: a text may be cut in front of
  /// such a code point, and its parts normalized each for itself.
  [[nodiscard]] bool beginsPiece() const {
    return quickCheck == NFCQuickCheck::yes && combiningClass == 0;
  }

  bool operator==(const NFCProperties&) const = default;
};

/// The properties of any code point, assigned or not.
[[nodiscard]] NFCProperties nfcProperties(std::int32_t codePoint);

/// The bytes of a text from `begin` to before `end`. Not empty.
struct TextPiece {
  std::size_t begin = 0;
  std::size_t end = 0;
};

/// The first piece at or after `begin`, where one must begin, that may not be in NFC: what comes
/// before it is, and what follows it can be normalized for itself. None when all is. Bytes that are
/// not UTF-8 are passed as if they were ASCII.
[[nodiscard]] std::optional<TextPiece> findPieceNotInNFC(std::string_view text, std::size_t begin);

}  // namespace velmora::internal
