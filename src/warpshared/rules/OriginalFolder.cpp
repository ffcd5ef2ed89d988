#include "warpshared/rules/OriginalFolder.h"

#include "text/Characters.h"

namespace velmora::internal {

namespace {

constexpr char separator = '/';

}  // namespace

OriginalFolder::OriginalFolder(TextView path) : path_(path), prefix_(path.view()) {
  if (!prefix_.ends_with(separator)) {
    prefix_ += separator;
  }
}

bool OriginalFolder::owns(TextView path) const {
  return hasCharacterPrefix(path, prefix_) || path == path_;
}

}  // namespace velmora::internal
