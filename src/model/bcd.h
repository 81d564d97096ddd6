#pragma once

#include <cstdint>

namespace zr310 {

// Two-digit packed BCD: high nibble tens, low nibble units. Nibbles above 9
// are taken arithmetically (0x1A reads as 20), as the radio's firmware does.
constexpr int bcdValue(std::uint8_t byte) {
    return (byte >> 4) * 10 + (byte & 0x0F);
}

// `value` must be 0..99.
constexpr std::uint8_t toBcd(int value) {
    return static_cast<std::uint8_t>(((value / 10) << 4) | (value % 10));
}

} // namespace zr310
