#include "Report.h"

#include "Terminal.h"
#include "common/DisplayText.h"
#include "json/JSONWriting.h"
#include "json/strict/JSONReader.h"
#include "platform/FileReader.h"
#include "platform/PlatformError.h"

#include <algorithm>
#include <new>
#include <variant>

namespace velmora::inspect {

namespace {

bool isCorruptFileError(const PlatformError& error) {
  return error.domain() == cocoaErrorDomain && error.code() == fileReadCorruptFileErrorCode;
}

std::string pathJSON(const std::vector<CodingKey>& codingPath) {
  std::vector<std::string> elements;
  for (const CodingKey& key : codingPath) {
    const auto* const name = std::get_if<std::string>(&key);
    elements.push_back(name != nullptr ? jsonString(*name)
                                       : std::to_string(std::get<std::size_t>(key)));
  }
  return jsonArray(elements);
}

/// Formats a coding path like "entries[0].size".
std::string pathText(const std::vector<CodingKey>& codingPath) {
  std::string text;
  for (const CodingKey& key : codingPath) {
    if (const auto* const name = std::get_if<std::string>(&key)) {
      text.append(text.empty() ? "" : ".").append(displayText(*name));
    } else {
      text.append("[").append(std::to_string(std::get<std::size_t>(key))).append("]");
    }
  }
  return text;
}

Fault faultOfException(const std::exception& error) {
  if (const auto* const decoding = dynamic_cast<const DecodingError*>(&error)) {
    return {.kind = std::string(name(decoding->kind())),
            .codingPath = decoding->codingPath(),
            .message = decoding->what(),
            .byteOffset = decoding->byteOffset(),
            .place = std::nullopt};
  }
  const auto* const platform = dynamic_cast<const PlatformError*>(&error);
  const bool isCorrupt = platform != nullptr && isCorruptFileError(*platform);
  const bool isOutOfMemory = dynamic_cast<const std::bad_alloc*>(&error) != nullptr;
  return {.kind = isCorrupt ? "corruptFile" : "unreadable",
          .codingPath = std::nullopt,
          .message = isOutOfMemory ? "Cannot allocate memory" : error.what(),
          .byteOffset = std::nullopt,
          .place = std::nullopt};
}

}  // namespace

std::string jsonString(std::string_view text) {
  std::string json;
  internal::appendJSONString(json, repairedUTF8(text));
  return json;
}

std::string jsonArray(const std::vector<std::string>& elements) {
  std::string json = "[";
  for (const std::string& element : elements) {
    json.append(json.size() > 1 ? "," : "").append(element);
  }
  return json + "]";
}

void JSONObject::addText(std::string_view key, std::optional<std::string_view> value) {
  addJSON(key, value.has_value() ? jsonString(*value) : "null");
}

void JSONObject::addNumber(std::string_view key, std::size_t value) {
  addJSON(key, std::to_string(value));
}

void JSONObject::addFlag(std::string_view key, std::optional<bool> value) {
  addJSON(key, !value.has_value() ? "null" : *value ? "true" : "false");
}

void JSONObject::addJSON(std::string_view key, std::string_view json) {
  members_.append(members_.size() > 1 ? "," : "").append(jsonString(key)).append(":").append(json);
}

Fault faultOf(const std::exception_ptr& error) {
  try {
    std::rethrow_exception(error);
  } catch (const std::exception& exception) {
    return faultOfException(exception);
  }
}

std::optional<Place> placeOf(std::size_t byteOffset, std::string_view bytes) {
  if (byteOffset > bytes.size()) {
    return std::nullopt;
  }
  const std::string_view before = bytes.substr(0, byteOffset);
  const std::size_t lineStart = before.rfind('\n') + 1;
  return Place{.line = static_cast<std::size_t>(std::ranges::count(before, '\n')) + 1,
               .column = byteOffset - lineStart + 1};
}

Fault faultInFile(const std::exception_ptr& error, std::string_view path, const FileReader& files) {
  Fault fault = faultOf(error);
  if (fault.byteOffset.has_value()) {
    try {
      fault.place = placeOf(*fault.byteOffset, files.read(path, internal::maxJSONDocumentLength));
    } catch (const std::exception&) {
      // The file has gone, or memory ran out. The fault still has its offset.
    }
  }
  return fault;
}

std::string toJSON(const Fault& fault) {
  JSONObject object;
  object.addText("kind", fault.kind);
  if (fault.codingPath.has_value()) {
    object.addJSON("codingPath", pathJSON(*fault.codingPath));
  }
  object.addText("message", fault.message);
  if (fault.byteOffset.has_value()) {
    object.addNumber("byteOffset", *fault.byteOffset);
  }
  if (fault.place.has_value()) {
    object.addNumber("line", fault.place->line);
    object.addNumber("column", fault.place->column);
  }
  return object.json();
}

std::string toText(const Fault& fault) {
  std::string text;
  if (fault.place.has_value()) {
    text.append("line ").append(std::to_string(fault.place->line));
    text.append(", column ").append(std::to_string(fault.place->column)).append(": ");
  } else if (fault.byteOffset.has_value()) {
    text.append("byte ").append(std::to_string(*fault.byteOffset)).append(": ");
  }
  text.append(fault.kind);
  if (fault.codingPath.has_value() && !fault.codingPath->empty()) {
    text.append(" at ").append(pathText(*fault.codingPath));
  }
  return text.append(": ").append(displayText(fault.message));
}

std::string toJSON(const ManifestSummary& manifest) {
  JSONObject object;
  object.addText("warpID", manifest.warpID);
  object.addText("manifestKey", manifest.manifestKey);
  object.addText("originalFolderPath", manifest.originalFolderPath);
  object.addText("createdAt", internetDateTime(manifest.createdAt));
  object.addText("status", rawValue(manifest.status));
  object.addNumber("entries", manifest.entryCount);
  object.addNumber("samples", manifest.sampleCount);
  return object.json();
}

std::string toText(const ManifestSummary& manifest) {
  std::string text = "Warp ";
  text.append(displayText(manifest.warpID)).append(", ").append(rawValue(manifest.status));
  text.append(", ").append(counted(manifest.entryCount, "entry", "entries"));
  text.append(", ").append(counted(manifest.sampleCount, "sample", "samples"));
  return text.append(", key ").append(displayText(manifest.manifestKey));
}

}  // namespace velmora::inspect
