// The system log, with a copy on standard error for a user who starts the program by hand.
#pragma once

#include "platform/Logger.h"

#include <string>
#include <string_view>

namespace velmora {

/// One object at a time, because the system has a single log per process.
class SyslogLogger final : public Logger {
 public:
  /// `identifier` names the program at the beginning of every line.
  explicit SyslogLogger(std::string identifier);
  ~SyslogLogger() override;
  SyslogLogger(const SyslogLogger&) = delete;
  SyslogLogger& operator=(const SyslogLogger&) = delete;

  void log(std::string_view line) noexcept override;

 private:
  /// The system keeps a pointer into it while the log is open.
  const std::string identifier_;
};

}  // namespace velmora
