#include "platform/PlatformError.h"

#include <cerrno>
#include <system_error>

namespace velmora {

PlatformError posixError(int code) {
  return {posixErrorDomain, code, std::generic_category().message(code)};
}

bool isNoSuchFile(const PlatformError& error) {
  return error.domain() == posixErrorDomain && (error.code() == ENOENT || error.code() == ENOTDIR);
}

PlatformError noSuchFileError() {
  return {cocoaErrorDomain, fileNoSuchFileErrorCode, "The file doesn’t exist."};
}

PlatformError corruptFileError() {
  return {cocoaErrorDomain, fileReadCorruptFileErrorCode, "The file isn’t in the correct format."};
}

}  // namespace velmora
