// What the tests hold the program's doings against, read and written here without its code.
#pragma once

#include <chrono>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace velmora::process {

/// The content of a request file.
struct Request {
  std::string action;
  std::string createdAt;
  std::vector<std::string> folderPaths;
};

/// Reads a whole request. Throws std::runtime_error unless it is a JSON object of exactly the three
/// keys, in their order and of their types, with at least one path.
Request parseRequest(const std::string& json);

/// Whether `text` has the form of `pattern`, in which "9" stands for a digit, "H" for an upper-case
/// hexadecimal digit and "V" for the variant digit of a UUID; all else for itself.
bool hasForm(std::string_view text, std::string_view pattern);

inline constexpr std::string_view requestNameForm = "HHHHHHHH-HHHH-4HHH-VHHH-HHHHHHHHHHHH.json";
inline constexpr std::string_view momentForm = "9999-99-99T99:99:99Z";

/// The present second as requests write it. Such texts sort by time.
std::string currentMoment();

/// The keys of the messages that the program shows.
inline constexpr std::string_view chooseWarpFolders =
    "consumer.finder-service.error.choose-warp-folders";
inline constexpr std::string_view chooseWarpedItem =
    "consumer.finder-service.error.choose-warped-item";
inline constexpr std::string_view warpHandoffFailed =
    "consumer.finder-service.error.warp-handoff-failed";
inline constexpr std::string_view restoreHandoffFailed =
    "consumer.finder-service.error.restore-handoff-failed";

/// The message of a language, as its table in the source tree has it. Throws std::runtime_error
/// when it has none.
std::string message(std::string_view language, std::string_view key);

/// The names in a directory, sorted.
std::vector<std::string> namesIn(const std::filesystem::path& directory);

/// Every occurrence of `placeholder` replaced.
std::string substituted(std::string text, std::string_view placeholder, std::string_view value);

}  // namespace velmora::process
