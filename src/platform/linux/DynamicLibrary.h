// Libraries that are loaded at their first use instead of at the start of the program.
#pragma once

namespace velmora {

/// The address of a function in a library; converts to a pointer to any function type.
class DynamicSymbol {
 public:
  explicit DynamicSymbol(void* address) : address_(address) {}

  // NOLINTNEXTLINE(google-explicit-constructor): the pointer that it initializes names the type.
  template <class Function>
  operator Function*() const {
    return reinterpret_cast<Function*>(address_);
  }

 private:
  void* address_;
};

/// A loaded library. It stays loaded until the process ends, because it may have started threads
/// that nobody joins.
class DynamicLibrary {
 public:
  /// Loads the library `name`, which the system searches like the libraries of a program. Throws
  /// PlatformError with ELIBACC and the system's message when it cannot be loaded.
  explicit DynamicLibrary(const char* name);

  /// A function of the library, or of the libraries that it was linked with. Throws like the
  /// constructor when there is none. The caller must convert the result to the function's real
  /// type.
  [[nodiscard]] DynamicSymbol function(const char* name) const;

 private:
  void* handle_;
};

}  // namespace velmora
