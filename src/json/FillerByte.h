// What JSONReader leaves where a string began before its escapes were resolved.
#pragma once

namespace velmora {

/// A byte that no UTF-8 holds.
inline constexpr char fillerByte = '\xFF';

}  // namespace velmora
