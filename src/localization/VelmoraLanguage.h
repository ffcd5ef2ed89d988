// The language of the messages: the user's choice in the application, or else a preferred language
// of the system.
#pragma once

#include "text/Text.h"

#include <array>
#include <optional>
#include <string_view>
#include <vector>

namespace velmora {

class PreferredLanguages;
class SharedDefaults;

/// The key of the user's choice in the settings of the application group.
inline constexpr std::string_view selectedLanguageKey = "VelmoraSelectedLanguage.v1";

/// The choices that the application offers. There is deliberately no Traditional Chinese and no
/// European Portuguese.
enum class VelmoraLanguage {
  system,
  english,
  japanese,
  simplifiedChinese,
  spanish,
  brazilianPortuguese,
};

/// Every case, in the order in which a stored choice is matched.
inline constexpr std::array velmoraLanguages = {
    VelmoraLanguage::system,   VelmoraLanguage::english,
    VelmoraLanguage::japanese, VelmoraLanguage::simplifiedChinese,
    VelmoraLanguage::spanish,  VelmoraLanguage::brazilianPortuguese,
};

/// The text that represents the language in the settings and names its localization folder.
[[nodiscard]] std::string_view rawValue(VelmoraLanguage language);

/// The stored choice, read afresh. `system` when nothing is stored, or nothing that equals a raw
/// value; case matters. Never fails.
[[nodiscard]] VelmoraLanguage selectedLanguage(const SharedDefaults& defaults);

/// The language that serves a speaker of `tag` (BCP 47, "_" allowed for "-"), or none. Never
/// `system`.
///
/// - English, Japanese and Spanish serve every region.
/// - Brazilian Portuguese serves Brazil only.
/// - Simplified Chinese serves the script Hans; without a script, every region except Taiwan, Hong
///   Kong and Macau. The script decides before the region: zh-Hans-HK is served, zh-Hant-CN is not.
[[nodiscard]] std::optional<VelmoraLanguage> languageForPreferredLanguage(const Text& tag);

/// `choice`, unless that is `system`: then the language for the first of `preferredLanguages` that
/// is served, or English when none is. Never `system`.
[[nodiscard]] VelmoraLanguage resolvedLanguage(VelmoraLanguage choice,
                                               const std::vector<Text>& preferredLanguages);

}  // namespace velmora
