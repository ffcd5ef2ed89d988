// Where C++ is called by Objective-C, or promises never to throw while it calls Objective-C.
//
// An exception of C++ must not pass through a block or a method of the system, and one that the
// system's objects raise must not end a promise to bear every failure. Both stop here, in a file of
// C++, because only there every Objective-C runtime lets both be caught.
#pragma once

#include <memory>

namespace velmora {

enum class AttemptResult { succeeded, ranOutOfMemory, failed };

/// Calls `call(operation)`, and tells how that ended; what it threw, in either language, is
/// dropped.
AttemptResult attempt(void (*call)(void* operation), void* operation) noexcept;

/// The same for any operation without arguments. Allocates nothing.
template <class Operation>
AttemptResult attempt(Operation operation) noexcept {
  return attempt([](void* erased) { (*static_cast<Operation*>(erased))(); },
                 std::addressof(operation));
}

}  // namespace velmora
