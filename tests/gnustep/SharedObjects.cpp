#include "tests/gnustep/SharedObjects.h"

#include <dispatch/dispatch.h>

#include <cstddef>
#include <cstdlib>
#include <deque>
#include <mutex>
#include <optional>
#include <utility>

namespace velmora {

namespace {

struct Task {
  dispatch_function_t work = nullptr;
  void* context = nullptr;
};

/// Allocates without operator new, which a test may let fail. The real dispatch_async_f never
/// throws.
template <class Element>
struct MallocAllocator {
  // NOLINTNEXTLINE(readability-identifier-naming): the standard requires this name of allocators.
  using value_type = Element;

  MallocAllocator() = default;
  template <class Other>
  MallocAllocator(const MallocAllocator<Other>&) {}

  Element* allocate(std::size_t count) {
    void* const memory = std::malloc(count * sizeof(Element));
    return memory != nullptr ? static_cast<Element*>(memory) : (std::abort(), nullptr);
  }
  void deallocate(Element* elements, std::size_t) { std::free(elements); }

  bool operator==(const MallocAllocator&) const = default;
};

struct State {
  SharedObjects objects;

  std::mutex mutex;
  /// Any thread adds tasks, so the mutex guards them.
  std::deque<Task, MallocAllocator<Task>> tasks;
  std::vector<std::string> loggedLines;
};

State& state() {
  static State instance;
  return instance;
}

std::optional<Task> nextTask() {
  const std::lock_guard lock(state().mutex);
  if (state().tasks.empty()) {
    return std::nullopt;
  }
  const Task task = state().tasks.front();
  state().tasks.pop_front();
  return task;
}

}  // namespace

SharedObjects& sharedObjects() { return state().objects; }

std::size_t runMainQueue() {
  std::size_t count = 0;
  while (const std::optional<Task> task = nextTask()) {
    task->work(task->context);
    ++count;
  }
  return count;
}

std::vector<std::string> loggedLines() {
  const std::lock_guard lock(state().mutex);
  return state().loggedLines;
}

void resetSharedObjects() {
  state().objects = {};
  const std::lock_guard lock(state().mutex);
  state().tasks.clear();
  state().loggedLines.clear();
}

void recordLoggedLine(std::string line) {
  const std::lock_guard lock(state().mutex);
  state().loggedLines.push_back(std::move(line));
}

}  // namespace velmora

struct dispatch_queue_s {};

dispatch_queue_main_t dispatch_get_main_queue() {
  static dispatch_queue_s queue;
  return &queue;
}

void dispatch_async_f(dispatch_queue_t queue, void* context, dispatch_function_t work) {
  if (queue != dispatch_get_main_queue()) {
    std::abort();
  }
  const std::lock_guard lock(velmora::state().mutex);
  velmora::state().tasks.push_back({work, context});
}
