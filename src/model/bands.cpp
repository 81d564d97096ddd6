#include "bands.h"

#include "sizes.h"

namespace zr310 {

int bandIndexFromImage(const RadioImage& image) {
    const std::uint8_t code = image[kBandCodeOffset];
    for (std::size_t i = 0; i < kBands.size(); ++i)
        if (kBands[i].code == code)
            return static_cast<int>(i);
    return kFallbackBandIndex;
}

const Band& bandOfImage(const RadioImage& image) {
    return kBands[toIndex(bandIndexFromImage(image))];
}

void setBand(RadioImage& image, int bandIndex) {
    image[kBandCodeOffset] = kBands.at(toIndex(bandIndex)).code;
}

std::optional<int> bandIndexOfText(std::string_view text) {
    for (std::size_t i = 0; i < kBands.size(); ++i)
        if (kBands[i].text == text)
            return static_cast<int>(i);
    return std::nullopt;
}

std::string bandRangeText(std::string_view bandText) {
    const auto index = bandIndexOfText(bandText);
    if (!index)
        return {};
    const BandLimits limits = kBands[toIndex(*index)].limits;
    return formatFrequency(limits.lowerMHz) + "～" + formatFrequency(limits.upperMHz) + " MHz";
}

BandLimits bandLimitsOfText(std::string_view bandText) {
    const auto index = bandIndexOfText(bandText);
    return index ? kBands[toIndex(*index)].limits : BandLimits{};
}

} // namespace zr310
