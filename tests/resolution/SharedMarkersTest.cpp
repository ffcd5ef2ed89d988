// Several threads read markers: they give and tell the same as one thread.

#include "resolution/WarpMarker.h"
#include "tests/fakes/RecordedWarps.h"
#include "tests/fakes/WarpRecords.h"
#include "tests/resolution/LineObserver.h"
#include "tests/resolution/Meeting.h"
#include "tests/resolution/MirroredManifests.h"
#include "tests/resolution/WatchedFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <exception>
#include <functional>
#include <new>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace velmora {
namespace {

/// This number of markers is worth three helpers.
constexpr std::size_t enoughForFourWorkers = 1600;

class SharedMarkers : public testing::Test {
 protected:
  SharedMarkers() { prepareMirror(fake); }

  static std::string folderOf(std::size_t number) { return "/" + nameOf(number); }
  static std::string markerOf(std::size_t number) {
    return folderOf(number) + "/.velmora-warped.json";
  }

  /// Warped folders.
  void addFolders(std::size_t count) {
    for (std::size_t number = manifests.size(); number < count; ++number) {
      manifests.push_back(mirroredManifestOf(folderOf(number), nameOf(number)));
      mark(fake, folderOf(number), nameOf(number));
    }
  }

  /// Folders with every verdict.
  void addFoldersOfAllKinds(std::size_t count) {
    addFolders(count);
    std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones;
    for (std::size_t number = 0; number < count; ++number) {
      const VelmoraWarpSharedManifest manifest = manifestOf(folderOf(number), nameOf(number));
      switch (number % 8) {
        case 1:
          tombstones.push_back(tombstoneOf(manifest));
          break;
        case 2:
          tombstones.push_back(tombstoneOf(manifest));
          tombstones.back().warpID = "another " + nameOf(number);
          break;
        case 3:
          fake.fileSystem.files.erase(markerOf(number));
          break;
        case 4:
          fake.fileSystem.directories.insert(markerOf(number));
          break;
        case 5:
          fake.fileSystem.files[markerOf(number)] = "{";
          break;
        case 6:
          mark(fake, folderOf(number), "another");
          break;
        default:
          break;
      }
    }
    fake.fileSystem.files[std::string(recordedWarpRoot) + "/destroyed-manifest-index.json"] =
        indexJSON(std::move(tombstones));
  }

  /// The files of the confirmed manifests, in order.
  Lines confirmed(std::size_t workerCount) { return confirmedIn(files, workerCount); }

  Lines confirmedIn(const FileReader& reader, std::size_t workerCount) {
    Lines result;
    for (const MirroredManifest& mirrored : confirmedWarpManifests(
             manifests, recordedWarpRoot, reader, fake.paths, observer, workerCount)) {
      result.push_back(mirrored.filePath.utf8());
    }
    return result;
  }

  FakePlatform fake;
  std::vector<MirroredManifest> manifests;
  WatchedFiles files{fake.fileSystem};
  LineObserver observer;

 private:
  /// 10000 and so on, so that they sort as they count.
  static std::string nameOf(std::size_t number) { return std::to_string(10'000 + number); }
};

TEST_F(SharedMarkers, areJudgedTheSameWhateverTheNumberOfWorkers) {
  addFoldersOfAllKinds(enoughForFourWorkers);
  const Lines list = confirmed(1);
  const Lines told = std::exchange(observer.told, {});
  EXPECT_EQ(list.size(), enoughForFourWorkers / 4);
  EXPECT_TRUE(std::ranges::is_sorted(list));
  EXPECT_EQ(told.size(), 1 + enoughForFourWorkers);
  EXPECT_TRUE(std::ranges::is_sorted(told.begin() + 1, told.end()));
  EXPECT_EQ(observer.verdicts.size(), 7U);
  EXPECT_EQ(files.threadCount(), 1U);
  for (const std::size_t workers : {1U, 2U, 4U, 8U}) {
    for (int round = 0; round < 3; ++round) {
      EXPECT_EQ(confirmed(workers), list) << workers;
      EXPECT_EQ(std::exchange(observer.told, {}), told) << workers;
    }
  }
}

TEST_F(SharedMarkers, areReadAtTheSameTime) {
  addFolders(enoughForFourWorkers);
  for (const std::size_t workers : {2U, 3U, 4U}) {
    WatchedFiles watched(fake.fileSystem);
    // Begun last, so that each worker has one of them at the end.
    Meeting meeting(workers);
    const std::string firstOfTheLast = folderOf(enoughForFourWorkers - workers);
    watched.reading = [&](std::string_view path) {
      if (path >= firstOfTheLast && path.ends_with("-warped.json")) {
        meeting.attend();
      }
    };
    EXPECT_EQ(confirmedIn(watched, workers).size(), enoughForFourWorkers);
    EXPECT_TRUE(meeting.tookPlace()) << workers;
    EXPECT_EQ(watched.threadCount(), workers);
  }
}

TEST_F(SharedMarkers, areReadByTheCallerAloneWhereTheyAreFew) {
  addFolders(500);
  EXPECT_EQ(confirmed(8).size(), 500U);
  EXPECT_EQ(files.threadCount(), 1U);
}

TEST_F(SharedMarkers, ofDestroyedWarpsAreNotLookedFor) {
  addFoldersOfAllKinds(enoughForFourWorkers);
  for (const std::size_t workers : {1U, 4U}) {
    WatchedFiles watched(fake.fileSystem);
    static_cast<void>(confirmedIn(watched, workers));
    for (std::size_t number = 0; number < enoughForFourWorkers; ++number) {
      const bool isDestroyed = number % 8 == 1 || number % 8 == 2;
      EXPECT_EQ(watched.wasLookedFor(markerOf(number)), !isDestroyed) << number;
    }
  }
}

TEST_F(SharedMarkers, areJudgedNoFurtherWhenTheObserverThrows) {
  addFoldersOfAllKinds(enoughForFourWorkers);
  static_cast<void>(confirmed(1));
  const Lines told = std::exchange(observer.told, {});
  for (std::size_t line = 0; line < told.size(); line += 101) {
    observer.told.clear();
    observer.lineLimit = line + 1;
    EXPECT_THROW(static_cast<void>(confirmed(4)), std::runtime_error);
    EXPECT_EQ(observer.told, Lines(told.begin(), told.begin() + static_cast<long>(line) + 1));
  }
}

class FailingMarkers : public SharedMarkers {
 protected:
  /// Expects that the look-up by so many workers throws.
  void expectFault(std::size_t workerCount) {
    try {
      static_cast<void>(confirmed(workerCount));
      ADD_FAILURE() << "no fault";
    } catch (const std::exception&) {
    } catch (int) {
    }
  }

  const std::vector<std::function<void()>> faults = {
      throwing(std::bad_alloc()), throwing(std::logic_error("odd")), [] {
        throw 42;  // NOLINT(hicpp-exception-baseclass): what is tested
      }};
};

TEST_F(FailingMarkers, endTheLookUpOnceTheManifestsBeforeThemHaveVerdicts) {
  addFoldersOfAllKinds(enoughForFourWorkers);
  static_cast<void>(confirmed(1));
  const Lines told = std::exchange(observer.told, {});
  for (const std::function<void()>& fault : faults) {
    for (const std::size_t failing : {std::size_t{0}, enoughForFourWorkers / 2}) {
      files.reading = [&](std::string_view path) {
        // The second fault comes after the first one, so it is never told of.
        if (path == markerOf(failing) || path == markerOf(failing + 7)) {
          fault();
        }
      };
      for (const std::size_t workers : {1U, 2U, 4U}) {
        expectFault(workers);
        // The first line is of the tombstones.
        EXPECT_EQ(std::exchange(observer.told, {}),
                  Lines(told.begin(), told.begin() + 1 + static_cast<long>(failing)));
      }
    }
  }
}

TEST_F(FailingMarkers, endTheLookUpOnAnyThread) {
  addFolders(enoughForFourWorkers);
  const std::string firstOfTheLast = folderOf(enoughForFourWorkers - 2);
  for (const std::function<void()>& fault : faults) {
    Meeting meeting(2);
    files.reading = [&](std::string_view path) {
      if (path >= firstOfTheLast && path.ends_with("-warped.json")) {
        // The last two, one on each thread.
        meeting.attend();
        fault();
      }
    };
    observer.told.clear();
    expectFault(2);
    EXPECT_TRUE(meeting.tookPlace());
    EXPECT_EQ(observer.told.size(), 1 + enoughForFourWorkers - 2);
  }
}

}  // namespace
}  // namespace velmora
