// The parts that the answers of all commands are made of: JSON objects, faults and manifests.
#pragma once

#include "json/DecodingError.h"
#include "warpshared/reading/ManifestDecoding.h"

#include <cstddef>
#include <exception>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velmora {

class FileReader;

namespace inspect {

/// `text` as a JSON string; bytes that are not UTF-8 are replaced (repairedUTF8).
[[nodiscard]] std::string jsonString(std::string_view text);

/// An array of elements that are JSON already.
[[nodiscard]] std::string jsonArray(const std::vector<std::string>& elements);

/// A JSON object in one line, with the keys in the order in which they are added. Keys are ASCII
/// and each is added once.
class JSONObject {
 public:
  /// null for none.
  void addText(std::string_view key, std::optional<std::string_view> value);
  void addNumber(std::string_view key, std::size_t value);
  void addFlag(std::string_view key, bool value);
  /// `json` is a value already.
  void addJSON(std::string_view key, std::string_view json);

  [[nodiscard]] std::string json() const { return members_ + "}"; }

 private:
  std::string members_ = "{";
};

/// A place in a file; both count from 1, the column in bytes.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const Place&) const = default;
};

/// What is wrong with a file.
struct Fault {
  /// The name of a DecodingErrorKind, "corruptFile" or "unreadable".
  std::string kind;
  /// The way to the fault; none for a fault that decoding did not raise.
  std::optional<std::vector<CodingKey>> codingPath;
  std::string message;
  std::optional<std::size_t> byteOffset;
  std::optional<Place> place;

  bool operator==(const Fault&) const = default;
};

/// The fault of a std::exception that reading or decoding a file has raised. It has no place yet.
[[nodiscard]] Fault faultOf(const std::exception_ptr& error);

/// The place of the byte at `byteOffset`, which may also be the end of `bytes`; none for one
/// beyond.
[[nodiscard]] std::optional<Place> placeOf(std::size_t byteOffset, std::string_view bytes);

/// faultOf, with the place in the file at `path`, which is read once more for that: decoding has
/// overwritten the bytes. Without a place when the file cannot be read any more.
[[nodiscard]] Fault faultInFile(const std::exception_ptr& error, std::string_view path,
                                const FileReader& files);

/// As a JSON object.
[[nodiscard]] std::string toJSON(const Fault& fault);

/// In a line for people.
[[nodiscard]] std::string toText(const Fault& fault);

/// As a JSON object.
[[nodiscard]] std::string toJSON(const ManifestSummary& manifest);

/// All but folder and date, in a line for people.
[[nodiscard]] std::string toText(const ManifestSummary& manifest);

}  // namespace inspect

}  // namespace velmora
