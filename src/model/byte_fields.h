#pragma once

#include <cstdint>

namespace zr310 {

// Bits 0..7 and 8..15 of a 16-bit field the radio stores low byte first.
constexpr std::uint8_t lowByte(int value) {
    return static_cast<std::uint8_t>(value & 0xFF);
}
constexpr std::uint8_t highByte(int value) {
    return static_cast<std::uint8_t>((value >> 8) & 0xFF);
}

// `byte` with the bits of `mask` taken from `bits`, the others kept.
constexpr std::uint8_t withBits(std::uint8_t byte, std::uint8_t mask, std::uint8_t bits) {
    return static_cast<std::uint8_t>((byte & ~mask) | (bits & mask));
}

} // namespace zr310
