// The system log, with a copy on standard error for whoever started the program by hand.
#pragma once

#include "platform/Logger.h"

#include <string>
#include <string_view>

namespace velmora {

/// One at a time: the system keeps a single log per process.
class SyslogLogger final : public Logger {
 public:
  /// `identifier` names the program in front of every line.
  explicit SyslogLogger(std::string identifier);
  ~SyslogLogger() override;
  SyslogLogger(const SyslogLogger&) = delete;
  SyslogLogger& operator=(const SyslogLogger&) = delete;

  void log(std::string_view line) noexcept override;

 private:
  // The system keeps a pointer into it as long as the log is open.
  const std::string identifier_;
};

}  // namespace velmora
