#include "text_codec.h"

namespace zr310 {

namespace {

void appendCodePoint(std::string& out, char32_t cp) {
    if (cp < 0x80) {
        out += static_cast<char>(cp);
    } else if (cp < 0x800) {
        out += static_cast<char>(0xC0 | (cp >> 6));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
        out += static_cast<char>(0xE0 | (cp >> 12));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    } else {
        out += static_cast<char>(0xF0 | (cp >> 18));
        out += static_cast<char>(0x80 | ((cp >> 12) & 0x3F));
        out += static_cast<char>(0x80 | ((cp >> 6) & 0x3F));
        out += static_cast<char>(0x80 | (cp & 0x3F));
    }
}

bool isHighSurrogate(char16_t u) {
    return u >= 0xD800 && u < 0xDC00;
}
bool isLowSurrogate(char16_t u) {
    return u >= 0xDC00 && u < 0xE000;
}

} // namespace

std::string utf16ToUtf8(std::u16string_view text) {
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t u = text[i];
        if (isHighSurrogate(u) && i + 1 < text.size() && isLowSurrogate(text[i + 1])) {
            appendCodePoint(out, 0x10000 + ((char32_t{u} - 0xD800) << 10) +
                                     (char32_t{text[i + 1]} - 0xDC00));
            ++i;
        } else if (isHighSurrogate(u) || isLowSurrogate(u)) {
            appendCodePoint(out, 0xFFFD);
        } else {
            appendCodePoint(out, u);
        }
    }
    return out;
}

std::optional<std::u16string> utf8ToUtf16(std::string_view text) {
    std::u16string out;
    for (std::size_t i = 0; i < text.size();) {
        const auto lead = static_cast<unsigned char>(text[i]);
        std::size_t extra = 0;
        char32_t cp = 0;
        if (lead < 0x80) {
            cp = lead;
        } else if ((lead & 0xE0) == 0xC0) {
            extra = 1, cp = lead & 0x1F;
        } else if ((lead & 0xF0) == 0xE0) {
            extra = 2, cp = lead & 0x0F;
        } else if ((lead & 0xF8) == 0xF0) {
            extra = 3, cp = lead & 0x07;
        } else {
            return std::nullopt;
        }
        if (i + extra >= text.size())
            return std::nullopt;
        for (std::size_t k = 1; k <= extra; ++k) {
            const auto next = static_cast<unsigned char>(text[i + k]);
            if ((next & 0xC0) != 0x80)
                return std::nullopt;
            cp = (cp << 6) | (next & 0x3F);
        }
        static constexpr char32_t kMinimum[] = {0, 0x80, 0x800, 0x10000};
        if (cp < kMinimum[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp < 0xE000))
            return std::nullopt;
        if (cp >= 0x10000) {
            cp -= 0x10000;
            out += static_cast<char16_t>(0xD800 + (cp >> 10));
            out += static_cast<char16_t>(0xDC00 + (cp & 0x3FF));
        } else {
            out += static_cast<char16_t>(cp);
        }
        i += 1 + extra;
    }
    return out;
}

std::string latin1ToUtf8(std::uint8_t byte) {
    std::string out;
    appendCodePoint(out, byte);
    return out;
}

} // namespace zr310
