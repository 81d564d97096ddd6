#pragma once

#include "emulated_radio.h"
#include "radio_image.h"
#include "sizes.h"
#include "virtual_link.h"

#include <vector>

namespace zr310::test {

// A memory whose every byte tells its address apart from its neighbours'.
inline EmulatedRadio::Memory patternedMemory(int seed) {
    EmulatedRadio::Memory memory{};
    for (int a = 0; a < EmulatedRadio::kMemorySize; ++a)
        memory[toIndex(a)] = static_cast<std::uint8_t>((a * 7 + seed) & 0xFF);
    return memory;
}

inline RadioImage patternedImage(int seed) {
    return RadioImage::fromRadioOrder(patternedMemory(seed));
}

// Block addresses first, first + 8, ..., last.
inline std::vector<int> addressRange(int first, int last) {
    std::vector<int> addresses;
    for (int a = first; a <= last; a += 8)
        addresses.push_back(a);
    return addresses;
}

// The 38 blocks a write sends: the channels, four option blocks, the date.
inline std::vector<int> writeBlocks() {
    auto blocks = addressRange(0x000, 0x0F8);
    blocks.insert(blocks.end(), {0x2B0, 0x2B8, 0x2D0, 0x2D8, 0x3C0, 0x3C8});
    return blocks;
}

} // namespace zr310::test
