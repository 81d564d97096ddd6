#pragma once

#include "image_edit.h"
#include "radio_image.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// How badly a finding would go wrong in the radio: an error puts data into it
// that it cannot use as shown; a warning is a setting that does nothing.
enum class CheckSeverity { Error, Warning };

// "error" or "warning".
std::string_view severityWord(CheckSeverity severity);

// One thing a write would put wrongly into the radio.
struct WriteFinding {
    CheckSeverity severity = CheckSeverity::Error;
    std::string key;     // as `zr310-cli set` names it: "ch3.rx_freq", "CboPriorityCH"
    std::string message; // "ch3.rx_freq: 500.00000 MHz is outside the band 136 - 174MHz"
    int channel = 0;     // the channel (1..16) the finding is about, 0 for none
    std::optional<ChannelField> field; // the channel's field, for the grid to point at
};

// Everything in the image that a write would put wrongly into the radio,
// errors first, then warnings; within one severity in the order of the
// checks and then of the channels. A clean image gives nothing. Only open
// channels are checked, and the transmit side only where transmitting is
// allowed: the radio does not use the rest.
std::vector<WriteFinding> checkBeforeWrite(const RadioImage& image);

} // namespace zr310
