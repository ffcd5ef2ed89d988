#include "text/LexicalPath.h"

#include <algorithm>
#include <utility>

namespace velmora {
namespace {

constexpr char separator = '/';

/// Builds a standardised path, one component at a time.
class PathBuilder {
 public:
  /// The result is never longer than `original`.
  explicit PathBuilder(std::string_view original) : isAbsolute_(original.front() == separator) {
    path_.reserve(original.size());
  }

  void add(std::string_view component) {
    if (component.empty() || component == ".") {
      return;
    }
    if (component == "..") {
      goUp();
      return;
    }
    append(component);
  }

  std::string finish() && {
    if (path_.empty()) {
      return isAbsolute_ ? "/" : ".";
    }
    return std::move(path_);
  }

 private:
  void append(std::string_view component) {
    if (isAbsolute_ || !path_.empty()) {
      path_ += separator;
    }
    path_ += component;
  }

  void goUp() {
    if (path_.size() > unresolved_) {
      // The first component of a relative path has no separator before it.
      const std::size_t last = path_.rfind(separator);
      path_.resize(last == std::string::npos ? 0 : last);
      return;
    }
    if (!isAbsolute_) {
      append("..");
      unresolved_ = path_.size();
    }
  }

  const bool isAbsolute_;
  std::string path_;
  /// The length of the leading ".." components of a relative path, which no later ".." removes.
  std::size_t unresolved_ = 0;
};

}  // namespace

std::string lexicallyStandardized(std::string_view path) {
  if (path.empty()) {
    return {};
  }
  PathBuilder builder(path);
  while (!path.empty()) {
    const std::size_t end = std::min(path.find(separator), path.size());
    builder.add(path.substr(0, end));
    path.remove_prefix(std::min(end + 1, path.size()));
  }
  return std::move(builder).finish();
}

std::string appendingPathComponent(std::string_view directory, std::string_view component) {
  std::string path;
  path.reserve(directory.size() + 1 + component.size());
  path += directory;
  if (!directory.empty() && directory.back() != separator) {
    path += separator;
  }
  path += component;
  return path;
}

}  // namespace velmora
