#include "ExplainCommand.h"

#include "EnumTable.h"
#include "Presence.h"
#include "common/DisplayText.h"
#include "common/SelectedItems.h"
#include "json/strict/JSONReader.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"
#include "platform/PlatformError.h"
#include "resolution/WarpIDSearch.h"
#include "resolution/WarpMarker.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <iterator>

namespace velmora::inspect {

namespace {

constexpr std::size_t headWidth = 10;

struct VerdictWords {
  /// None for an operand that is not a usable file URL.
  std::optional<ItemVerdict> value;
  std::string_view name;
  std::string_view reason;
};

constexpr VerdictWords verdictWords[] = {
    {ItemVerdict::accepted, "accepted", "is a folder and not warped"},
    {ItemVerdict::notADirectory, "notADirectory", "is no folder, or not there"},
    {ItemVerdict::alreadyWarped, "alreadyWarped", "is a warped folder already"},
    {ItemVerdict::insideWarpedFolder, "insideWarpedFolder", "lies in the warped folder"},
    {ItemVerdict::noMarker, "noMarker", "holds no marker"},
    {ItemVerdict::notWarped, "notWarped",
     "holds a marker, but is no warped folder and lies in none"},
    {std::nullopt, "notAFileURL", "names no file: another kind of URL, nothing, or no UTF-8"},
};

std::string_view reasonName(const ExplainedItem& item) {
  return item.fault.has_value() ? item.fault->kind : rowFor(verdictWords, item.verdict).name;
}

std::string reasonText(const ExplainedItem& item) {
  if (item.fault.has_value()) {
    return displayText(item.fault->message);
  }
  if (item.isAccepted() && item.root.has_value()) {
    return "is a warped folder and holds its marker";
  }
  std::string reason(rowFor(verdictWords, item.verdict).reason);
  if (item.verdict == ItemVerdict::insideWarpedFolder) {
    reason.append(" ").append(displayText(item.root.value_or("")));
  }
  return reason;
}

class ItemExplainer {
 public:
  ItemExplainer(const ResolutionReport& resolution, const Platform& platform)
      : resolution_(resolution), platform_(platform) {}

  [[nodiscard]] ExplainedItem explain(const ScreenedItem& screened) const {
    ExplainedItem item = {.path = screened.path.utf8(), .verdict = screened.verdict};
    if (screened.root.has_value()) {
      item.root = screened.root->utf8();
      item.manifestFile = fileThatWarps(*screened.root);
    }
    item.fault = faultBehind(screened);
    const bool isWarpedFolder = screened.root == screened.path;
    if (!isWarpedFolder && !item.fault && screened.verdict != ItemVerdict::notADirectory) {
      item.marker = markerIn(screened.path);
    }
    return item;
  }

 private:
  /// The screening takes an item or marker for missing if it cannot tell whether there is one.
  [[nodiscard]] std::optional<Fault> faultBehind(const ScreenedItem& screened) const {
    switch (screened.verdict) {
      case ItemVerdict::notADirectory:
        return presenceOf(screened.path, platform_.fileReader).fault;
      case ItemVerdict::noMarker:
        return presenceOf(warpMarkerPath(screened.path), platform_.fileReader).fault;
      default:
        return std::nullopt;
    }
  }

  [[nodiscard]] std::optional<std::string> fileThatWarps(const Text& root) const {
    const auto isReason = [&](const ReportedManifest& reported) {
      return reported.verdict == ManifestVerdict::confirmed && reported.folder == root;
    };
    const auto found = std::ranges::find_if(resolution_.judged, isReason);
    return found != resolution_.judged.end() ? std::optional(found->file) : std::nullopt;
  }

  /// The marker in `folder`, if there is one.
  [[nodiscard]] std::optional<ExplainedMarker> markerIn(const Text& folder) const {
    internal::JSONReader reader;
    try {
      const std::optional<WarpMarker> marker = readWarpMarker(folder, platform_.fileReader, reader);
      return marker.has_value() ? std::optional(warpNamedBy(*marker)) : std::nullopt;
    } catch (const std::exception&) {
      return ExplainedMarker{.fault = faultInFile(std::current_exception(), warpMarkerPath(folder),
                                                  platform_.fileReader)};
    }
  }

  [[nodiscard]] ExplainedMarker warpNamedBy(const WarpMarker& marker) const {
    ExplainedMarker explained = {.warpID = marker.warpID.utf8()};
    std::ranges::copy_if(resolution_.judged, std::back_inserter(explained.manifests),
                         [&](const ReportedManifest& reported) {
                           return reported.manifest.warpID == marker.warpID;
                         });
    WarpIDSearch search({marker.warpID});
    std::ranges::copy_if(resolution_.refused, std::back_inserter(explained.refused),
                         [&](const ReportedRefusal& refused) { return mayName(refused, search); });
    return explained;
  }

  /// Whether a refused file may name the Warp of the search. An unreadable file may name any Warp.
  bool mayName(const ReportedRefusal& refused, WarpIDSearch& search) const {
    try {
      return search.mayBeManifest(refused.file, platform_.fileReader);
    } catch (const PlatformError&) {
      return true;
    }
  }

  const ResolutionReport& resolution_;
  const Platform& platform_;
};

std::string line(std::string_view text) { return indentedLine(headWidth, text); }

std::string markerText(const ExplainedMarker& marker) {
  if (!marker.warpID.has_value()) {
    return line("its marker cannot be used: " + toText(*marker.fault));
  }
  std::string text = line("its marker names Warp " + displayText(*marker.warpID));
  for (const ReportedManifest& reported : marker.manifests) {
    text += line(displayText(reported.file) + ": " + std::string(name(reported.verdict)) +
                 ", for " + displayText(reported.manifest.originalFolderPath));
  }
  for (const ReportedRefusal& refused : marker.refused) {
    text += line(displayText(refused.file) + ": no valid manifest: " + toText(refused.fault));
  }
  if (marker.manifests.empty() && marker.refused.empty()) {
    text += line("no manifest of the mirror names this Warp");
  }
  return text;
}

std::string markerJSON(const ExplainedMarker& marker) {
  JSONObject object;
  if (!marker.warpID.has_value()) {
    object.addJSON("error", toJSON(*marker.fault));
    return object.json();
  }
  object.addText("warpID", *marker.warpID);
  std::vector<std::string> files;
  for (const ReportedManifest& reported : marker.manifests) {
    JSONObject file;
    file.addText("file", reported.file);
    file.addText("verdict", name(reported.verdict));
    file.addText("originalFolderPath", reported.manifest.originalFolderPath);
    files.push_back(file.json());
  }
  for (const ReportedRefusal& refused : marker.refused) {
    files.push_back(toJSON(refused));
  }
  object.addJSON("manifests", jsonArray(files));
  return object.json();
}

}  // namespace

Explanation explainItems(const std::vector<std::string>& operands, const Platform& platform) {
  const ScreenedOperands screened = screenOperands(operands, platform);
  Explanation explanation = {.items = {},
                             .resolution = reportOn(screened.screening.resolution, platform)};
  const ItemExplainer explainer(explanation.resolution, platform);
  for (std::size_t index = 0; index < operands.size(); ++index) {
    const std::optional<std::size_t> number = screened.itemNumbers[index];
    explanation.items.push_back(number.has_value()
                                    ? explainer.explain(screened.screening.items[*number])
                                    : ExplainedItem{.path = operands[index]});
  }
  return explanation;
}

std::string toJSON(const ExplainedItem& item) {
  JSONObject object;
  object.addText("path", item.path);
  object.addFlag("accepted", item.isAccepted());
  object.addText("reason", reasonName(item));
  object.addText("root", item.root);
  object.addText("manifest", item.manifestFile);
  if (item.marker.has_value()) {
    object.addJSON("marker", markerJSON(*item.marker));
  }
  if (item.fault.has_value()) {
    object.addJSON("error", toJSON(*item.fault));
  }
  return object.json();
}

std::string toText(const ExplainedItem& item, Style style) {
  std::string text = item.isAccepted() ? styledWord("accepted", Tone::good, style, headWidth)
                                       : styledWord("refused", Tone::bad, style, headWidth);
  text.append(displayText(item.path)).append("\n").append(headWidth, ' ');
  text.append(reasonName(item)).append(": ").append(reasonText(item)).append("\n");
  if (item.manifestFile.has_value()) {
    text += line("by " + displayText(*item.manifestFile));
  }
  return item.marker.has_value() ? text + markerText(*item.marker) : text;
}

}  // namespace velmora::inspect
