#pragma once

#include <cassert>
#include <cstddef>

namespace zr310 {

// Positions and counts are int here (channel and row numbers, columns,
// blocks, list items, widths), as the radio's tables and Qt count them;
// std::array, std::vector and strings take std::size_t. These two functions
// are where one becomes the other. Neither is ever negative.
constexpr std::size_t toIndex(int position) {
    assert(position >= 0);
    return static_cast<std::size_t>(position);
}
constexpr std::size_t toCount(int count) {
    assert(count >= 0);
    return static_cast<std::size_t>(count);
}

} // namespace zr310
