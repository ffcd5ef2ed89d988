// Ownership of Objective-C objects by scope, because the project is compiled without automatic
// reference counting. For Objective-C++ only.
#pragma once

#import <Foundation/Foundation.h>

#include <utility>

namespace velmora {

/// A share in the ownership of an object, or of nil.
template <class Object>
class ObjectHolder {
 public:
  /// Takes over a share that the caller has, as `alloc`, `copy` and `new` give it.
  static ObjectHolder adopting(Object* object) { return ObjectHolder(object); }

  /// Takes a share of its own.
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
