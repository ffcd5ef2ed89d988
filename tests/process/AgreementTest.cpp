// The two programs agree with each other, and with a simple model of the warped folders. The trees
// of folders are random, with nested, restored, destroyed and corrupted Warps in every mixture.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/JSONLine.h"
#include "tests/process/ProcessTest.h"
#include "tests/support/RandomTrees.h"
#include "warpshared/writing/ManifestEncoding.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <filesystem>
#include <optional>
#include <ostream>
#include <random>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace velmora::process {

namespace {

/// A spelling of a folder name. Spellings of one name have one letter, which the model compares.
struct Spelling {
  char letter;
  const char* name;
};

constexpr std::array<Spelling, 5> spellings = {
    {{'a', "a"}, {'b', "ab"}, {'c', "Photos 2025"}, {'e', "\u00e9"}, {'e', "e\u0301"}}};

struct Folder {
  std::string path;
  /// The letters of the names from the tree's root to this folder.
  std::string letters;
};

/// A folder that counts as warped.
struct Root {
  Folder folder;
  double createdAt;
  std::string fileName;
};

struct Answer {
  bool isAccepted = false;
  std::string reason;
  std::optional<std::string> root;

  bool operator==(const Answer&) const = default;
};

std::ostream& operator<<(std::ostream& stream, const Answer& answer) {
  return stream << answer.reason << " in " << answer.root.value_or("none");
}

/// A random tree on disk, and the expected answers for its folders.
class RandomTree {
 public:
  RandomTree(std::uint32_t seed, std::filesystem::path top, std::filesystem::path sharedRoot)
      : random_(seed), top_(std::move(top)), sharedRoot_(std::move(sharedRoot)) {
    std::filesystem::create_directories(sharedRoot_ / "ManifestMirror");
    makeFolders();
    makeWarps();
    makeStrays();
  }

  /// Operands: folders of the tree, files, and missing paths, some of them not in standardised
  /// form.
  std::vector<std::string> items() {
    std::vector<std::string> chosen;
    for (int count = below(6) + 1; count > 0; --count) {
      const std::string& path = folders_[indexBelow(folders_.size())].path;
      const std::array<std::string, 6> forms = {path,           path + "/",        path + "/./",
                                                path + "/x/..", path + "/missing", path + "/plain"};
      chosen.push_back(forms[indexBelow(forms.size())]);
    }
    return chosen;
  }

  [[nodiscard]] Answer expectedForWarp(const std::string& item) const {
    const std::optional<Folder> folder = folderAt(item);
    if (!folder.has_value()) {
      return {.isAccepted = false, .reason = "notADirectory", .root = std::nullopt};
    }
    const Root* root = innermostRoot(folder->letters);
    if (root == nullptr) {
      return {.isAccepted = true, .reason = "accepted", .root = std::nullopt};
    }
    const bool isRoot = root->folder.letters == folder->letters;
    return {.isAccepted = false,
            .reason = isRoot ? "alreadyWarped" : "insideWarpedFolder",
            .root = root->folder.path};
  }

  [[nodiscard]] Answer expectedForRestore(const std::string& item) const {
    const std::optional<Folder> folder = folderAt(item);
    if (!folder.has_value() || !marked_.contains(folder->path)) {
      return {.isAccepted = false, .reason = "noMarker", .root = std::nullopt};
    }
    const Root* root = innermostRoot(folder->letters);
    if (root == nullptr) {
      return {.isAccepted = false, .reason = "notWarped", .root = std::nullopt};
    }
    const bool isRoot = root->folder.letters == folder->letters;
    return {.isAccepted = isRoot,
            .reason = isRoot ? "accepted" : "insideWarpedFolder",
            .root = root->folder.path};
  }

 private:
  int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }
  std::size_t indexBelow(std::size_t limit) {
    return std::uniform_int_distribution<std::size_t>(0, limit - 1)(random_);
  }

  void makeFolders() {
    folders_ = {{top_, ""}};
    for (int count = below(8) + 3; count > 0; --count) {
      const Folder parent = folders_[indexBelow(folders_.size())];
      const Spelling& spelling = spellings[indexBelow(spellings.size())];
      Folder folder{parent.path + "/" + spelling.name, parent.letters + spelling.letter};
      if (std::filesystem::create_directories(folder.path)) {
        writeFile(folder.path + "/plain", "");
        folders_.push_back(std::move(folder));
      }
    }
  }

  void mark(const Folder& folder, const std::string& bytes) {
    writeFile(folder.path + "/.velmora-warped.json", bytes);
    marked_.insert(folder.path);
  }

  void writeManifest(const std::string& warpID, const std::string& bytes) const {
    writeFile(sharedRoot_ / "ManifestMirror" / (warpID + ".json"), bytes);
  }

  void makeWarps() {
    std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones;
    std::vector<Root> tombstoned;
    for (int count = below(6); count > 0; --count) {
      const Folder folder = folders_[indexBelow(folders_.size())];
      if (marked_.contains(folder.path) || !warped_.insert(folder.path).second) {
        continue;
      }
      const std::string warpID = "warp-" + std::to_string(count);
      VelmoraWarpSharedManifest manifest = manifestOf(folder.path, warpID);
      manifest.createdAt.secondsSinceReferenceDate = below(3);
      std::string bytes = encodeManifest(manifest);
      Root root{folder, manifest.createdAt.secondsSinceReferenceDate, warpID + ".json"};
      switch (below(8)) {
        case 0:  // restored: no marker
          break;
        case 1:  // destroyed, by Warp ID or by manifest key
          mark(folder, markerJSON(warpID));
          tombstones.push_back(tombstoneOf(manifest));
          (below(2) == 0 ? tombstones.back().warpID : tombstones.back().manifestKey) =
              "other-" + warpID;
          tombstoned.push_back(std::move(root));
          break;
        case 2:  // a corrupted manifest
          mark(folder, markerJSON(warpID));
          bytes.resize(indexBelow(bytes.size()));
          break;
        case 3:  // a corrupted marker
          mark(folder, "{\"warpID\":\"" + warpID);
          break;
        case 4:  // warped again by another Warp
          mark(folder, markerJSON("newer"));
          break;
        default:
          mark(folder, markerJSON(warpID));
          roots_.push_back(std::move(root));
          break;
      }
      writeManifest(warpID, bytes);
    }
    makeIndex(std::move(tombstones), tombstoned);
  }

  void makeIndex(std::vector<VelmoraWarpSharedDestroyedManifestRecord> tombstones,
                 const std::vector<Root>& tombstoned) {
    std::string bytes = indexJSON(std::move(tombstones));
    if (below(5) == 0) {
      // A corrupted index counts as absent, so nothing is destroyed.
      bytes.pop_back();
      roots_.insert(roots_.end(), tombstoned.begin(), tombstoned.end());
    }
    // The newest come first; those of one instant are in the order of their file names.
    std::ranges::sort(roots_, {},
                      [](const Root& root) { return std::pair(-root.createdAt, root.fileName); });
    writeFile(sharedRoot_ / "destroyed-manifest-index.json", bytes);
  }

  void makeStrays() {
    for (const Folder& folder : folders_) {
      if (!marked_.contains(folder.path) && !warped_.contains(folder.path) && below(6) == 0) {
        mark(folder, markerJSON("stray"));
      }
    }
    writeManifest("not a manifest", "{}");
  }

  [[nodiscard]] std::optional<Folder> folderAt(const std::string& item) const {
    std::string path = std::filesystem::path(item).lexically_normal();
    if (path.ends_with('/')) {
      path.pop_back();
    }
    const auto found = std::ranges::find(folders_, path, &Folder::path);
    return found != folders_.end() ? std::optional(*found) : std::nullopt;
  }

  /// The innermost warped folder that is the folder with these letters, or contains it. Of two
  /// spellings, the one with the newer manifest.
  [[nodiscard]] const Root* innermostRoot(const std::string& letters) const {
    const Root* innermost = nullptr;
    for (const Root& root : roots_) {
      if (letters.starts_with(root.folder.letters) &&
          (innermost == nullptr || root.folder.letters.size() > innermost->folder.letters.size())) {
        innermost = &root;
      }
    }
    return innermost;
  }

  std::mt19937 random_;
  std::string top_;
  std::filesystem::path sharedRoot_;
  std::vector<Folder> folders_;
  std::set<std::string> marked_;
  std::set<std::string> warped_;
  std::vector<Root> roots_;
};

/// A small number, because each tree needs six processes, and sanitizers make their start much
/// slower.
std::uint32_t treeCount() {
#ifdef VELMORA_TEST_WITH_SANITIZERS
  return randomTreeCount(40);
#else
  return randomTreeCount(100);
#endif
}

class AgreementTest : public ProcessTest {
 protected:
  /// Runs a program in the environment of the tree.
  Outcome runIn(const char* program, std::vector<std::string> arguments,
                const std::vector<std::string>& items) {
    arguments.insert(arguments.begin(), program);
    arguments.emplace_back("--");
    arguments.insert(arguments.end(), items.begin(), items.end());
    Command complete = command;
    complete.arguments = std::move(arguments);
    return process::run(complete);
  }

  void expectAgreement(const std::string& action, const std::vector<std::string>& checkOptions,
                       const std::vector<std::string>& items, const std::vector<Answer>& expected) {
    const Outcome outcome =
        runIn(VELMORA_TEST_INSPECT_PROGRAM, {"explain", action, "--json"}, items);
    std::vector<Answer> answers;
    for (const JSONLine& line : jsonLines(outcome.output)) {
      answers.push_back(
          {.isAccepted = line.flag("/accepted"),
           .reason = line.text("/reason"),
           .root = line.isNull("/root") ? std::nullopt : std::optional(line.text("/root"))});
    }
    EXPECT_EQ(answers, expected);
    const Outcome ofAll = runIn(VELMORA_TEST_PROGRAM, checkOptions, items);
    EXPECT_EQ(ofAll.exitStatus, std::ranges::any_of(expected, &Answer::isAccepted) ? 0 : 1);
    const Outcome ofTheFirst = runIn(VELMORA_TEST_PROGRAM, checkOptions, {items.front()});
    EXPECT_EQ(ofTheFirst.exitStatus, expected.front().isAccepted ? 0 : 1);
    EXPECT_EQ(ofAll.error + ofTheFirst.error, "");
  }

  void expectAgreementOnTrees(std::uint32_t firstSeed, std::uint32_t endSeed) {
    ASSERT_LT(firstSeed, endSeed);
    for (std::uint32_t seed = firstSeed; seed < endSeed; ++seed) {
      SCOPED_TRACE("tree " + std::to_string(seed));
      const std::filesystem::path top = home.path() / "tree";
      RandomTree tree(seed, top, home.container() / "Warp");
      const std::vector<std::string> items = tree.items();
      std::vector<Answer> forWarp;
      std::vector<Answer> forRestore;
      for (const std::string& item : items) {
        forWarp.push_back(tree.expectedForWarp(item));
        forRestore.push_back(tree.expectedForRestore(item));
      }
      expectAgreement("--warp", {"--check"}, items, forWarp);
      expectAgreement("--restore", {"--check", "--restore"}, items, forRestore);
      ASSERT_FALSE(HasFailure());
      std::filesystem::remove_all(top);
      std::filesystem::remove_all(home.container());
    }
  }
};

// Two tests, because the test runner can run them at the same time.
TEST_F(AgreementTest, holdsOnRandomTrees) { expectAgreementOnTrees(0, treeCount() / 2); }

TEST_F(AgreementTest, holdsOnOtherRandomTrees) {
  expectAgreementOnTrees(treeCount() / 2, treeCount());
}

}  // namespace

}  // namespace velmora::process
