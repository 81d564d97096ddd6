#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zr310 {

// UTF-8 of a UTF-16 text; unpaired surrogates become U+FFFD.
std::string utf16ToUtf8(std::u16string_view text);

// UTF-16 of a UTF-8 text, or nothing when the text is not valid UTF-8.
std::optional<std::u16string> utf8ToUtf16(std::string_view text);

// UTF-8 of one single-byte (Latin-1) character.
std::string latin1ToUtf8(std::uint8_t byte);

} // namespace zr310
