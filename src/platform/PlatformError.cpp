#include "platform/PlatformError.h"

#include <system_error>

namespace velmora {

PlatformError posixError(int code) {
  return {posixErrorDomain, code, std::generic_category().message(code)};
}

PlatformError noSuchFileError() {
  return {cocoaErrorDomain, fileNoSuchFileErrorCode, "The file doesn’t exist."};
}

PlatformError corruptFileError() {
  return {cocoaErrorDomain, fileReadCorruptFileErrorCode, "The file isn’t in the correct format."};
}

}  // namespace velmora
