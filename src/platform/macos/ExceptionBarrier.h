// Stops exceptions between C++ and Objective-C. For C++ code that Objective-C calls, and for
// noexcept code that calls Objective-C.
//
// An exception of C++ must not pass through a block or a method of the system. An exception of the
// system's objects must not reach the end of a noexcept function. Both are caught here, in a C++
// source, because only there every Objective-C runtime allows both to be caught.
#pragma once

#include <memory>

namespace velmora {

enum class AttemptResult { succeeded, ranOutOfMemory, failed };

/// Calls `call(operation)` and returns the result of that. Drops any exception, of either language.
AttemptResult attempt(void (*call)(void* operation), void* operation) noexcept;

/// The same for any operation without arguments. Allocates nothing.
template <class Operation>
AttemptResult attempt(Operation operation) noexcept {
  return attempt([](void* erased) { (*static_cast<Operation*>(erased))(); },
                 std::addressof(operation));
}

}  // namespace velmora
