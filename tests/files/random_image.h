#pragma once

#include "radio_image.h"

#include <random>

namespace zr310 {

inline RadioImage randomImage(std::mt19937& rng) {
    RadioImage image;
    for (auto& byte : image.linear())
        byte = static_cast<std::uint8_t>(rng());
    return image;
}

} // namespace zr310
