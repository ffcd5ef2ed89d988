// What the file system allows a user whom permissions hold back.
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace velmora {

/// The result of `operation` in a child process, which becomes the user nobody when this one is
/// root's, because root may do everything. It must be from 0 to 253, to fit an exit status.
template <class Operation>
int resultForOrdinaryUser(Operation operation) {
  constexpr uid_t nobody = 65534;
  constexpr int notNobody = 255;
  constexpr int failed = 254;
  const pid_t child = ::fork();
  if (child == 0) {
    // Nothing may leave the child: it would go on as a second test program.
    try {
      ::_exit(::geteuid() == 0 && ::setuid(nobody) != 0 ? notNobody : operation());
    } catch (...) {
      ::_exit(failed);
    }
  }
  int status = 0;
  if (child < 0 || ::waitpid(child, &status, 0) != child || !WIFEXITED(status) ||
      WEXITSTATUS(status) >= failed) {
    throw std::runtime_error("no result for an ordinary user");
  }
  return WEXITSTATUS(status);
}

}  // namespace velmora
