#include "localization/VelmoraLanguage.h"

#include "platform/ApplicationGroup.h"
#include "platform/SharedDefaults.h"
#include "text/Characters.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <string>

namespace velmora {

namespace {

using Subtags = std::vector<std::string_view>;

/// Lowercases ASCII only. That is enough in NFC: no other character has one of the needed letters
/// as its lower case there (the Kelvin sign becomes "K").
std::string lowercased(std::string text) {
  std::ranges::transform(text, text.begin(), [](char character) {
    return 'A' <= character && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
  });
  return text;
}

std::string normalizedTag(const Text& tag) {
  std::string text = lowercased(normalizedNFC(tag));
  std::ranges::replace(text, '_', '-');
  return text;
}

Subtags subtagsOf(std::string_view tag) {
  Subtags subtags = splitAtCharacter(tag, '-');
  std::erase(subtags, "");
  return subtags;
}

bool containsAny(std::span<const std::string_view> subtags,
                 std::initializer_list<std::string_view> wanted) {
  return std::ranges::find_first_of(subtags, wanted) != subtags.end();
}

bool isScript(std::string_view subtag) {
  return subtag.size() == 4 && std::ranges::all_of(subtag, [](char character) {
           return 'a' <= character && character <= 'z';
         });
}

std::optional<VelmoraLanguage> chineseFor(std::span<const std::string_view> subtags) {
  // The script decides before the region: a reader of Hans in Hong Kong reads Hans.
  const auto script = std::ranges::find_if(subtags, isScript);
  const bool isSimplified =
      script != subtags.end() ? *script == "hans" : !containsAny(subtags, {"tw", "hk", "mo"});
  return isSimplified ? std::optional(VelmoraLanguage::simplifiedChinese) : std::nullopt;
}

std::optional<VelmoraLanguage> portugueseFor(std::span<const std::string_view> subtags) {
  return containsAny(subtags, {"br"}) ? std::optional(VelmoraLanguage::brazilianPortuguese)
                                      : std::nullopt;
}

}  // namespace

std::string_view rawValue(VelmoraLanguage language) {
  constexpr std::array<std::string_view, 6> rawValues = {"system",  "en", "ja",
                                                         "zh-Hans", "es", "pt-BR"};
  return rawValues[static_cast<std::size_t>(language)];
}

VelmoraLanguage selectedLanguage(const SharedDefaults& defaults) {
  const std::optional<Text> stored =
      defaults.string(applicationGroupIdentifier, selectedLanguageKey);
  if (!stored.has_value()) {
    return VelmoraLanguage::system;
  }
  const auto match = std::ranges::find_if(velmoraLanguages, [&](VelmoraLanguage language) {
    return canonicallyEqual(*stored, rawValue(language));
  });
  return match != velmoraLanguages.end() ? *match : VelmoraLanguage::system;
}

std::optional<VelmoraLanguage> languageForPreferredLanguage(const Text& tag) {
  const std::string text = normalizedTag(tag);
  const Subtags subtags = subtagsOf(text);
  if (subtags.empty()) {
    return std::nullopt;
  }
  const std::string_view language = subtags.front();
  const std::span<const std::string_view> later = std::span(subtags).subspan(1);
  if (language == "en") {
    return VelmoraLanguage::english;
  }
  if (language == "ja") {
    return VelmoraLanguage::japanese;
  }
  if (language == "es") {
    return VelmoraLanguage::spanish;
  }
  if (language == "pt") {
    return portugueseFor(later);
  }
  if (language == "zh") {
    return chineseFor(later);
  }
  return std::nullopt;
}

VelmoraLanguage resolvedLanguage(VelmoraLanguage choice,
                                 const std::vector<Text>& preferredLanguages) {
  if (choice != VelmoraLanguage::system) {
    return choice;
  }
  for (const Text& tag : preferredLanguages) {
    if (const std::optional<VelmoraLanguage> language = languageForPreferredLanguage(tag)) {
      return *language;
    }
  }
  return VelmoraLanguage::english;
}

}  // namespace velmora
