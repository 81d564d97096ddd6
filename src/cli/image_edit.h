#pragma once

#include "radio_image.h"

#include <string_view>

namespace zr310 {

// Applies one KEY=VALUE edit of `zr310-cli set` through the model's encoders.
// Frequencies are clamped and snapped to the image's band, as the frequency
// box does. Throws UsageError naming the key or value it cannot take; the
// image is then unchanged.
void applyImageEdit(RadioImage& image, std::string_view key, std::string_view value);

} // namespace zr310
