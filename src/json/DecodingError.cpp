#include "json/DecodingError.h"

#include <utility>

namespace velmora {

std::string_view name(DecodingErrorKind kind) {
  switch (kind) {
    case DecodingErrorKind::keyNotFound:
      return "keyNotFound";
    case DecodingErrorKind::valueNotFound:
      return "valueNotFound";
    case DecodingErrorKind::typeMismatch:
      return "typeMismatch";
    case DecodingErrorKind::dataCorrupted:
      break;
  }
  return "dataCorrupted";
}

void DecodingError::prependToCodingPath(CodingKey key) {
  codingPath_.insert(codingPath_.begin(), std::move(key));
}

}  // namespace velmora
