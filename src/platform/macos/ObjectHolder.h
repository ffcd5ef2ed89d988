// Scoped ownership of Objective-C objects, because the project is compiled without automatic
// reference counting. For Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <utility>

namespace velmora {

/// A reference to an object, with shared ownership; may be nil.
template <class Object>
class ObjectHolder {
 public:
  /// Takes over a reference that the caller owns, as returned by `alloc`, `copy` and `new`.
  static ObjectHolder adopting(Object* object) { return ObjectHolder(object); }

  /// Retains `object`, and leaves the caller's ownership unchanged.
  static ObjectHolder retaining(Object* object) { return ObjectHolder([object retain]); }

  ObjectHolder(const ObjectHolder& other) : object_([other.object_ retain]) {}
  ObjectHolder(ObjectHolder&& other) noexcept : object_(std::exchange(other.object_, nil)) {}
  ObjectHolder& operator=(const ObjectHolder& other) {
    ObjectHolder copy(other);
    std::swap(object_, copy.object_);
    return *this;
  }
  ObjectHolder& operator=(ObjectHolder&& other) noexcept {
    std::swap(object_, other.object_);
    return *this;
  }
  ~ObjectHolder() { [object_ release]; }

  [[nodiscard]] Object* get() const { return object_; }

 private:
  explicit ObjectHolder(Object* owned) : object_(owned) {}

  Object* object_;
};

}  // namespace velmora
