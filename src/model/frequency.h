#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace zr310 {

// A frequency as the radio stores it: a 17-bit count of 6.25 kHz or 5 kHz steps.
struct FrequencyCode {
    std::uint32_t steps = 0;
    bool step625 = false; // true: 6.25 kHz steps; false: 5 kHz steps

    bool operator==(const FrequencyCode&) const = default;
};

double frequencyMHz(FrequencyCode code);

// "000.00000": three integer digits with leading zeros, five decimals.
std::string formatFrequency(double mhz);

// The radio's encoding of a typed frequency. The 6.25 kHz grid is preferred:
// when mhz * 1000 / 6.25, printed as a single-precision number, shows no
// decimal point, the count is of 6.25 kHz steps; otherwise of 5 kHz steps.
FrequencyCode encodeFrequency(double mhz);

// The leading number of a text, as a BASIC-style Val() reads it: "145.5x"
// gives 145.5, "" or "abc" gives 0.
double leadingNumber(std::string_view text);

// True for a plain decimal number such as "145", "145.5" or ".5": digits and
// at most one point, no sign, exponent or blanks.
bool isPlainDecimalNumber(std::string_view text);

// Whole-MHz limits of a band.
struct BandLimits {
    int lowerMHz = 0;
    int upperMHz = 0;

    bool operator==(const BandLimits&) const = default;
};

// What the frequency box makes of a typed text when it is left: clamped to the
// band's limits, and brought onto the nearer of the 5 kHz and 6.25 kHz grids
// (a tie goes to 6.25 kHz). Returns the "000.00000" text.
std::string validateFrequencyText(std::string_view text, BandLimits limits);

} // namespace zr310
