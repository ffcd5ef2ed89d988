#include "ListCommand.h"

#include "common/DisplayText.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <string_view>

namespace velmora::inspect {

namespace {

constexpr std::size_t headWidth = 12;

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

}  // namespace

std::string toJSONLines(const ResolutionReport& resolution) {
  std::string lines;
  for (const ReportedManifest& judged : resolution.judged) {
    lines.append(judgedJSON(judged)).append("\n");
  }
  for (const ReportedRefusal& refused : resolution.refused) {
    lines.append(toJSON(refused)).append("\n");
  }
  for (const PlaceFault& unusable : placeFaultsIn(resolution)) {
    JSONObject object;
    object.addText(unusable.name, unusable.path);
    object.addJSON("error", toJSON(*unusable.fault));
    lines.append(object.json()).append("\n");
  }
  if (resolution.isMirrorMissing()) {
    JSONObject object;
    object.addText("mirror", resolution.places->mirror);
    object.addFlag("exists", false);
    lines.append(object.json()).append("\n");
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
  for (const PlaceFault& unusable : placeFaultsIn(resolution)) {
    text += faultText(unusable.name,
                      unusable.path.has_value() ? displayText(*unusable.path) : noRootWords,
                      *unusable.fault, style);
  }
  if (resolution.isMirrorMissing()) {
    return text + styledWord("mirror", Tone::good, style, headWidth) +
           displayText(resolution.places->mirror) + "\n" +
           indentedLine(headWidth, mirrorWords(resolution));
  }
  return resolution.isComplete() ? text + mirrorWords(resolution) + "\n" : text;
}

}  // namespace velmora::inspect
