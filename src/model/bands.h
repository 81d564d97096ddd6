#pragma once

#include "frequency.h"
#include "radio_image.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zr310 {

struct Band {
    std::string_view text; // the entry of the band list, the same in both languages
    std::uint8_t code;     // the byte at 0x15A
    BandLimits limits;
};

inline constexpr std::array<Band, 10> kBands{{
    {"136 - 150MHz", 0x01, {136, 150}},
    {"150 - 174MHz", 0x00, {150, 174}},
    {"136 - 174MHz", 0x52, {136, 174}},
    {"245 - 246MHz", 0x53, {245, 246}},
    {"350 - 390MHz", 0x54, {350, 390}},
    {"400 - 430MHz", 0x07, {400, 430}},
    {"430 - 450MHz", 0x20, {430, 450}},
    {"450 - 470MHz", 0x06, {450, 470}},
    {"400 - 470MHz", 0x58, {400, 470}},
    {"465 - 520MHz", 0x59, {465, 520}},
}};

inline constexpr std::size_t kBandCodeOffset = 0x15A;
inline constexpr int kFallbackBandIndex = 7; // "450 - 470MHz"

// The band list index for the image's band code; unknown codes give 7.
int bandIndexFromImage(const RadioImage& image);
// The band of that index.
const Band& bandOfImage(const RadioImage& image);
void setBand(RadioImage& image, int bandIndex);

std::optional<int> bandIndexOfText(std::string_view text);

// "136.00000～150.00000 MHz" for a band list text; empty for an unknown text.
std::string bandRangeText(std::string_view bandText);

// The limits of a band list text; {0, 0} for an unknown text.
BandLimits bandLimitsOfText(std::string_view bandText);

} // namespace zr310
