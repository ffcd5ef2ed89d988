// Writes messages whose reader may never read them.
#pragma once

#include <chrono>
#include <string_view>

namespace velmora {

/// The longest time that one message waits for its reader. An action that fails waits three times
/// (system log, its copy, sentence), and `sessionBusLimit` for the desktop.
inline constexpr std::chrono::milliseconds messageLimit{200};

/// Writes `bytes` to an open file of any kind. Gives up after `limit`, and at the first error; the
/// rest of the bytes is then lost without a report. Leaves the flags of the file unchanged, because
/// other processes may share them. The process must ignore SIGPIPE. Any thread.
void writeWithin(std::chrono::milliseconds limit, int descriptor, std::string_view bytes) noexcept;

}  // namespace velmora
