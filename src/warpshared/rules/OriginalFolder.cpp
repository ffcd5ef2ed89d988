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
    prefix_ = path;
    if (!path.ends_with(separator)) {
      prefix_ += separator;
    }
    return true;
  }
  if (!path.starts_with(prefix_)) {
    const std::size_t common = commonPrefixLength(path, prefix_);
    const bool isFolderOfOthers = common == path.size() && prefix_[common] == separator;
    const std::size_t length = isFolderOfOthers ? common + 1 : folderIn(path, common).size();
    // After the new end, all earlier paths have the bytes of the old prefix.
    if (!isCharacterBoundaryAfterASCII(prefix_, length)) {
      return false;
    }
    prefix_.resize(length);
    if (isFolderOfOthers) {
      return true;
    }
  }
  return isCharacterBoundaryAfterASCII(path, prefix_.size());
}

bool CommonAncestor::isBelow(const OriginalFolder& folder) const {
  return prefix_.empty() || folder.owns(prefix_);
}

}  // namespace velmora::internal
