#include "warpshared/rules/CommonAncestor.h"

#include "text/Characters.h"
#include "text/UTF8.h"
#include "warpshared/rules/OriginalFolder.h"

namespace velmora::internal {

namespace {

/// The beginning of `path` up to and with the last separator among its first `length` bytes.
std::string_view folderIn(std::string_view path, std::size_t length) {
  return path.substr(0, path.substr(0, length).rfind('/') + 1);
}

}  // namespace

bool CommonAncestor::add(std::string_view path) {
  if (prefix_.empty()) {
    prefix_ = folderIn(path, path.size());
  } else if (!path.starts_with(prefix_)) {
    const std::string_view shorter = folderIn(path, commonPrefixLength(path, prefix_));
    // Earlier paths go on after the new end as the old prefix does.
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
