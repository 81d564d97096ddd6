#pragma once

#include "radio_image.h"

#include <string>
#include <vector>

namespace zr310 {

// One difference between two images: a key as `zr310-cli set` names it
// ("ch3.rx_freq", "CboSQ", "tuning.squelch9", "user_text"), or "radio_id",
// "write_date", or "byte 0x3A5" for bits that no shown field explains; with
// the value in each image as the program shows it in English ("145.50000",
// "true", "0x12").
struct ImageDifference {
    std::string key, a, b;

    bool operator==(const ImageDifference&) const = default;
};

// Every difference between a and b: the fields whose texts differ, in the
// order of `set`'s keys (channels, test channels, band, option lists,
// tuning values, radio ID, write date, user text), then, in radio address
// order, each byte with a differing bit that no listed field covers. Equal
// images give nothing.
std::vector<ImageDifference> diffImages(const RadioImage& a, const RadioImage& b);

} // namespace zr310
