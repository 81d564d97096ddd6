#include "radio_info.h"

#include "byte_fields.h"
#include "sizes.h"
#include "text_codec.h"

#include <cstdio>
#include <ctime>

namespace zr310 {

namespace {

constexpr int kRadioIdColumns[] = {0x7C, 0x7D};
constexpr int kWriteDateDigits = 14;

bool isNoCharacter(std::uint8_t byte) {
    return byte == 0x00 || byte == 0xFF;
}

} // namespace

std::string decodeRadioId(const RadioImage& image) {
    std::string id;
    for (int column : kRadioIdColumns) {
        for (int block = 0; block < RadioImage::kBlocks; ++block) {
            const std::uint8_t byte = image.at(column, block);
            if (isNoCharacter(byte))
                ++block; // the radio's software passes over the next byte too
            else
                id += latin1ToUtf8(byte);
        }
    }
    return id;
}

std::optional<std::string> decodeWriteDate(const RadioImage& image) {
    if (isNoCharacter(image.atAddress(kWriteDateAddress)))
        return std::nullopt;
    auto part = [&](int from, int count) {
        std::string s;
        for (int i = from; i < from + count; ++i)
            s += latin1ToUtf8(image.atAddress(kWriteDateAddress + i));
        return s;
    };
    return part(0, 4) + "-" + part(4, 2) + "-" + part(6, 2) + ", " + part(8, 2) + ":" +
           part(10, 2) + ":" + part(12, 2);
}

DateTime currentLocalDateTime() {
    const std::time_t now = std::time(nullptr);
    std::tm local{};
#ifdef _WIN32
    localtime_s(&local, &now);
#else
    localtime_r(&now, &local);
#endif
    return {local.tm_year + 1900, local.tm_mon + 1, local.tm_mday,
            local.tm_hour,        local.tm_min,     local.tm_sec};
}

void stampWriteDate(RadioImage& image, const DateTime& when) {
    char digits[32];
    std::snprintf(digits, sizeof digits, "%04d%02d%02d%02d%02d%02d", when.year % 10000,
                  when.month % 100, when.day % 100, when.hour % 100, when.minute % 100,
                  when.second % 100);
    for (int i = 0; i < kWriteDateDigits; ++i)
        image.setAtAddress(kWriteDateAddress + i, static_cast<std::uint8_t>(digits[i]));
}

std::string decodeUserText(const RadioImage& image) {
    std::u16string text;
    for (int slot = 0; slot < kUserTextLength; ++slot) {
        const std::uint8_t low = image.atAddress(kUserTextAddress + 2 * slot);
        const std::uint8_t high = image.atAddress(kUserTextAddress + 2 * slot + 1);
        if (isNoCharacter(low))
            ++slot; // an empty slot hides the one after it
        else
            text += static_cast<char16_t>(high << 8 | low);
    }
    return utf16ToUtf8(text);
}

bool encodeUserText(RadioImage& image, std::string_view utf8) {
    const auto text = utf8ToUtf16(utf8);
    if (!text || text->size() > static_cast<std::size_t>(kUserTextLength))
        return false;
    for (int slot = 0; slot < kUserTextLength; ++slot) {
        const char16_t unit = toIndex(slot) < text->size() ? (*text)[toIndex(slot)] : u'\0';
        image.setAtAddress(kUserTextAddress + 2 * slot, lowByte(unit));
        image.setAtAddress(kUserTextAddress + 2 * slot + 1, highByte(unit));
    }
    return true;
}

int utf16Length(std::string_view utf8) {
    const auto text = utf8ToUtf16(utf8);
    return text ? static_cast<int>(text->size()) : -1;
}

} // namespace zr310
