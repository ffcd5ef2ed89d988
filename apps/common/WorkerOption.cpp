#include "common/WorkerOption.h"

#include "resolution/WorkerCount.h"

#include <charconv>
#include <system_error>

namespace velmora {

namespace {

std::string range() { return "1 to " + std::to_string(mostWorkers); }

}  // namespace

std::string workerOptionHelp() {
  return "Read a large mirror of manifests, and many markers, by\n"
         "so many threads at most, " +
         range() + "; without it, as\nmany as suit the machine";
}

std::optional<std::size_t> workerCountIn(const std::string& value) {
  std::size_t count = 0;
  const char* const end = value.data() + value.size();
  const auto [rest, error] = std::from_chars(value.data(), end, count);
  const bool isNumber = error == std::errc() && rest == end && !value.starts_with('0');
  return isNumber && count <= mostWorkers ? std::optional(count) : std::nullopt;
}

UsageError workerOptionFault(const std::string& value) {
  if (value.empty()) {
    return {"--workers without a number"};
  }
  return usageErrorInOneLine("--workers takes a number from " + range() + ", not " + value);
}

}  // namespace velmora
