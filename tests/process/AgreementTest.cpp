// The two programs agree with each other, and with a plain computation of what is warped, on random
// trees of folders: nested, restored, destroyed and corrupted Warps in every mixture.

#include "tests/fakes/WarpRecords.h"
#include "tests/process/InspectTest.h"

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

/// Two spellings of one name are one letter here; the letter is what the model compares.
struct Spelling {
  char letter;
  const char* name;
};

constexpr std::array<Spelling, 5> spellings = {
    {{'a', "a"}, {'b', "ab"}, {'c', "Photos 2025"}, {'e', "\u00e9"}, {'e', "e\u0301"}}};

struct Folder {
  std::string path;
  /// The letters of the names from the tree's root down.
  std::string letters;
};

/// A Warp that counts.
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

/// A random tree on disk, and what a person who made it would say of its folders.
class RandomTree {
 public:
  RandomTree(std::uint32_t seed, std::filesystem::path top, std::filesystem::path sharedRoot)
      : random_(seed), top_(std::move(top)), sharedRoot_(std::move(sharedRoot)) {
    std::filesystem::create_directories(sharedRoot_ / "ManifestMirror");
    makeFolders();
    makeWarps();
    makeStrays();
  }

  /// Paths to ask for: folders of the tree, files, what is missing, some in roundabout ways.
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
    const std::string path = std::filesystem::path(item).lexically_normal();
    const std::optional<Folder> folder = folderAt(path);
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
    const std::string path = std::filesystem::path(item).lexically_normal();
    const std::optional<Folder> folder = folderAt(path);
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
        case 0:  // restored: the marker is gone
          break;
        case 1:  // destroyed, by the one name or the other
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
        case 4:  // warped anew, by another Warp
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
      // A corrupted index counts as none: nothing is destroyed.
      bytes.pop_back();
      roots_.insert(roots_.end(), tombstoned.begin(), tombstoned.end());
    }
    // The newest first; of one instant, by the names of their files.
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

  [[nodiscard]] std::optional<Folder> folderAt(std::string path) const {
    if (path.ends_with('/')) {
      path.pop_back();
    }
    const auto found = std::ranges::find(folders_, path, &Folder::path);
    return found != folders_.end() ? std::optional(*found) : std::nullopt;
  }

  /// The innermost folder that counts as warped and is, or is around, the one with these letters.
  /// Of two spellings of one folder, the one whose manifest is newer.
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

constexpr int batchCount = 10;
#ifdef VELMORA_TEST_WITH_SANITIZERS
// Each tree takes six processes, whose start takes many times as long then.
constexpr int treesPerBatch = 20;
#else
constexpr int treesPerBatch = 100;
#endif

class AgreementTest : public ::testing::TestWithParam<int> {
 protected:
  /// Runs a program in the tree's surroundings.
  Outcome run(const char* program, std::vector<std::string> arguments,
              const std::vector<std::string>& items) {
    Command command;
    command.environment = home.environment();
    command.environment["VELMORA_GROUP_CONTAINER"] = container();
    command.arguments = {program};
    command.arguments.insert(command.arguments.end(), arguments.begin(), arguments.end());
    command.arguments.insert(command.arguments.end(), items.begin(), items.end());
    return process::run(command);
  }

  [[nodiscard]] std::string container() const { return (home.path() / "tree container").string(); }

  std::vector<Answer> explain(const char* action, const std::vector<std::string>& items) {
    const Outcome outcome =
        run(VELMORA_TEST_INSPECT_PROGRAM, {"explain", action, "--json", "--"}, items);
    std::vector<Answer> answers;
    for (const JSONLine& line : jsonLines(outcome.output)) {
      answers.push_back(
          {.isAccepted = line.flag("/accepted"),
           .reason = line.text("/reason"),
           .root = line.isNull("/root") ? std::nullopt : std::optional(line.text("/root"))});
    }
    return answers;
  }

  /// What --check says of the items together.
  bool check(const std::vector<std::string>& options, const std::vector<std::string>& items) {
    std::vector<std::string> arguments = {"--check"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    arguments.emplace_back("--");
    const Outcome outcome = run(VELMORA_TEST_PROGRAM, std::move(arguments), items);
    EXPECT_EQ(outcome.error, "");
    return outcome.exitStatus == 0;
  }

  void expectAgreement(const char* action, const std::vector<std::string>& checkOptions,
                       const std::vector<std::string>& items, const std::vector<Answer>& expected) {
    EXPECT_EQ(explain(action, items), expected);
    EXPECT_EQ(check(checkOptions, items), std::ranges::any_of(expected, &Answer::isAccepted));
    EXPECT_EQ(check(checkOptions, {items.front()}), expected.front().isAccepted);
  }

  ScratchHome home;
};

TEST_P(AgreementTest, holdsOnRandomTrees) {
  for (int number = 0; number < treesPerBatch; ++number) {
    const auto seed = static_cast<std::uint32_t>(GetParam() * treesPerBatch + number);
    const std::filesystem::path top = home.path() / "tree";
    RandomTree tree(seed, top, container() + "/Warp");
    const std::vector<std::string> items = tree.items();
    std::vector<Answer> forWarp;
    std::vector<Answer> forRestore;
    for (const std::string& item : items) {
      forWarp.push_back(tree.expectedForWarp(item));
      forRestore.push_back(tree.expectedForRestore(item));
    }
    expectAgreement("--warp", {}, items, forWarp);
    expectAgreement("--restore", {"--restore"}, items, forRestore);
    ASSERT_FALSE(HasFailure()) << "tree " << seed;
    std::filesystem::remove_all(top);
    std::filesystem::remove_all(container());
  }
}

INSTANTIATE_TEST_SUITE_P(Batches, AgreementTest, ::testing::Range(0, batchCount));

}  // namespace

}  // namespace velmora::process
