// Several threads read a mirror: they give and tell the same as one thread.

#include "platform/PlatformError.h"
#include "resolution/ManifestMirror.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/LineObserver.h"
#include "tests/resolution/Meeting.h"
#include "tests/resolution/WatchedFiles.h"

#include <gtest/gtest.h>

#include <exception>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// The manifest that is read first has so many entries that helpers are started after it.
constexpr int entriesOfTheFirst = 1200;
constexpr int restCount = 60;

class SharedReading : public testing::Test {
 protected:
  SharedReading() { prepareMirror(fake); }

  static std::string pathOf(const std::string& name) {
    return std::string(recordedWarpRoot) + "/ManifestMirror/" + name + ".json";
  }

  /// 10 and so on, so that they sort as they count.
  static std::string nameOf(int number) { return std::to_string(10 + number); }

  void add(const std::string& name, double instant, int entryCount = 0) {
    VelmoraWarpSharedManifest manifest = manifestOf("/" + name, "warp " + name);
    manifest.createdAt = {.secondsSinceReferenceDate = instant};
    for (int entry = 0; entry < entryCount; ++entry) {
      manifest.entries.append(entryOf("/" + name + "/" + std::to_string(entry)));
    }
    fake.fileSystem.files[pathOf(name)] = encodeManifest(manifest);
  }

  /// Adds valid manifests, many of the same instant; files that are refused for several reasons;
  /// and directories, which cannot be read.
  void fillMirror() {
    add("0", 50, entriesOfTheFirst);
    for (int number = 0; number < restCount; ++number) {
      const std::string name = nameOf(number);
      switch (number % 6) {
        case 3:
          fake.fileSystem.files[pathOf(name)] = "{";
          break;
        case 4:
          fake.fileSystem.directories.insert(pathOf(name));
          break;
        default:
          add(name, number % 4 * 25, number % 7);
      }
    }
    fake.fileSystem.files[pathOf("99")] = R"({"version":5})";
  }

  std::vector<MirroredManifest> read(std::size_t workerCount) {
    return mirroredManifests(std::string(recordedWarpRoot), files, fake.paths, observer,
                             workerCount);
  }

  static Lines linesOf(const std::vector<MirroredManifest>& manifests) {
    Lines lines;
    for (const MirroredManifest& mirrored : manifests) {
      lines.push_back(mirrored.filePath.utf8() + " " + mirrored.manifest.warpID.utf8() + " " +
                      std::to_string(mirrored.manifest.createdAt.secondsSinceReferenceDate));
    }
    return lines;
  }

  FakePlatform fake;
  WatchedFiles files{fake.fileSystem};
  LineObserver observer;
};

TEST_F(SharedReading, givesAndTellsTheSameWhateverTheNumberOfWorkers) {
  fillMirror();
  const Lines list = linesOf(read(1));
  const Lines told = std::exchange(observer.told, {});
  EXPECT_EQ(list.size(), 41U);
  EXPECT_EQ(told.size(), 63U);
  EXPECT_EQ(files.threadCount(), 1U);
  for (const std::size_t workers : {1U, 2U, 3U, 8U}) {
    for (int round = 0; round < 10; ++round) {
      EXPECT_EQ(linesOf(read(workers)), list) << workers;
      EXPECT_EQ(std::exchange(observer.told, {}), told) << workers;
    }
  }
}

TEST_F(SharedReading, happensAtTheSameTime) {
  fillMirror();
  for (const std::size_t workers : {2U, 3U, 8U}) {
    WatchedFiles watched(fake.fileSystem);
    // Begun last, so that each worker has one of them at the end.
    Meeting meeting(workers);
    const std::string firstOfTheLast = pathOf(nameOf(restCount + 1 - static_cast<int>(workers)));
    watched.reading = [&](std::string_view path) {
      if (path >= firstOfTheLast) {
        meeting.attend();
      }
    };
    static_cast<void>(
        mirroredManifests(std::string(recordedWarpRoot), watched, fake.paths, observer, workers));
    EXPECT_TRUE(meeting.tookPlace()) << workers;
    EXPECT_EQ(watched.threadCount(), workers);
  }
}

TEST_F(SharedReading, isLeftOutForASmallMirror) {
  for (int number = 0; number < restCount; ++number) {
    add(nameOf(number), 0, 3);
  }
  EXPECT_EQ(read(8).size(), restCount);
  EXPECT_EQ(files.threadCount(), 1U);
}

TEST_F(SharedReading, isLeftOutForOneFileAfterALargeOne) {
  add("0", 0, entriesOfTheFirst);
  add("1", 0, entriesOfTheFirst);
  EXPECT_EQ(read(8).size(), 2U);
  EXPECT_EQ(files.threadCount(), 1U);
}

TEST_F(SharedReading, endsWhenTheObserverThrows) {
  fillMirror();
  static_cast<void>(read(1));
  const Lines told = std::exchange(observer.told, {});
  for (std::size_t line = 0; line < told.size(); line += 6) {
    observer.told.clear();
    observer.lineLimit = line + 1;
    EXPECT_THROW(static_cast<void>(read(3)), std::runtime_error);
    EXPECT_EQ(observer.told, Lines(told.begin(), told.begin() + static_cast<long>(line) + 1));
  }
}

TEST_F(SharedReading, takesWhatIsThrownOnAnyThreadForARefusal) {
  fillMirror();
  const std::string failing = pathOf(nameOf(restCount - 1));
  const std::pair<std::function<void()>, const char*> rows[] = {
      {throwing(posixError(EACCES)), "Permission denied"},
      {throwing(std::bad_alloc()), std::bad_alloc().what()},
      {throwing(std::logic_error("odd")), "odd"}};
  for (const auto& row : rows) {
    Meeting meeting(2);
    files.reading = [&](std::string_view path) {
      if (path >= failing) {
        // The last two, one on each thread.
        meeting.attend();
        row.first();
      }
    };
    observer.told.clear();
    static_cast<void>(read(2));
    EXPECT_TRUE(meeting.tookPlace());
    EXPECT_EQ(observer.told.at(61), "refused " + failing + ": " + row.second);
    EXPECT_EQ(observer.told.at(62), "refused " + pathOf("99") + ": " + row.second);
  }
}

TEST_F(SharedReading, passesOnWhatIsNoException) {
  fillMirror();
  files.reading = [](std::string_view path) {
    if (path == pathOf(nameOf(20))) {
      throw 42;  // NOLINT(hicpp-exception-baseclass): the point of the test
    }
  };
  for (const std::size_t workers : {1U, 3U}) {
    EXPECT_THROW(static_cast<void>(read(workers)), int) << workers;
  }
}

}  // namespace
}  // namespace velmora
