// What a kept error says.
#pragma once

#include <exception>
#include <string>

namespace velmora {

/// The message of a std::exception; "none" where there is none.
inline std::string messageOf(const std::exception_ptr& fault) {
  if (!fault) {
    return "none";
  }
  try {
    std::rethrow_exception(fault);
  } catch (const std::exception& error) {
    return error.what();
  }
}

}  // namespace velmora
