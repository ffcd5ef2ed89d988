// The option --workers, which the programs have in common.
#pragma once

#include "common/UsageError.h"

#include <cstddef>
#include <optional>
#include <string>

namespace velmora {

/// What --help says of it.
[[nodiscard]] std::string workerOptionHelp();

/// The number that the option's value asks for: from 1 to mostWorkers (WorkerCount.h), in decimal
/// digits without anything around them or a zero before them. None for any other value.
[[nodiscard]] std::optional<std::size_t> workerCountIn(const std::string& value);

/// What is wrong with any other value.
[[nodiscard]] UsageError workerOptionFault(const std::string& value);

}  // namespace velmora
