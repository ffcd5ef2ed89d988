// The system log, with a copy on standard error for a user who starts the program by hand.
#pragma once

#include "platform/Logger.h"

#include <string>
#include <string_view>

namespace velmora {

/// Writes no longer than `messageLimit` (LimitedWriting.h) to each of the two. syslog(3) would wait
/// for a stuck log, or for a reader of standard error that never reads. Any thread.
class SyslogLogger final : public Logger {
 public:
  /// `identifier` names the program at the beginning of each line. `socketPath` is the datagram
  /// socket of the system log; without a log there, only the copy is written.
  explicit SyslogLogger(std::string identifier, std::string socketPath = "/dev/log");

  void log(std::string_view line) noexcept override;

 private:
  const std::string identifier_;
  const std::string socketPath_;
};

}  // namespace velmora
