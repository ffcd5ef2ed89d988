// The result of file operations for a user without root's rights.
#pragma once

#include <sys/types.h>
#include <sys/wait.h>
#include <unistd.h>

#include <stdexcept>

namespace velmora {

/// The result of `operation` in a child process. A child of root becomes the user nobody, because
/// permissions do not restrict root. The result must be from 0 to 253, to fit an exit status.
template <class Operation>
int resultForOrdinaryUser(Operation operation) {
  constexpr uid_t nobody = 65534;
  constexpr int notNobody = 255;
  constexpr int failed = 254;
  const pid_t child = ::fork();
  if (child == 0) {
    // No exception may leave the child, because the child would continue as a second test program.
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
