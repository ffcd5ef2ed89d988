#include "tests/gnustep/ProcessEnvironment.h"

#include <stdlib.h>

#include <string>

namespace velmora {

namespace {

/// GNUstep reads this text in place of the system's configuration file. Settings that it lacks keep
/// their built-in values. It names no directory of tools, because a process would otherwise start a
/// notification daemon that nobody ends.
std::string configuration(const ScratchDirectory& directory) {
  std::string text =
      // The user's own file would override this one.
      "GNUSTEP_USER_CONFIG_FILE=\n"
      "GNUSTEP_USER_DEFAULTS_DIR=" +
      directory.path("Defaults") + "\n";
  for (const char* domain : {"SYSTEM", "NETWORK", "LOCAL"}) {
    for (const char* kind : {"TOOLS", "ADMIN_TOOLS"}) {
      text += "GNUSTEP_" + std::string(domain) + "_" + kind + "=" + directory.path("none") + "\n";
    }
  }
  for (const char* kind : {"APPS", "ADMIN_APPS", "WEB_APPS", "TOOLS", "ADMIN_TOOLS", "LIBRARY",
                           "HEADERS", "LIBRARIES", "DOC", "DOC_MAN", "DOC_INFO"}) {
    text += "GNUSTEP_USER_DIR_" + std::string(kind) + "=" + directory.path(kind) + "\n";
  }
  return text;
}

}  // namespace

ProcessEnvironment::ProcessEnvironment() {
  ::setenv("GNUSTEP_CONFIG_FILE",
           directory_.write("GNUstep.conf", configuration(directory_)).c_str(), 1);
  // The directory of sockets. With a shared directory, all processes of the user would share them.
  ::setenv("TEMP", directory_.path().c_str(), 1);
  // GNUstep reads strings files in the encoding of the locale.
  ::setenv("LC_ALL", "C.UTF-8", 1);
}

process::Environment gnustepEnvironment() {
  process::Environment environment = process::helperEnvironment();
  for (const char* name : {"GNUSTEP_CONFIG_FILE", "TEMP", "LC_ALL"}) {
    environment[name] = ::getenv(name);
  }
  return environment;
}

}  // namespace velmora
