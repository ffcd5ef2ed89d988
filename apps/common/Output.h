// Writes the answers of the programs.
#pragma once

#include <stdexcept>
#include <string_view>

namespace velmora {

/// An answer could not be written completely.
class OutputError : public std::runtime_error {
 public:
  explicit OutputError(int code);

  /// An `errno` value; EPIPE if the reader has gone.
  [[nodiscard]] int code() const { return code_; }

 private:
  int code_;
};

/// Writes to an open file, without a buffer. The process must ignore SIGPIPE.
class Output {
 public:
  explicit Output(int fileDescriptor) : fileDescriptor_(fileDescriptor) {}

  /// Writes all of `bytes`, and waits for a slow reader, also of a non-blocking file. Throws
  /// OutputError.
  void write(std::string_view bytes) const;

 private:
  int fileDescriptor_;
};

}  // namespace velmora
