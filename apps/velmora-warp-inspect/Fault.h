// What is wrong with a file, ready to be told.
#pragma once

#include "json/DecodingError.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;

namespace inspect {

/// A place in a file; both count from 1, the column in bytes.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const Place&) const = default;
};

struct Fault {
  /// The name of a DecodingErrorKind, "corruptFile" or "unreadable".
  std::string kind;
  /// For what decoding raised: the way to the fault.
  std::optional<std::vector<CodingKey>> codingPath;
  std::string message;
  std::optional<std::size_t> byteOffset;
  std::optional<Place> place;

  bool operator==(const Fault&) const = default;
};

/// What an error of reading or decoding a file says: a std::exception. It knows no place yet.
[[nodiscard]] Fault faultOf(const std::exception_ptr& error);

/// Where the byte at `byteOffset` stands, which may also be the end of `bytes`; none for one
/// beyond.
[[nodiscard]] std::optional<Place> placeOf(std::size_t byteOffset, std::string_view bytes);

/// faultOf, with the place in the file at `path`, which is read once more for that: decoding has
/// overwritten what was read. Without a place when the file cannot be read any more.
[[nodiscard]] Fault faultInFile(const std::exception_ptr& error, std::string_view path,
                                const FileReader& files);

/// As a JSON object.
[[nodiscard]] std::string toJSON(const Fault& fault);

/// In a line for people.
[[nodiscard]] std::string toText(const Fault& fault);

}  // namespace inspect

}  // namespace velmora
