#include "platform/linux/DynamicLibrary.h"

#include "platform/PlatformError.h"

#include <dlfcn.h>

#include <cerrno>

namespace velmora {
namespace {

/// Returns `address`. Throws the loader's message as an error when `address` is null.
void* found(void* address) {
  if (address == nullptr) {
    const char* reason = dlerror();
    throw PlatformError(posixErrorDomain, ELIBACC, reason == nullptr ? "" : reason);
  }
  return address;
}

}  // namespace

/// RTLD_LAZY binds the library's own calls of other libraries one by one, as in a program that is
/// linked with it.
DynamicLibrary::DynamicLibrary(const char* name) : handle_(found(dlopen(name, RTLD_LAZY))) {}

DynamicSymbol DynamicLibrary::function(const char* name) const {
  return DynamicSymbol(found(dlsym(handle_, name)));
}

}  // namespace velmora
