// Another process, which reports whether it could lock a file.
#pragma once

#include "platform/posix/FileDescriptor.h"

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <stdexcept>
#include <string>

namespace velmora {

/// Locks or unlocks a whole open file, without waiting. `type` is F_WRLCK or F_UNLCK.
inline bool setRecordLock(int fileDescriptor, short type) {
  struct flock wholeFile {};
  wholeFile.l_type = type;
  wholeFile.l_whence = SEEK_SET;
  return ::fcntl(fileDescriptor, F_SETLK, &wholeFile) == 0;
}

/// Must be constructed before the test starts a thread, because it forks.
class LockProbe {
 public:
  explicit LockProbe(const std::string& path) {
    Pipe questions;
    Pipe answers;
    process_ = ::fork();
    if (process_ < 0) {
      throw std::runtime_error("no process to probe with");
    }
    if (process_ == 0) {
      // The child closes its copy of the writing end; otherwise it would never see the end of the
      // pipe.
      questions.end = FileDescriptor::adopt(-1);
      serve(path, questions.beginning.get(), answers.end.get());
    }
    question_ = std::move(questions.end);
    answer_ = std::move(answers.beginning);
  }
  LockProbe(const LockProbe&) = delete;
  LockProbe& operator=(const LockProbe&) = delete;
  ~LockProbe() {
    question_ = FileDescriptor::adopt(-1);
    ::waitpid(process_, nullptr, 0);
  }

  /// Whether the other process can lock the file now. It releases the lock at once.
  bool canLock() {
    char answer = '?';
    if (::write(question_.get(), &answer, 1) != 1 || ::read(answer_.get(), &answer, 1) != 1 ||
        (answer != yes && answer != no)) {
      throw std::runtime_error("no answer from the probing process");
    }
    return answer == yes;
  }

 private:
  static constexpr char yes = 'y';
  static constexpr char no = 'n';
  static constexpr char failed = 'f';

  struct Pipe {
    Pipe() {
      int ends[2];
      if (::pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
      }
      beginning = FileDescriptor::adopt(ends[0]);
      end = FileDescriptor::adopt(ends[1]);
    }

    FileDescriptor beginning = FileDescriptor::adopt(-1);
    FileDescriptor end = FileDescriptor::adopt(-1);
  };

  static char tryLock(const std::string& path) {
    const FileDescriptor file = FileDescriptor::adopt(::open(path.c_str(), O_RDWR | O_CLOEXEC));
    if (!file.isOpen()) {
      return failed;
    }
    if (setRecordLock(file.get(), F_WRLCK)) {
      return yes;
    }
    return errno == EACCES || errno == EAGAIN ? no : failed;
  }

  [[noreturn]] static void serve(const std::string& path, int questions, int answers) {
    char question = 0;
    while (::read(questions, &question, 1) == 1) {
      const char answer = tryLock(path);
      if (::write(answers, &answer, 1) != 1) {
        break;
      }
    }
    ::_exit(0);
  }

  pid_t process_ = -1;
  FileDescriptor question_ = FileDescriptor::adopt(-1);
  FileDescriptor answer_ = FileDescriptor::adopt(-1);
};

}  // namespace velmora
