// An address is "transport:key=value,key=value", and ";" separates alternatives (D-Bus
// Specification, "Server Addresses"). "%" and two digits stand for a byte of a value.
#include "platform/linux/SessionBusAddress.h"

#include "platform/linux/Environment.h"
#include "platform/linux/SeparatedList.h"
#include "text/Hexadecimal.h"

#include <optional>
#include <string_view>
#include <utility>

namespace velmora {
namespace {

/// None when a "%" has no two digits.
std::optional<std::string> unescaped(std::string_view value) {
  std::string result;
  while (!value.empty()) {
    if (value.front() != '%') {
      result += value.front();
      value.remove_prefix(1);
      continue;
    }
    const std::optional<char> byte = internal::percentDecodedByte(value);
    if (!byte) {
      return std::nullopt;
    }
    result += *byte;
    value.remove_prefix(std::string_view("%00").size());
  }
  return result;
}

/// None for another transport or an address that is not valid.
std::optional<std::string> socketAt(std::string_view address) {
  if (takePart(address, ':') != "unix") {
    return std::nullopt;
  }
  while (!address.empty()) {
    std::string_view value = takePart(address, ',');
    const std::string_view key = takePart(value, '=');
    if ((key == "path" || key == "abstract") && !value.empty()) {
      std::optional<std::string> name = unescaped(value);
      if (name && key == "abstract") {
        name->insert(name->begin(), '\0');
      }
      return name;
    }
  }
  return std::nullopt;
}

}  // namespace

std::vector<std::string> sessionBusSockets(const Environment& environment) {
  std::string_view addresses = environment.variable(sessionBusAddressVariable).value_or("");
  std::vector<std::string> sockets;
  if (addresses.empty()) {
    if (const auto runtimeDirectory = environment.absolutePath("XDG_RUNTIME_DIR")) {
      sockets.push_back(std::string(*runtimeDirectory) + "/bus");
    }
  }
  while (!addresses.empty()) {
    if (std::optional<std::string> socket = socketAt(takePart(addresses, ';'))) {
      sockets.push_back(*std::move(socket));
    }
  }
  return sockets;
}

}  // namespace velmora
