#include "platform/posix/RandomIdentifierSource.h"

#include "text/Hexadecimal.h"

#include <array>
#include <cstdint>
#include <random>

namespace velmora {

namespace {

using UUIDBytes = std::array<std::uint8_t, 16>;

UUIDBytes randomUUIDBytes() {
  std::random_device system;
  std::uniform_int_distribution<unsigned> byte(0, 0xFF);
  UUIDBytes bytes{};
  for (std::uint8_t& value : bytes) {
    value = static_cast<std::uint8_t>(byte(system));
  }
  // RFC 4122, 4.4: the version in the upper half of byte 6, the variant in the top of byte 8.
  bytes[6] = static_cast<std::uint8_t>((bytes[6] & 0x0F) | 0x40);
  bytes[8] = static_cast<std::uint8_t>((bytes[8] & 0x3F) | 0x80);
  return bytes;
}

}  // namespace

std::string RandomIdentifierSource::uuid() {
  std::string text;
  for (const std::uint8_t byte : randomUUIDBytes()) {
    if (const std::size_t length = text.size();
        length == 8 || length == 13 || length == 18 || length == 23) {
      text += '-';
    }
    internal::appendHexByte(text, byte, internal::upperCaseHexDigits);
  }
  return text;
}

}  // namespace velmora
