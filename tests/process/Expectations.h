// Expected results of the program, read and written without the program's code.
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

/// Reads a whole request. Throws std::runtime_error unless `json` is an object of exactly the three
/// keys, in order, with values of their types and at least one path.
Request parseRequest(const std::string& json);

/// Whether `text` has the form of `pattern`. In the pattern "9" is any digit, "H" any upper-case
/// hexadecimal digit, and "V" the variant digit of a UUID. Other characters match themselves.
bool hasForm(std::string_view text, std::string_view pattern);

inline constexpr std::string_view requestNameForm = "HHHHHHHH-HHHH-4HHH-VHHH-HHHHHHHHHHHH.json";
inline constexpr std::string_view momentForm = "9999-99-99T99:99:99Z";

/// The current second in the format of requests. Such texts sort by time.
std::string currentMoment();

/// The keys of the program's messages.
inline constexpr std::string_view chooseWarpFolders =
    "consumer.finder-service.error.choose-warp-folders";
inline constexpr std::string_view chooseWarpedItem =
    "consumer.finder-service.error.choose-warped-item";
inline constexpr std::string_view warpHandoffFailed =
    "consumer.finder-service.error.warp-handoff-failed";
inline constexpr std::string_view restoreHandoffFailed =
    "consumer.finder-service.error.restore-handoff-failed";

/// The message in a language, from the table in the source tree. Throws std::runtime_error when the
/// table has none.
std::string message(std::string_view language, std::string_view key);

/// The names in a directory, sorted.
std::vector<std::string> namesIn(const std::filesystem::path& directory);

/// `text` with every occurrence of `placeholder` replaced.
std::string substituted(std::string text, std::string_view placeholder, std::string_view value);

}  // namespace velmora::process
