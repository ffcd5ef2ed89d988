// The parts that the answers of all commands share: JSON objects, faults and manifests.
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

/// Formats `text` as a JSON string. Replaces bytes that are not UTF-8 (repairedUTF8).
[[nodiscard]] std::string jsonString(std::string_view text);

/// Formats an array. Each element is a JSON text.
[[nodiscard]] std::string jsonArray(const std::vector<std::string>& elements);

/// A JSON object in one line. The keys are in the order of their addition. A key must be ASCII, and
/// may be added only once.
class JSONObject {
 public:
  /// Adds null if there is no value.
  void addText(std::string_view key, std::optional<std::string_view> value);
  void addNumber(std::string_view key, std::size_t value);
  /// Adds null if there is no value.
  void addFlag(std::string_view key, std::optional<bool> value);
  /// `json` is a JSON text.
  void addJSON(std::string_view key, std::string_view json);

  [[nodiscard]] std::string json() const { return members_ + "}"; }

 private:
  std::string members_ = "{";
};

/// A place in a file. Both numbers count from 1; the column counts bytes.
struct Place {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const Place&) const = default;
};

/// The reason why a file is invalid or unusable.
struct Fault {
  /// The name of a DecodingErrorKind, "corruptFile" or "unreadable".
  std::string kind;
  /// The coding path of the fault; none if the decoding did not raise it.
  std::optional<std::vector<CodingKey>> codingPath;
  std::string message;
  std::optional<std::size_t> byteOffset;
  std::optional<Place> place;

  bool operator==(const Fault&) const = default;
};

/// Describes a std::exception from reading or decoding a file. The fault has no place.
[[nodiscard]] Fault faultOf(const std::exception_ptr& error);

/// The place of the byte at `byteOffset` in `bytes`. The end of `bytes` has a place, too; an offset
/// beyond the end has none.
[[nodiscard]] std::optional<Place> placeOf(std::size_t byteOffset, std::string_view bytes);

/// As faultOf, with the fault's place in the file at `path`. Reads the file a second time, because
/// the decoding has overwritten the bytes. The fault has no place if this reading fails.
[[nodiscard]] Fault faultInFile(const std::exception_ptr& error, std::string_view path,
                                const FileReader& files);

/// Formats the fault as a JSON object.
[[nodiscard]] std::string toJSON(const Fault& fault);

/// Formats the fault as one line of text for people, without the line feed.
[[nodiscard]] std::string toText(const Fault& fault);

/// Formats the manifest as a JSON object.
[[nodiscard]] std::string toJSON(const ManifestSummary& manifest);

/// Formats the manifest, except its folder and date, as one line of text without the line feed.
[[nodiscard]] std::string toText(const ManifestSummary& manifest);

}  // namespace inspect

}  // namespace velmora
