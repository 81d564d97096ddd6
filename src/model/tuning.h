#pragma once

#include "radio_image.h"

#include <array>
#include <cstdint>
#include <string_view>

namespace zr310 {

// The five alignment values of tuning mode, each one byte of column 0x5E.
enum class TuningItem { LowBattery, Squelch9, Squelch3, CtcssDeviation, CdcssDeviation };

struct TuningItemInfo {
    TuningItem item;
    std::string_view key;  // name used by the command line and data exports
    std::uint8_t itemCode; // code of the tuning tree node
    char commandLetter;    // letter of the tuning exchange
    int block;             // block of column 0x5E
};

inline constexpr int kTuningColumn = 0x5E;

// Code of the tuning tree's "Exit tuning" node.
inline constexpr std::uint8_t kLeaveTuningItemCode = 0xBB;

inline constexpr std::array<TuningItemInfo, 5> kTuningItems{{
    {TuningItem::LowBattery, "low_battery", 0x11, 'B', 0},
    {TuningItem::Squelch9, "squelch9", 0x33, 'M', 1},
    {TuningItem::Squelch3, "squelch3", 0x55, 'm', 2},
    {TuningItem::CtcssDeviation, "ctcss_deviation", 0x77, 'Q', 3},
    {TuningItem::CdcssDeviation, "cdcss_deviation", 0x99, 'D', 4},
}};

inline std::uint8_t tuningValue(const RadioImage& image, TuningItem item) {
    return image.at(kTuningColumn, kTuningItems[static_cast<std::size_t>(item)].block);
}
inline void setTuningValue(RadioImage& image, TuningItem item, std::uint8_t value) {
    image.set(kTuningColumn, kTuningItems[static_cast<std::size_t>(item)].block, value);
}

} // namespace zr310
