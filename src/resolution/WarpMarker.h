// The marker: the file that the application leaves in a warped folder. A manifest does not prove
// that its folder is still warped. The marker of the same Warp proves it.
#pragma once

#include "json/RecordFields.h"
#include "text/Text.h"

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <tuple>

namespace velmora {

class FileReader;

namespace internal {
class JSONReader;
}

/// The name of the marker, directly inside the warped folder.
inline constexpr std::string_view warpMarkerFileName = ".velmora-warped.json";

/// The longest marker that is read, in bytes. (The application writes some hundred bytes.)
inline constexpr std::size_t maxWarpMarkerLength = std::size_t{16} << 20;

/// The most memory for reading a marker, in bytes.
inline constexpr std::size_t maxWarpMarkerMemory = std::size_t{32} << 20;

/// The fields of a marker that are read. Others are ignored.
struct WarpMarker {
  Text warpID;

  bool operator==(const WarpMarker&) const = default;
};

template <>
struct internal::RecordFields<WarpMarker> {
  static constexpr std::tuple list{internal::RecordField{"warpID", &WarpMarker::warpID}};
};

/// Decodes a marker from JSON; `bytes` are scratch afterwards. Throws DecodingError.
[[nodiscard]] WarpMarker decodeWarpMarker(std::string& bytes, internal::JSONReader& reader);

/// The path of the marker of a folder.
[[nodiscard]] Text warpMarkerPath(const Text& folderPath);

/// The marker of a folder; none if nothing of its name exists. Throws PlatformError if it cannot be
/// read, or if a missing permission hides whether it exists; DecodingError if it
/// is not a marker; and std::bad_alloc. Any thread.
[[nodiscard]] std::optional<WarpMarker> readWarpMarker(const Text& folderPath,
                                                       const FileReader& files,
                                                       internal::JSONReader& reader);

}  // namespace velmora
