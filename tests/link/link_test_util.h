#pragma once

#include "emulated_radio.h"
#include "radio_image.h"
#include "virtual_link.h"

#include <QtGlobal>
#include <vector>

namespace zr310::test {

// A memory whose every byte tells its address apart from its neighbours'.
inline EmulatedRadio::Memory patternedMemory(int seed) {
    EmulatedRadio::Memory memory{};
    for (int a = 0; a < EmulatedRadio::kMemorySize; ++a)
        memory[a] = static_cast<std::uint8_t>((a * 7 + seed) & 0xFF);
    return memory;
}

inline RadioImage patternedImage(int seed) {
    return RadioImage::fromRadioOrder(patternedMemory(seed));
}

// Radio addresses of the block packets ("R" or "W" with length 8) sent.
inline std::vector<int> blockAddressesSent(const VirtualLink& link) {
    std::vector<int> addresses;
    for (const auto& s : link.sent()) {
        const bool block = (s.bytes.size() == 4 && s.bytes[0] == 'R') ||
                           (s.bytes.size() == 12 && s.bytes[0] == 'W');
        if (block)
            addresses.push_back(s.bytes[1] * 256 + s.bytes[2]);
    }
    return addresses;
}

inline std::vector<int> addressRange(int first, int last) {
    std::vector<int> addresses;
    for (int a = first; a <= last; a += 8)
        addresses.push_back(a);
    return addresses;
}

} // namespace zr310::test
