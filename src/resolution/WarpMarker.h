// The marker: the file that the application leaves in a warped folder. A manifest alone does not
// prove that its folder is still warped; the marker of the same Warp does.
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

/// A longer marker is not read. (The application writes some hundred bytes.)
inline constexpr std::size_t maxWarpMarkerLength = std::size_t{16} << 20;

/// What is read of a marker; the application may write more.
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

/// The marker of a folder, or none when nothing of its name is there. Throws PlatformError when it
/// cannot be read, DecodingError when it is no marker, and std::bad_alloc. Any thread.
[[nodiscard]] std::optional<WarpMarker> readWarpMarker(const Text& folderPath,
                                                       const FileReader& files,
                                                       internal::JSONReader& reader);

}  // namespace velmora
