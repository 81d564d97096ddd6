#include "tones.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace zr310 {

namespace {

constexpr std::array<std::string_view, 50> kCtcssTones{
    "67.0",  "69.3",  "71.9",  "74.4",  "77.0",  "79.7",  "82.5",  "85.4",  "88.5",  "91.5",
    "94.8",  "97.4",  "100.0", "103.5", "107.2", "110.9", "114.8", "118.8", "123.0", "127.3",
    "131.8", "136.5", "141.3", "146.2", "151.4", "156.7", "159.8", "162.2", "165.5", "167.9",
    "171.3", "173.8", "177.3", "179.9", "183.5", "186.2", "189.9", "192.8", "196.6", "199.5",
    "203.5", "206.5", "210.7", "218.1", "225.7", "229.1", "233.6", "241.8", "250.3", "254.1",
};

constexpr std::array<std::string_view, 83> kDcsCodes{
    "023", "025", "026", "031", "032", "043", "047", "051", "054", "065", "071", "072",
    "073", "074", "114", "115", "116", "125", "131", "132", "134", "143", "152", "155",
    "156", "162", "165", "172", "174", "205", "223", "226", "243", "244", "245", "251",
    "261", "263", "265", "271", "306", "311", "315", "331", "343", "346", "351", "364",
    "365", "371", "411", "412", "413", "423", "431", "432", "445", "464", "465", "466",
    "503", "506", "516", "532", "546", "565", "606", "612", "624", "627", "631", "632",
    "654", "662", "664", "703", "712", "723", "731", "732", "734", "743", "754",
};

bool isOctalCode(std::string_view code) {
    return code.size() == 3 &&
           std::all_of(code.begin(), code.end(), [](char c) { return c >= '0' && c <= '7'; });
}

std::string dcsDigits(std::uint16_t value) {
    const int first = value / 64;
    const int second = (value - first * 64) / 8;
    const int third = value % 8;
    char text[16];
    std::snprintf(text, sizeof text, "%03d", first * 100 + second * 10 + third);
    return text;
}

std::string ctcssText(std::uint16_t value) {
    const int high = value >> 8;
    const int low = value & 0xFF;
    const int tenths = (high >> 4) * 1000 + (high & 0x0F) * 100 + (low >> 4) * 10 + (low & 0x0F);
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d", tenths / 10, tenths % 10);
    return text;
}

} // namespace

std::vector<std::string> SetQtcodeArray() {
    return {kCtcssTones.begin(), kCtcssTones.end()};
}

std::vector<std::string> SetDQtcodeArray() {
    return {kDcsCodes.begin(), kDcsCodes.end()};
}

Tone decodeTone(std::uint8_t flags, std::uint8_t low, std::uint8_t high) {
    const auto value = static_cast<std::uint16_t>(high << 8 | low);
    switch (flags & 0x70) {
    case 0x30:
        return {ToneKind::Ctcss, value};
    case 0x50:
        return {ToneKind::Dcs, value};
    case 0x70:
        return {ToneKind::DcsInverted, value};
    default:
        return {ToneKind::Off, value};
    }
}

std::uint8_t toneTypeBits(ToneKind kind) {
    switch (kind) {
    case ToneKind::Ctcss:
        return 0x30;
    case ToneKind::Dcs:
        return 0x50;
    case ToneKind::DcsInverted:
        return 0x70;
    case ToneKind::Off:
        break;
    }
    return 0x00;
}

std::string toneText(Tone tone) {
    switch (tone.kind) {
    case ToneKind::Ctcss:
        return "CTC " + ctcssText(tone.value);
    case ToneKind::Dcs:
        return "DCS " + dcsDigits(tone.value);
    case ToneKind::DcsInverted:
        return "-DCS " + dcsDigits(tone.value);
    case ToneKind::Off:
        break;
    }
    return "OFF";
}

std::uint16_t ctcssValue(std::string_view toneText) {
    int tenths = 0;
    for (char c : toneText)
        if (c >= '0' && c <= '9')
            tenths = tenths * 10 + (c - '0');
    const int digits[4] = {tenths / 1000 % 10, tenths / 100 % 10, tenths / 10 % 10, tenths % 10};
    return static_cast<std::uint16_t>(digits[0] << 12 | digits[1] << 8 | digits[2] << 4 |
                                      digits[3]);
}

std::uint16_t dcsValue(std::string_view octalCode) {
    int value = 0;
    for (char c : octalCode)
        value = value * 8 + (c - '0');
    return static_cast<std::uint16_t>(value);
}

std::optional<Tone> parseToneText(std::string_view text) {
    if (text == "OFF")
        return Tone{};
    auto afterPrefix = [&](std::string_view prefix) -> std::optional<std::string_view> {
        if (text.substr(0, prefix.size()) != prefix)
            return std::nullopt;
        return text.substr(prefix.size());
    };
    if (auto tone = afterPrefix("CTC ")) {
        if (std::find(kCtcssTones.begin(), kCtcssTones.end(), *tone) == kCtcssTones.end())
            return std::nullopt;
        return Tone{ToneKind::Ctcss, ctcssValue(*tone)};
    }
    if (auto code = afterPrefix("DCS "); code && isOctalCode(*code))
        return Tone{ToneKind::Dcs, dcsValue(*code)};
    if (auto code = afterPrefix("-DCS "); code && isOctalCode(*code))
        return Tone{ToneKind::DcsInverted, dcsValue(*code)};
    return std::nullopt;
}

} // namespace zr310
