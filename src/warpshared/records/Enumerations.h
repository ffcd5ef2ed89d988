// The enumerations of the shared formats, with their texts in files.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace velmora {

enum class VelmoraWarpSharedStatus { uploading, verified, replaced, failed, needsAttention };

enum class VelmoraWarpSharedEntryKind { file, directory, symlink };

/// The encoding of a stored payload: unchanged, or compressed by LZFSE.
enum class VelmoraWarpSharedPayloadEncoding { raw, lzfse };

/// The storage area of an object.
enum class VelmoraPayloadNamespace { backup, warp };

/// The texts of an enumeration, in the order of its values.
template <class Enumeration>
struct EnumNames;

template <>
struct EnumNames<VelmoraWarpSharedStatus> {
  static constexpr std::array<std::string_view, 5> list = {"uploading", "verified", "replaced",
                                                           "failed", "needsAttention"};
};

template <>
struct EnumNames<VelmoraWarpSharedEntryKind> {
  static constexpr std::array<std::string_view, 3> list = {"file", "directory", "symlink"};
};

template <>
struct EnumNames<VelmoraWarpSharedPayloadEncoding> {
  static constexpr std::array<std::string_view, 2> list = {"raw", "lzfse"};
};

template <>
struct EnumNames<VelmoraPayloadNamespace> {
  static constexpr std::array<std::string_view, 2> list = {"backup", "warp"};
};

template <class Enumeration>
concept EnumerationWithRawValues = requires {
  EnumNames<Enumeration>::list;
};

/// The text of `value` in a file.
template <EnumerationWithRawValues Enumeration>
[[nodiscard]] constexpr std::string_view rawValue(Enumeration value) {
  return EnumNames<Enumeration>::list[static_cast<std::size_t>(value)];
}

}  // namespace velmora
