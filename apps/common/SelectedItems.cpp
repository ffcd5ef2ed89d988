#include "common/SelectedItems.h"

#include "extension/SelectionGathering.h"
#include "platform/PathStandardizer.h"
#include "platform/Platform.h"

#include <algorithm>
#include <iterator>
#include <optional>
#include <utility>

namespace velmora {

namespace {

class OperandProvider final : public ItemProvider {
 public:
  OperandProvider(std::string operand, const PathStandardizer& standardizer)
      : operand_(std::move(operand)), standardizer_(standardizer) {}

  bool hasItemConformingTo(std::string_view typeIdentifier) const override {
    return typeIdentifier == fileURLTypeIdentifier;
  }

  void loadItem(std::string_view, LoadCompletion completion) override {
    std::optional<FileURL> url = fileURLFromOperand(operand_, standardizer_);
    completion(url.has_value() ? LoadedItem(*std::move(url)) : UnusableItem{}, nullptr);
  }

 private:
  std::string operand_;
  const PathStandardizer& standardizer_;
};

bool isLetter(char character) {
  return ('a' <= character && character <= 'z') || ('A' <= character && character <= 'Z');
}

bool isSchemeCharacter(char character) {
  return isLetter(character) || ('0' <= character && character <= '9') || character == '+' ||
         character == '-' || character == '.';
}

bool isFileScheme(std::string_view scheme) {
  return std::ranges::equal(scheme, std::string_view("file"), {},
                            [](char character) { return static_cast<char>(character | 0x20); });
}

bool looksLikeURL(std::string_view operand) {
  const std::size_t colon = operand.find(':');
  if (colon == std::string_view::npos) {
    return false;
  }
  const std::string_view scheme = operand.substr(0, colon);
  if (isFileScheme(scheme)) {
    return true;
  }
  return !scheme.empty() && isLetter(scheme.front()) &&
         std::ranges::all_of(scheme, isSchemeCharacter) &&
         operand.substr(colon + 1).starts_with("//");
}

}  // namespace

std::optional<FileURL> fileURLFromOperand(std::string_view operand,
                                          const PathStandardizer& standardizer) {
  if (operand.empty()) {
    return std::nullopt;
  }
  if (looksLikeURL(operand)) {
    return fileURLFromURLText(operand);
  }
  const Text path =
      operand.front() == '/' ? Text(operand) : standardizer.standardizedFileURLPath(operand);
  return fileURLFromAbsolutePath(path);
}

std::vector<std::shared_ptr<ItemProvider>> providersFromOperands(
    const std::vector<std::string>& operands, const PathStandardizer& standardizer) {
  std::vector<std::shared_ptr<ItemProvider>> providers;
  std::ranges::transform(operands, std::back_inserter(providers), [&](const std::string& operand) {
    return std::make_shared<OperandProvider>(operand, standardizer);
  });
  return providers;
}

ScreenedOperands screenOperands(const std::vector<std::string>& operands,
                                const Platform& platform) {
  std::vector<FileURL> selection;
  std::vector<std::optional<std::size_t>> itemNumbers;
  for (const std::string& operand : operands) {
    std::optional<FileURL> url = fileURLFromOperand(operand, platform.paths);
    itemNumbers.push_back(url.has_value() ? std::optional(selection.size()) : std::nullopt);
    if (url.has_value()) {
      selection.push_back(*std::move(url));
    }
  }
  return {.screening = screenSelection(selection, platform), .itemNumbers = std::move(itemNumbers)};
}

std::vector<std::string> splitAtNUL(std::string_view bytes) {
  std::vector<std::string> parts;
  while (!bytes.empty()) {
    const std::size_t end = bytes.find('\0');
    parts.emplace_back(bytes.substr(0, end));
    bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
  }
  return parts;
}

}  // namespace velmora
