// Libraries that are loaded when they are first needed, rather than at the start of the program.
#pragma once

namespace velmora {

/// The address of something in a library; becomes a pointer to whatever function it is.
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

/// A library in this process. It stays loaded to the end of the process, because it may have
/// started threads that nobody waits for.
class DynamicLibrary {
 public:
  /// Looks for the library of this name where the system looks for those of a program. Throws
  /// PlatformError with ELIBACC and the system's words when there is none that can be loaded.
  explicit DynamicLibrary(const char* name);

  /// A function of the library, or of those that it was linked with. Throws like the constructor
  /// when there is none. To be taken as a pointer of the type that the function really has.
  [[nodiscard]] DynamicSymbol function(const char* name) const;

 private:
  void* handle_;
};

}  // namespace velmora
