#include "ListCommand.h"

#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace velmora::inspect {

namespace {

constexpr std::size_t headWidth = 12;

/// A place that may be unusable, and the member of the report that gives the reason.
struct PlaceFault {
  std::string_view name;
  Text SharedPlaces::*place;
  std::optional<Fault> ResolutionReport::*fault;
};

constexpr PlaceFault placeFaults[] = {
    {"index", &SharedPlaces::index, &ResolutionReport::indexFault},
    {"mirror", &SharedPlaces::mirror, &ResolutionReport::mirrorFault},
    {"root", &SharedPlaces::root, &ResolutionReport::rootFault},
};

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

std::string judgedText(const ReportedManifest& judged, Style style) {
  const bool isWarped = judged.verdict == ManifestVerdict::confirmed;
  std::string text = isWarped ? styledWord("warped", Tone::good, style, headWidth)
                              : styledWord("not warped", Tone::doubtful, style, headWidth);
  text.append(displayText(judged.manifest.originalFolderPath)).append("\n");
  text += indentedLine(
      headWidth,
      std::string(name(judged.verdict)).append(": ").append(explanationOf(judged.verdict)));
  if (judged.fault.has_value()) {
    text += indentedLine(headWidth, toText(*judged.fault));
  }
  text += indentedLine(
      headWidth, internetDateTime(judged.manifest.createdAt) + ", " + toText(judged.manifest));
  return text + indentedLine(headWidth, displayText(judged.file));
}

std::string faultText(std::string_view head, std::string_view line, const Fault& fault,
                      Style style) {
  return styledWord(head, Tone::bad, style, headWidth).append(line).append("\n") +
         indentedLine(headWidth, toText(fault));
}

std::string pathText(const ResolutionReport& resolution, Text SharedPlaces::*place) {
  const std::optional<Text> path = resolution.pathOf(place);
  return path.has_value() ? displayText(*path) : "there is none";
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

std::string toJSONLines(const ResolutionReport& resolution) {
  std::string lines;
  for (const ReportedManifest& judged : resolution.judged) {
    lines.append(judgedJSON(judged)).append("\n");
  }
  for (const ReportedRefusal& refused : resolution.refused) {
    lines.append(toJSON(refused)).append("\n");
  }
  for (const PlaceFault& unusable : placeFaults) {
    if (const std::optional<Fault>& fault = resolution.*unusable.fault) {
      JSONObject object;
      object.addText(unusable.name, resolution.pathOf(unusable.place));
      object.addJSON("error", toJSON(*fault));
      lines.append(object.json()).append("\n");
    }
  }
  return lines;
}

std::string toText(const ResolutionReport& resolution, Style style) {
  std::string text;
  for (const ReportedManifest& judged : resolution.judged) {
    text += judgedText(judged, style);
  }
  for (const ReportedRefusal& refused : resolution.refused) {
    text += faultText("invalid", displayText(refused.file), refused.fault, style);
  }
  for (const PlaceFault& unusable : placeFaults) {
    if (const std::optional<Fault>& fault = resolution.*unusable.fault) {
      text += faultText(unusable.name, pathText(resolution, unusable.place), *fault, style);
    }
  }
  if (resolution.isMirrorMissing) {
    return text + "There is no mirror at " + pathText(resolution, &SharedPlaces::mirror) + "\n";
  }
  return resolution.isComplete() ? text + totals(resolution) : text;
}

}  // namespace velmora::inspect
