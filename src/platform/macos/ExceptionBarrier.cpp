#include "platform/macos/ExceptionBarrier.h"

#include <new>

namespace velmora {

AttemptResult attempt(void (*call)(void* operation), void* operation) noexcept {
  try {
    call(operation);
    return AttemptResult::succeeded;
  } catch (const std::bad_alloc&) {
    return AttemptResult::ranOutOfMemory;
  } catch (...) {
    return AttemptResult::failed;
  }
}

}  // namespace velmora
