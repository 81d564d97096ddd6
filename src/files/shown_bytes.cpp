#include "shown_bytes.h"

#include <cstdio>

namespace zr310 {

std::string shownBytes(std::string_view bytes, ShownAs as) {
    std::string text;
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        const bool control = byte < 0x20 || byte == 0x7F;
        const bool asciiOnly = as == ShownAs::Ascii && (byte > 0x7F || c == '\\' || c == '"');
        if (!control && !asciiOnly) {
            text += c;
            continue;
        }
        char escaped[8];
        std::snprintf(escaped, sizeof escaped, "\\x%02X", byte);
        text += escaped;
    }
    return text;
}

} // namespace zr310
