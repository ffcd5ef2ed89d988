#include "Explanation.h"

#include "DisplayText.h"
#include "JSONObject.h"
#include "common/SelectedItems.h"
#include "extension/SelectionGathering.h"
#include "platform/Platform.h"

#include <cstddef>
#include <utility>

namespace velmora::inspect {

namespace {

constexpr std::size_t headWidth = 10;

std::string reasonText(const ExplainedItem& item) {
  const std::string root = displayText(item.root.value_or(""));
  if (!item.verdict.has_value()) {
    return "names no file: another kind of URL, nothing, or no UTF-8";
  }
  switch (*item.verdict) {
    case ItemVerdict::accepted:
      return item.root.has_value() ? "is a warped folder and holds its marker"
                                   : "is a folder and not warped";
    case ItemVerdict::notADirectory:
      return "is no folder, or not there";
    case ItemVerdict::alreadyWarped:
      return "is a warped folder already";
    case ItemVerdict::insideWarpedFolder:
      return "lies in the warped folder " + root;
    case ItemVerdict::noMarker:
      return "holds no marker";
    case ItemVerdict::notWarped:
      break;
  }
  return "holds a marker, but is no warped folder and lies in none";
}

}  // namespace

std::string_view name(std::optional<ItemVerdict> verdict) {
  if (!verdict.has_value()) {
    return "notAFileURL";
  }
  switch (*verdict) {
    case ItemVerdict::accepted:
      return "accepted";
    case ItemVerdict::notADirectory:
      return "notADirectory";
    case ItemVerdict::alreadyWarped:
      return "alreadyWarped";
    case ItemVerdict::insideWarpedFolder:
      return "insideWarpedFolder";
    case ItemVerdict::noMarker:
      return "noMarker";
    case ItemVerdict::notWarped:
      break;
  }
  return "notWarped";
}

std::vector<ExplainedItem> explainItems(const std::vector<std::string>& operands,
                                        const Platform& platform, ResolutionRecorder& recorder) {
  std::vector<ExplainedItem> items;
  std::vector<FileURL> selection;
  std::vector<std::size_t> positions;
  for (const std::string& operand : operands) {
    items.push_back({.path = operand, .verdict = std::nullopt, .root = std::nullopt});
    if (std::optional<FileURL> url =
            fileURLFromLoadedItem(loadedItemFromOperand(operand, platform.paths))) {
      selection.push_back(*std::move(url));
      positions.push_back(items.size() - 1);
    }
  }
  static_cast<void>(screenSelection(selection, platform, recorder));
  for (std::size_t index = 0; index < positions.size(); ++index) {
    const ScreenedItem& screened = recorder.items().at(index);
    items[positions[index]] = {
        .path = screened.path.utf8(),
        .verdict = screened.verdict,
        .root = screened.root ? std::optional(screened.root->utf8()) : std::nullopt};
  }
  return items;
}

std::string toJSON(const ExplainedItem& item) {
  JSONObject object;
  object.addText("path", item.path);
  object.addFlag("accepted", item.isAccepted());
  object.addText("reason", name(item.verdict));
  if (item.root.has_value()) {
    object.addText("root", *item.root);
  } else {
    object.addNull("root");
  }
  return object.json();
}

std::string toText(const ExplainedItem& item, const Style& style) {
  std::string text = item.isAccepted() ? style.word("accepted", Tone::good, headWidth)
                                       : style.word("refused", Tone::bad, headWidth);
  text.append(displayText(item.path)).append("\n").append(headWidth, ' ');
  return text.append(name(item.verdict)).append(": ").append(reasonText(item)).append("\n");
}

}  // namespace velmora::inspect
