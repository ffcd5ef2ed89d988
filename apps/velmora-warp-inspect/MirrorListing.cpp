#include "MirrorListing.h"

#include "Report.h"
#include "Terminal.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <string>

namespace velmora::inspect {

namespace {

constexpr std::size_t headWidth = 12;

std::string indented(std::string_view line) {
  return std::string(headWidth, ' ').append(line).append("\n");
}

std::string judgedJSON(const ReportedManifest& judged) {
  JSONObject object;
  object.addText("file", judged.file);
  object.addJSON("manifest", toJSON(judged.manifest));
  object.addText("verdict", name(judged.verdict));
  if (judged.fault.has_value()) {
    object.addJSON("error", toJSON(*judged.fault));
  }
  return object.json();
}

std::string refusedJSON(const ReportedRefusal& refused) {
  JSONObject object;
  object.addText("file", refused.file);
  object.addText("verdict", "invalid");
  object.addJSON("error", toJSON(refused.fault));
  return object.json();
}

std::string faultJSON(std::string_view key, const std::optional<Text>& path, const Fault& fault) {
  JSONObject object;
  object.addText(key, path);
  object.addJSON("error", toJSON(fault));
  return object.json();
}

std::string judgedText(const ReportedManifest& judged, Style style) {
  const bool isWarped = judged.verdict == ManifestVerdict::confirmed;
  std::string text = isWarped ? styledWord("warped", Tone::good, style, headWidth)
                              : styledWord("not warped", Tone::doubtful, style, headWidth);
  text.append(displayText(judged.manifest.originalFolderPath)).append("\n");
  text += indented(
      std::string(name(judged.verdict)).append(": ").append(explanationOf(judged.verdict)));
  if (judged.fault.has_value()) {
    text += indented(toText(*judged.fault));
  }
  text += indented(internetDateTime(judged.manifest.createdAt) + ", " + toText(judged.manifest));
  return text + indented(displayText(judged.file));
}

std::string faultText(std::string_view head, std::string_view line, const Fault& fault,
                      Style style) {
  return styledWord(head, Tone::bad, style, headWidth).append(line).append("\n") +
         indented(toText(fault));
}

std::string totals(const ResolutionReport& resolution) {
  const std::size_t confirmed = resolution.confirmedCount();
  return counted(resolution.judged.size() + resolution.refused.size(), "file", "files")
      .append(": ")
      .append(std::to_string(confirmed))
      .append(" warped, ")
      .append(std::to_string(resolution.judged.size() - confirmed))
      .append(" not warped, ")
      .append(std::to_string(resolution.refused.size()))
      .append(" invalid\n");
}

}  // namespace

void writeJSON(const ResolutionReport& resolution, const Write& write) {
  const auto writeFault = [&](std::string_view key, Text SharedPlaces::*place, const Fault& fault) {
    write(faultJSON(key, resolution.pathOf(place), fault) + "\n");
  };
  for (const ReportedManifest& judged : resolution.judged) {
    write(judgedJSON(judged) + "\n");
  }
  for (const ReportedRefusal& refused : resolution.refused) {
    write(refusedJSON(refused) + "\n");
  }
  if (resolution.indexFault.has_value()) {
    writeFault("index", &SharedPlaces::index, *resolution.indexFault);
  }
  if (resolution.mirrorFault.has_value()) {
    writeFault("mirror", &SharedPlaces::mirror, *resolution.mirrorFault);
  }
  if (resolution.rootFault.has_value()) {
    writeFault("root", &SharedPlaces::root, *resolution.rootFault);
  }
}

void writeText(const ResolutionReport& resolution, Style style, const Write& write) {
  const auto pathOf = [&](Text SharedPlaces::*place) {
    const std::optional<Text> path = resolution.pathOf(place);
    return path.has_value() ? displayText(*path) : std::string("there is none");
  };
  for (const ReportedManifest& judged : resolution.judged) {
    write(judgedText(judged, style));
  }
  for (const ReportedRefusal& refused : resolution.refused) {
    write(faultText("invalid", displayText(refused.file), refused.fault, style));
  }
  if (resolution.indexFault.has_value()) {
    write(faultText("index", pathOf(&SharedPlaces::index), *resolution.indexFault, style));
  }
  if (resolution.mirrorFault.has_value()) {
    write(faultText("mirror", pathOf(&SharedPlaces::mirror), *resolution.mirrorFault, style));
  }
  if (resolution.rootFault.has_value()) {
    write(faultText("root", pathOf(&SharedPlaces::root), *resolution.rootFault, style));
  }
  if (resolution.isMirrorMissing) {
    write("There is no mirror at " + pathOf(&SharedPlaces::mirror) + "\n");
  } else if (resolution.isComplete()) {
    write(totals(resolution));
  }
}

}  // namespace velmora::inspect
