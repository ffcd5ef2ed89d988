// Another implementation of a method of the system's classes, for as long as a test needs it. For
// Objective-C++ only.
#pragma once

#import <objc/runtime.h>

namespace velmora {

class MethodReplacement {
 public:
  /// `implementation` gets the receiver and the selector, and then what the method gets.
  template <class Implementation>
  MethodReplacement(Method method, Implementation* implementation)
      : method_(method),
        replaced_(method_setImplementation(method_, reinterpret_cast<IMP>(implementation))) {}
  MethodReplacement(const MethodReplacement&) = delete;
  MethodReplacement& operator=(const MethodReplacement&) = delete;
  ~MethodReplacement() { method_setImplementation(method_, replaced_); }

  /// The method as it is without the replacement.
  [[nodiscard]] IMP replaced() const { return replaced_; }

 private:
  Method method_;
  IMP replaced_;
};

}  // namespace velmora
