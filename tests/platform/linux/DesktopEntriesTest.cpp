#include "platform/linux/DesktopEntries.h"
#include "platform/posix/PosixFileReader.h"
#include "tests/support/HostileFiles.h"
#include "tests/support/ScratchDirectory.h"

#include <gtest/gtest.h>

#include <sys/stat.h>

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace velmora {
namespace {

constexpr const char* identifier = "org.example.Application";
constexpr const char* fileName = "applications/org.example.Application.desktop";
constexpr off_t gigabyte = off_t{1} << 30;

std::string entryWith(const std::string& lines) {
  return "[Desktop Entry]\nType=Application\nName=Example\n" + lines;
}

constexpr const char* goodEntry =
    "[Desktop Entry]\nType=Application\nName=Example\nExec=/bin/true\n";

/// Two data directories, best first.
class DesktopEntriesTest : public testing::Test {
 protected:
  std::optional<DesktopEntry> find(const std::string& name = identifier) const {
    return findDesktopEntry(name, {directory.path("user"), directory.path("system")},
                            PosixFileReader());
  }

  /// The path of the found entry below the scratch directory; empty for none.
  std::string found() const {
    const std::optional<DesktopEntry> entry = find();
    return entry ? entry->path.substr(directory.path().size() + 1) : std::string();
  }

  std::string userEntry() const { return directory.path("user/") + fileName; }

  ScratchDirectory directory;
};

TEST_F(DesktopEntriesTest, areUsableOrPassedOverOrEndTheSearch) {
  const std::string user = std::string("user/") + fileName;
  const std::string system = std::string("system/") + fileName;
  const struct {
    std::string bytes;
    std::string found;
  } rows[] = {
      {goodEntry, user},
      {entryWith("NoDisplay=true\nExec=/bin/true\n"), user},
      {entryWith("DBusActivatable=true\n"), user},
      {entryWith("TryExec=/bin/true\nExec=true\n"), user},
      {entryWith("TryExec=/does/not/exist\nExec=/bin/true\n"), system},
      {entryWith("Exec=/does/not/exist\n"), system},
      {entryWith("DBusActivatable=true\nExec=/does/not/exist\n"), system},
      {entryWith("Exec=\"\n"), system},
      {"[Desktop Entry]\nType=Link\nName=Example\nURL=file:///\n", system},
      {"[Other]\nKey=Value\n", system},
      {"no key file", system},
      {"", system},
      {std::string(goodEntry) + "#" + std::string(1024 * 1024, 'x'), system},
      {entryWith("Hidden=true\nExec=/bin/true\n"), ""},
      {entryWith("Hidden=true\nExec=/does/not/exist\n"), ""},
      {"[Desktop Entry]\nHidden=true\n", ""},
      {entryWith("Hidden=false\nExec=/bin/true\n"), user},
  };
  directory.write(system, goodEntry);
  for (const auto& row : rows) {
    directory.write(user, row.bytes);
    EXPECT_EQ(found(), row.found) << row.bytes.substr(0, 100);
  }
}

TEST_F(DesktopEntriesTest, arePassedOverWithoutWaitingWhenTheyAreNoFiles) {
  const struct {
    const char* name;
    std::function<void(const std::string& path)> make;
  } rows[] = {
      {"pipe", [](const std::string& path) { require(::mkfifo(path.c_str(), 0600) == 0, path); }},
      {"socket", makeSocket},
      {"folder", [](const std::string& path) { std::filesystem::create_directory(path); }},
      {"endless link", [](const std::string& path) { link(path, path); }},
      {"huge file", [](const std::string& path) { makeSparseFile(path, gigabyte); }},
  };
  const std::string good = std::string("system/") + fileName;
  directory.write(good, goodEntry);
  std::filesystem::create_directories(directory.path("user/applications"));
  for (const auto& row : rows) {
    SCOPED_TRACE(row.name);
    row.make(userEntry());
    EXPECT_EQ(found(), good);
    std::filesystem::remove_all(userEntry());
  }
}

TEST_F(DesktopEntriesTest, mayBeInSubfolders) {
  const std::string inSubfolders = "system/applications/org/example/Application.desktop";
  directory.write(inSubfolders, goodEntry);
  EXPECT_EQ(found(), inSubfolders);
  directory.write(std::string("system/") + fileName, goodEntry);
  EXPECT_EQ(found(), std::string("system/") + fileName);
  const std::string ofUser = "user/applications/org/example/Application.desktop";
  directory.write(ofUser, entryWith("DBusActivatable=true\n"));
  EXPECT_EQ(found(), ofUser);
  EXPECT_EQ(find()->busName, identifier);
}

TEST_F(DesktopEntriesTest, haveABusNameForDBusActivation) {
  const struct {
    const char* identifier;
    const char* line;
    std::optional<std::string> busName;
  } rows[] = {
      {"org.example.A", "DBusActivatable=true\n", "org.example.A"},
      {"org.example.A", "DBusActivatable=false\n", std::nullopt},
      {"org.example.A", "", std::nullopt},
      {"NoName", "DBusActivatable=true\n", std::nullopt},
      {":1.1", "DBusActivatable=true\n", std::nullopt},
  };
  for (const auto& row : rows) {
    directory.write(std::string("user/applications/") + row.identifier + ".desktop",
                    entryWith("Exec=/bin/true\n") + row.line);
    const std::optional<DesktopEntry> entry = find(row.identifier);
    ASSERT_TRUE(entry) << row.identifier;
    EXPECT_EQ(entry->busName, row.busName) << row.identifier;
  }
}

TEST_F(DesktopEntriesTest, haveACommandAndItsDirectory) {
  const std::string path =
      directory.write(std::string("user/") + fileName,
                      entryWith("Icon=icon\nPath=/a b\nExec=true \"a\\s\\\\$b\" %i %c %k %U\n"));
  const std::optional<DesktopEntry> entry = find();
  ASSERT_TRUE(entry);
  EXPECT_EQ(entry->command,
            (std::vector<std::string>{"true", "a $b", "--icon", "icon", "Example", path}));
  EXPECT_EQ(entry->workingDirectory, "/a b");
}

TEST_F(DesktopEntriesTest, areNotFoundUnderOtherNames) {
  directory.write(std::string("user/") + fileName, goodEntry);
  for (const char* name : {"", "org.example.Absent", "org.example.Application.desktop"}) {
    EXPECT_FALSE(find(name)) << name;
  }
}

}  // namespace
}  // namespace velmora
