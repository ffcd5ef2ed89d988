#include "warpshared/rules/OriginalFolder.h"

#include "text/Characters.h"
#include "text/UTF8.h"

namespace velmora::internal {

namespace {

constexpr char separator = '/';

/// The beginning of `path` up to and with the last separator among its first `length` bytes.
std::string_view folderIn(std::string_view path, std::size_t length) {
  return path.substr(0, path.substr(0, length).rfind(separator) + 1);
}

}  // namespace

OriginalFolder::OriginalFolder(TextView path) : path_(path), prefix_(path.view()) {
  if (!prefix_.ends_with(separator)) {
    prefix_ += separator;
  }
}

bool OriginalFolder::owns(TextView path) const {
  return hasCharacterPrefix(path, prefix_) || path == path_;
}

bool CommonAncestor::add(std::string_view path) {
  if (prefix_.empty()) {
    prefix_ = folderIn(path, path.size());
  } else if (!path.starts_with(prefix_)) {
    const std::string_view shorter = folderIn(path, commonPrefixLength(path, prefix_));
    // After the new end, all earlier paths have the bytes of the old prefix.
    if (!isCharacterBoundaryAfterASCII(prefix_, shorter.size())) {
      return false;
    }
    prefix_.resize(shorter.size());
  }
  return isCharacterBoundaryAfterASCII(path, prefix_.size());
}

bool CommonAncestor::isBelow(const OriginalFolder& folder) const {
  return prefix_.empty() || folder.owns(prefix_);
}

}  // namespace velmora::internal
