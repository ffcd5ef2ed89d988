#include "json/DecodingError.h"

#include <array>
#include <utility>

namespace velmora {

std::string_view name(DecodingErrorKind kind) {
  constexpr std::array<std::string_view, 4> names = {"keyNotFound", "valueNotFound", "typeMismatch",
                                                     "dataCorrupted"};
  return names[static_cast<std::size_t>(kind)];
}

void DecodingError::prependToCodingPath(CodingKey key) {
  codingPath_.insert(codingPath_.begin(), std::move(key));
}

}  // namespace velmora
