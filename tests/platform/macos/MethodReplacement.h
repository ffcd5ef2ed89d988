// Replaces a method of the system's classes during a test. For Objective-C++ only.
#pragma once

#import <objc/runtime.h>

namespace velmora {

class MethodReplacement {
 public:
  /// `implementation` gets the receiver, the selector, and the arguments of the method.
  template <class Implementation>
  MethodReplacement(Method method, Implementation* implementation)
      : method_(method),
        replaced_(method_setImplementation(method_, reinterpret_cast<IMP>(implementation))) {}
  MethodReplacement(const MethodReplacement&) = delete;
  MethodReplacement& operator=(const MethodReplacement&) = delete;
  ~MethodReplacement() { method_setImplementation(method_, replaced_); }

  /// The original implementation.
  [[nodiscard]] IMP replaced() const { return replaced_; }

 private:
  Method method_;
  IMP replaced_;
};

}  // namespace velmora
