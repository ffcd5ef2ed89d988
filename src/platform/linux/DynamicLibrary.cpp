#include "platform/linux/DynamicLibrary.h"

#include "platform/PlatformError.h"

#include <dlfcn.h>

#include <cerrno>

namespace velmora {
namespace {

/// What the loader has found, or its reason for having found nothing as an error.
void* found(void* address) {
  if (address == nullptr) {
    const char* reason = dlerror();
    throw PlatformError(posixErrorDomain, ELIBACC, reason == nullptr ? "" : reason);
  }
  return address;
}

}  // namespace

// Its own calls of other libraries are bound one by one, as in a program that is linked with it.
DynamicLibrary::DynamicLibrary(const char* name) : handle_(found(dlopen(name, RTLD_LAZY))) {}

DynamicSymbol DynamicLibrary::function(const char* name) const {
  return DynamicSymbol(found(dlsym(handle_, name)));
}

}  // namespace velmora
