#include "platform/posix/Directories.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <string>

namespace velmora {
namespace {

TEST(Directories, areOpenedWithoutWaiting) {
  const ScratchDirectory directory;
  require(::mkfifo(directory.path("pipe").c_str(), 0600) == 0, "mkfifo");
  makeSocket(directory.path("socket"));
  directory.write("file", "");
  directory.write("directory/file", "");
  for (const char* name : {"pipe", "directory", "missing"}) {
    link(name, directory.path(std::string("link to ") + name));
  }
  const struct {
    const char* name;
    bool isDirectory;
  } rows[] = {
      {"directory", true},     {"link to directory", true}, {"pipe", false},
      {"link to pipe", false}, {"socket", false},           {"file", false},
      {"missing", false},      {"link to missing", false},
  };
  for (const auto& row : rows) {
    EXPECT_EQ(openDirectory(directory.path(row.name)).isOpen(), row.isDirectory) << row.name;
    // Returns in every case.
    synchronizeDirectory(directory.path(row.name));
  }
}

}  // namespace
}  // namespace velmora
