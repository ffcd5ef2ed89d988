// The words that the shared formats allow.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>

namespace velmora {

enum class VelmoraWarpSharedStatus { uploading, verified, replaced, failed, needsAttention };

enum class VelmoraWarpSharedEntryKind { file, directory, symlink };

/// How a payload is stored: as it is, or compressed by LZFSE.
enum class VelmoraWarpSharedPayloadEncoding { raw, lzfse };

/// Which storage area an object lives in.
enum class VelmoraPayloadNamespace { backup, warp };

/// The words of an enumeration in the order of its cases.
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

/// The word that stands for `value` in a file.
template <EnumerationWithRawValues Enumeration>
[[nodiscard]] constexpr std::string_view rawValue(Enumeration value) {
  return EnumNames<Enumeration>::list[static_cast<std::size_t>(value)];
}

}  // namespace velmora
