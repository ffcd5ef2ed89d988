#include "json/EncodingError.h"

#include <utility>

namespace velmora {

void EncodingError::prependToCodingPath(CodingKey key) {
  codingPath_.insert(codingPath_.begin(), std::move(key));
}

}  // namespace velmora
