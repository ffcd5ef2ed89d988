#include "platform/macos/ExceptionBarrier.h"

namespace velmora {

bool attempt(void (*call)(void* operation), void* operation) noexcept {
  try {
    call(operation);
    return true;
  } catch (...) {
    return false;
  }
}

}  // namespace velmora
