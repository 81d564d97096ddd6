#pragma once

#include "radio_image.h"

#include <optional>
#include <string>
#include <string_view>

namespace zr310 {

struct DateTime {
    int year = 2000, month = 1, day = 1, hour = 0, minute = 0, second = 0;
};

// The local date and time of the system clock.
DateTime currentLocalDateTime();

inline constexpr int kUserTextLength = 96;      // UTF-16 code units
inline constexpr int kUserTextAddress = 0x300;  // radio addresses 0x300..0x3BF
inline constexpr int kWriteDateAddress = 0x3C0; // 14 ASCII digits, 0x3C0..0x3CD
inline constexpr int kRadioIdAddress = 0x3E0;   // 16 single-byte characters

// The radio identifier (UTF-8). Bytes 0x00 and 0xFF are no characters, and the
// byte after each of them in the same column is passed over too, as the
// radio's software reads it.
std::string decodeRadioId(const RadioImage& image);

// "2007-09-21, 15:30:00", or nothing when the first byte is 0x00 or 0xFF.
std::optional<std::string> decodeWriteDate(const RadioImage& image);

// Stamps the date and time of a write: YYYYMMDDhhmmss at 0x3C0..0x3CD.
void stampWriteDate(RadioImage& image, const DateTime& when);

// The user-defined text (UTF-8). A slot whose low byte is 0x00 or 0xFF is
// empty, and the slot after an empty one is passed over.
std::string decodeUserText(const RadioImage& image);

// Stores text (UTF-8) as 96 UTF-16LE slots, zero after its end. Returns false,
// and changes nothing, when it is longer than 96 UTF-16 code units or is not
// valid UTF-8.
bool encodeUserText(RadioImage& image, std::string_view utf8);

// UTF-16 code units of a UTF-8 text, or -1 when the text is not valid UTF-8.
int utf16Length(std::string_view utf8);

} // namespace zr310
