#include "platform/posix/PartialFiles.h"

#include "platform/posix/Directories.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <ctime>
#include <string_view>
#include <utility>

namespace velmora {

namespace {

constexpr int maxExaminedCount = 1000;

constexpr std::time_t secondsUntilAbandoned = 24 * 60 * 60;

/// "H" stands for a hexadecimal digit in upper case.
constexpr std::string_view abandonableName = ".HHHHHHHH-HHHH-HHHH-HHHH-HHHHHHHHHHHH.json.partial";

bool isAbandonable(std::string_view name) {
  return std::ranges::equal(name, abandonableName, [](char character, char pattern) {
    const bool isDigit =
        ('0' <= character && character <= '9') || ('A' <= character && character <= 'F');
    return pattern == 'H' ? isDigit : character == pattern;
  });
}

bool isOldFile(int directory, const char* name) {
  struct stat status {};
  return ::fstatat(directory, name, &status, AT_SYMLINK_NOFOLLOW) == 0 && S_ISREG(status.st_mode) &&
         status.st_mtime < std::time(nullptr) - secondsUntilAbandoned;
}

}  // namespace

std::string partialFileName(const std::string& name) { return "." + name + ".partial"; }

void removeAbandonedPartialFiles(const std::string& directory) noexcept {
  FileDescriptor descriptor = openDirectory(directory);
  const int number = descriptor.get();
  const DirectoryStream entries = streamOf(std::move(descriptor));
  if (!entries) {
    return;
  }
  for (int count = 0; count < maxExaminedCount; ++count) {
    const dirent* const entry = ::readdir(entries.get());
    if (entry == nullptr) {
      return;
    }
    const char* const name = static_cast<const char*>(entry->d_name);
    if (isAbandonable(name) && isOldFile(number, name)) {
      ::unlinkat(number, name, /*flags=*/0);
    }
  }
}

}  // namespace velmora
