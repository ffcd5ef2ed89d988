// The errors of the system. Platform implementations raise them, and all code passes them on
// unchanged.
#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

namespace velmora {

/// The domain whose codes are `errno` values.
inline constexpr std::string_view posixErrorDomain = "NSPOSIXErrorDomain";
/// The domain of the codes below.
inline constexpr std::string_view cocoaErrorDomain = "NSCocoaErrorDomain";

/// In cocoaErrorDomain: a file or place that does not exist.
inline constexpr int fileNoSuchFileErrorCode = 4;
/// In cocoaErrorDomain: a file that could be read, but has the wrong content.
inline constexpr int fileReadCorruptFileErrorCode = 259;

/// An error of the platform. `what()` is the localized description, for people.
class PlatformError : public std::runtime_error {
 public:
  /// `native` is the platform's own error object, if there is one; only the platform knows its
  /// type.
  PlatformError(std::string_view domain, int code, const std::string& localizedDescription,
                std::shared_ptr<const void> native = nullptr)
      : std::runtime_error(localizedDescription),
        domain_(domain),
        code_(code),
        native_(std::move(native)) {}

  const std::string& domain() const { return domain_; }
  int code() const { return code_; }
  const std::shared_ptr<const void>& native() const { return native_; }

 private:
  std::string domain_;
  int code_;
  std::shared_ptr<const void> native_;
};

/// The error of an `errno` value, with the system's text as its description.
[[nodiscard]] PlatformError posixError(int code);

/// Whether the error says that nothing exists at a path: ENOENT, or ENOTDIR for a path through a
/// file. Any other error, such as EACCES, leaves that open.
[[nodiscard]] bool isNoSuchFile(const PlatformError& error);

/// The error of a file or place that does not exist: fileNoSuchFileErrorCode, without further
/// information.
[[nodiscard]] PlatformError noSuchFileError();

/// The error of a file with the wrong content: fileReadCorruptFileErrorCode, without further
/// information.
[[nodiscard]] PlatformError corruptFileError();

}  // namespace velmora
