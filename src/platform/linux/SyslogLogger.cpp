#include "platform/linux/SyslogLogger.h"

#include <climits>

#include <syslog.h>

#include <algorithm>
#include <utility>

namespace velmora {

SyslogLogger::SyslogLogger(std::string identifier) : identifier_(std::move(identifier)) {
  openlog(identifier_.c_str(), LOG_PID | LOG_PERROR, LOG_USER);
}

SyslogLogger::~SyslogLogger() { closelog(); }

void SyslogLogger::log(std::string_view line) noexcept {
  // The format takes the length, because a view does not end in NUL and a copy might fail.
  const auto length = static_cast<int>(std::min<std::size_t>(line.size(), INT_MAX));
  syslog(LOG_ERR, "%.*s", length, line.data());
}

}  // namespace velmora
