// The message of a stored exception.
#pragma once

#include <exception>
#include <string>

namespace velmora {

/// The message of a std::exception; "none" for a null pointer.
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
