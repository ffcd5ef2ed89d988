// The hidden files in which content is written before it gets its name.
#pragma once

#include <string>

namespace velmora {

/// The name of the partial file for the file `name` in the same directory.
[[nodiscard]] std::string partialFileName(const std::string& name);

/// Removes the partial files that killed processes left in the directory more than a day ago. Only
/// regular files count, with the name of a partial file for a UUID and ".json", which nobody else
/// chooses by chance. Examines at most 1000 entries of the directory, so that a huge one does not
/// delay the caller. A failure is not reported.
void removeAbandonedPartialFiles(const std::string& directory) noexcept;

}  // namespace velmora
