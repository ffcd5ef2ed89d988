#include "Presence.h"

#include "platform/FileReader.h"
#include "platform/PlatformError.h"

#include <exception>

namespace velmora::inspect {

Presence presenceOf(std::string_view path, const FileReader& files) {
  if (files.exists(path)) {
    return {.exists = true};
  }
  try {
    // Follows the same path, and reports why it ends.
    static_cast<void>(files.open(path, 0));
  } catch (const PlatformError& error) {
    if (!isNoSuchFile(error)) {
      return {.exists = std::nullopt, .fault = faultOf(std::current_exception())};
    }
  }
  return {.exists = false};
}

}  // namespace velmora::inspect
