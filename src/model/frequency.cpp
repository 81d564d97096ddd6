#include "frequency.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace zr310 {

namespace {

constexpr double kStep625kHz = 6.25;
constexpr double kStep5kHz = 5.0;
constexpr std::uint32_t kStepMask = 0x1FFFF; // 17 bits

// Formats with the pattern "0": nearest whole number, halves away from zero.
double roundToWhole(double value) {
    return std::round(value);
}

// True when a single-precision number, printed with its 7 significant digits
// and no trailing zeros, shows a decimal point.
bool singlePrecisionShowsFraction(float value) {
    char text[32];
    const auto end =
        std::to_chars(text, text + sizeof text, value, std::chars_format::general, 7).ptr;
    return std::string_view(text, static_cast<std::size_t>(end - text)).find('.') !=
           std::string_view::npos;
}

} // namespace

double frequencyMHz(FrequencyCode code) {
    return code.steps * (code.step625 ? kStep625kHz : kStep5kHz) / 1000.0;
}

// Numbers are written and read in the C way (a decimal point) whatever the
// user's locale: std::to_chars and std::from_chars do not look at it.
std::string formatFrequency(double mhz) {
    char text[64];
    const auto end = std::to_chars(text, text + sizeof text, mhz, std::chars_format::fixed, 5).ptr;
    std::string formatted(text, end);
    if (formatted.size() < 9) {
        formatted.insert(formatted.front() == '-' ? 1 : 0, 9 - formatted.size(), '0');
    }
    return formatted;
}

FrequencyCode encodeFrequency(double mhz) {
    const float quotient625 = static_cast<float>(mhz * 1000.0 / kStep625kHz);
    if (!singlePrecisionShowsFraction(quotient625)) {
        const auto steps = static_cast<std::uint32_t>(std::lround(quotient625));
        return {steps & kStepMask, true};
    }
    const auto steps = static_cast<std::uint32_t>(std::nearbyint(mhz * 1000.0 / kStep5kHz));
    return {steps & kStepMask, false};
}

double leadingNumber(std::string_view text) {
    std::string number;
    bool seenPoint = false;
    std::size_t i = 0;
    while (i < text.size() && (text[i] == ' ' || text[i] == '\t'))
        ++i;
    if (i < text.size() && (text[i] == '-' || text[i] == '+'))
        number += text[i++];
    for (; i < text.size(); ++i) {
        const char c = text[i];
        if (std::isdigit(static_cast<unsigned char>(c))) {
            number += c;
        } else if (c == '.' && !seenPoint) {
            seenPoint = true;
            number += c;
        } else {
            break;
        }
    }
    double value = 0;
    const char* first = number.data();
    if (!number.empty() && number.front() == '+') {
        ++first; // from_chars takes no plus sign
    }
    std::from_chars(first, number.data() + number.size(), value);
    return value;
}

bool isPlainDecimalNumber(std::string_view text) {
    const auto points = std::count(text.begin(), text.end(), '.');
    const auto digits = std::count_if(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c));
    });
    return digits > 0 && points <= 1 && digits + points == static_cast<long>(text.size());
}

std::string validateFrequencyText(std::string_view text, BandLimits limits) {
    const double v = leadingNumber(text);
    if (v <= limits.lowerMHz)
        return formatFrequency(limits.lowerMHz);
    if (v >= limits.upperMHz)
        return formatFrequency(limits.upperMHz);

    // Whole units of 10 Hz, the resolution of the display: without the
    // rounding, 145.01125 would come out as 14501124.999999998 and an exact tie
    // between the grids would go the wrong way.
    const double f = std::round(v * 100000.0);
    const double on5kHz = roundToWhole(f / 500.0) * 500.0;
    const double on625kHz = roundToWhole(f / 625.0) * 625.0;
    if (f == on5kHz || f == on625kHz)
        return formatFrequency(v);
    const double snapped = std::abs(on5kHz - f) < std::abs(on625kHz - f) ? on5kHz : on625kHz;
    return formatFrequency(snapped / 100000.0);
}

} // namespace zr310
