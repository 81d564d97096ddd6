#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// The 50 CTCSS tones offered by the signalling dialog, "67.0" .. "254.1".
std::vector<std::string> SetQtcodeArray();
// The 83 standard DCS codes, "023" .. "754".
std::vector<std::string> SetDQtcodeArray();

enum class ToneKind { Off, Ctcss, Dcs, DcsInverted };

// One side's signalling as stored: the kind (type bits 4-6 of the flags byte)
// and the 16-bit value (CTCSS as BCD tenths of a hertz, DCS as the binary
// value of the octal code).
struct Tone {
    ToneKind kind = ToneKind::Off;
    std::uint16_t value = 0;

    bool operator==(const Tone&) const = default;
};

// Type bits 0x30 CTCSS, 0x50 DCS, 0x70 inverted DCS; anything else is off.
Tone decodeTone(std::uint8_t flags, std::uint8_t low, std::uint8_t high);
std::uint8_t toneTypeBits(ToneKind kind);

// "OFF", "CTC 88.5", "DCS 023", "-DCS 023".
std::string toneText(Tone tone);

// Parses the display form back. CTCSS tones must be on the tone list; DCS
// codes must be three octal digits. Anything else gives nothing.
std::optional<Tone> parseToneText(std::string_view text);

std::uint16_t ctcssValue(std::string_view toneText); // "88.5" -> 0x0885
std::uint16_t dcsValue(std::string_view octalCode);  // "023" -> 0x0013

} // namespace zr310
