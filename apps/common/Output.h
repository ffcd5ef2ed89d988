// Where answers go.
#pragma once

#include <stdexcept>
#include <string_view>

namespace velmora {

/// An answer could not be written: the rest of it is lost.
class OutputError : public std::runtime_error {
 public:
  explicit OutputError(int code);

  /// An `errno` value; EPIPE when the reader has gone.
  [[nodiscard]] int code() const { return code_; }

 private:
  int code_;
};

/// Writes to an open file, at once. SIGPIPE has to be ignored.
class Output {
 public:
  explicit Output(int fileDescriptor) : fileDescriptor_(fileDescriptor) {}

  /// All of `bytes`. Throws OutputError.
  void write(std::string_view bytes) const;

 private:
  int fileDescriptor_;
};

}  // namespace velmora
