// The errors of the system beneath: raised by platform implementations and passed on unchanged.
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
/// In cocoaErrorDomain: a file that could be read, but holds something else than it has to.
inline constexpr int fileReadCorruptFileErrorCode = 259;

/// An error of the platform. `what()` is the localized description, for people.
class PlatformError : public std::runtime_error {
 public:
  /// `native` is the platform's own error object where it has one, carried opaquely.
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

/// The error of an `errno` value, described by the system's text for it.
[[nodiscard]] PlatformError posixError(int code);

/// Nothing is where something has to be: fileNoSuchFileErrorCode, with no further information.
[[nodiscard]] PlatformError noSuchFileError();

/// A file does not hold what it has to: fileReadCorruptFileErrorCode, with no further information.
[[nodiscard]] PlatformError corruptFileError();

}  // namespace velmora
