#include "options.h"

#include "bcd.h"
#include "channel.h"

#include <cmath>
#include <cstdio>

namespace zr310 {

namespace {

// Bytes of the option columns 0x56 and 0x57.
constexpr std::size_t kScanMoniByte = 0x056;  // bits 3-4 scan mode, bits 5-6 monitor key
constexpr std::size_t kRevertByte = 0x0D6;    // bits 0-2 revert channel
constexpr std::size_t kPriorityByte = 0x156;  // priority channel, BCD
constexpr std::size_t kLookBackByte = 0x1D6;  // look-back period, BCD tenths of a second
constexpr std::size_t kSquelchByte = 0x1D7;   // squelch level 0..9
constexpr std::size_t kPowerSelByte = 0x256;  // bits 0-1 power selection
constexpr std::size_t kFunctionByte = 0x257;  // bits 0 manual, 1 narrow, 3 battery save, 5 beep
constexpr std::size_t kPreAlertByte = 0x2D7;  // pre-alert seconds, binary
constexpr std::size_t kScanDelayByte = 0x356; // scan delay, BCD tenths of a second
constexpr std::size_t kRekeyByte = 0x357;     // rekey time, BCD seconds
constexpr std::size_t kTimeOutByte = 0x3D6;   // time-out timer, BCD tens of seconds
constexpr std::size_t kTotResetByte = 0x3D7;  // time-out reset time, BCD seconds

constexpr std::uint8_t kManualBit = 0x01;
constexpr std::uint8_t kNarrowBit = 0x02;
constexpr std::uint8_t kBatterySaveBit = 0x08;
constexpr std::uint8_t kBeepBit = 0x20;
constexpr std::uint8_t kScanBits = 0x18;
constexpr std::uint8_t kMoniBits = 0x60;
constexpr std::uint8_t kPowerSelBits = 0x03;
constexpr std::uint8_t kRevertBits = 0x07;

constexpr int kTimeOutItems = 11;   // Off, 30sec .. 300sec
constexpr int kPreAlertItems = 255; // Off, 1sec .. 254sec
constexpr int kRekeyItems = 61;     // Off, 1sec .. 60sec
constexpr int kTotResetItems = 16;  // Off, 1sec .. 15sec
constexpr int kPriorityItems = 16;  // Off, CH1 .. CH15
constexpr int kLookBackFirst = 3;   // 0.3sec
constexpr int kLookBackLast = 50;   // 5.0sec
constexpr int kScanDelayItems = 20; // 0.0sec .. 9.5sec, steps of 0.5 s
constexpr int kPowerSelLongPress = 2;

constexpr std::string_view kNames[] = {
    "CboTXLimit",     "CboPreAlert", "CboTOTAgain", "CboTOTReset",   "CboRing",    "CboHandModel",
    "CboBatFunction", "CboSQ",       "CboScan",     "CboPriorityCH", "CboBakScan", "CboBakCH",
    "CboScanHold",    "CboMoni",     "CboPowSel",   "CboBandSel",
};

constexpr int kLabelIds[] = {1304, 1305, 1306, 1307, 1308, 1310, 1311, 1309,
                             1312, 1313, 1314, 1315, 1316, 1317, 1318, 1211};

std::string word(int id, Language language) {
    return std::string(ResString(id, language));
}

std::string seconds(int count, Language language) {
    return std::to_string(count) + word(1350, language);
}

std::string tenthsOfSeconds(int tenths, Language language) {
    char text[16];
    std::snprintf(text, sizeof text, "%d.%d", tenths / 10, tenths % 10);
    return text + word(1350, language);
}

// "Off" followed by `count` numbered items made by `item`.
template <typename Item> std::vector<std::string> offThen(int count, Language language, Item item) {
    std::vector<std::string> items{word(1101, language)};
    for (int i = 1; i <= count; ++i)
        items.push_back(item(i));
    return items;
}

std::vector<std::string> words(std::initializer_list<int> ids, Language language) {
    std::vector<std::string> items;
    for (int id : ids)
        items.push_back(word(id, language));
    return items;
}

bool bitSet(const RadioImage& image, std::size_t offset, std::uint8_t mask) {
    return (image[offset] & mask) != 0;
}

void setBits(RadioImage& image, std::size_t offset, std::uint8_t mask, std::uint8_t value) {
    image[offset] = static_cast<std::uint8_t>((image[offset] & ~mask) | (value & mask));
}

int itemCount(OptionId id, const RadioImage& image) {
    return static_cast<int>(optionItems(id, image, Language::English).size());
}

int decodeTimeOut(std::uint8_t byte) {
    if (byte == 0x00)
        return 0;
    if (byte == 0xFF)
        return kTimeOutItems - 1;
    if (byte >= 0x31)
        return 0;
    const int index = static_cast<int>(std::lround(bcdValue(byte) / 3.0));
    return index < kTimeOutItems ? index : kTimeOutItems - 1;
}

// BCD bytes above `maxByte`, and bytes whose nibbles read past the list, are 0.
int decodeBcdIndex(std::uint8_t byte, std::uint8_t maxByte, int items) {
    if (byte > maxByte)
        return 0;
    const int value = bcdValue(byte);
    return value < items ? value : 0;
}

int decodeLookBack(std::uint8_t byte) {
    if (byte > 0x50 || byte < 0x03)
        byte = 0x03;
    const int index = bcdValue(byte) - kLookBackFirst;
    return index <= kLookBackLast - kLookBackFirst ? index : 0;
}

int decodeScanDelay(std::uint8_t byte) {
    const int index = static_cast<int>(std::lround(bcdValue(byte) / 5.0));
    return index < kScanDelayItems ? index : kScanDelayItems - 1;
}

int decodeMonitor(const RadioImage& image) {
    const int bits = (image[kScanMoniByte] & 0x78) & kMoniBits;
    if (!monitorListIsShort(image))
        return bits >> 5;
    // The short list holds "Off" and "Unmute Toggle"; a momentary function,
    // which needs the long press, shows as "Off".
    return bits == 0x40 ? 1 : 0;
}

int decodeSmallField(std::uint8_t value, int items) {
    return value < items ? value : 0;
}

} // namespace

std::string_view optionName(OptionId id) {
    return kNames[static_cast<int>(id)];
}

int optionLabelId(OptionId id) {
    return kLabelIds[static_cast<int>(id)];
}

bool optionFromName(std::string_view name, OptionId& id) {
    for (OptionId candidate : kAllOptions) {
        if (optionName(candidate) == name) {
            id = candidate;
            return true;
        }
    }
    return false;
}

bool monitorListIsShort(const RadioImage& image) {
    return (image[kPowerSelByte] & kPowerSelBits) == kPowerSelLongPress;
}

void setRadioWideBandwidth(RadioImage& image, int index) {
    if (!encodeOption(OptionId::CboBandSel, image, index) || index != 1)
        return;
    for (int n = 1; n <= kChannelCount; ++n)
        ChannelRecord::channel(image, n).setNarrow(true);
}

void clearPowerSelection(RadioImage& image) {
    setBits(image, kPowerSelByte, kPowerSelBits, 0);
}

std::vector<std::string> optionItems(OptionId id, const RadioImage& image, Language language) {
    auto sec = [language](int n) { return seconds(n, language); };
    switch (id) {
    case OptionId::CboTXLimit:
        return offThen(kTimeOutItems - 1, language, [&](int i) { return sec(i * 30); });
    case OptionId::CboPreAlert:
        return offThen(kPreAlertItems - 1, language, sec);
    case OptionId::CboTOTAgain:
        return offThen(kRekeyItems - 1, language, sec);
    case OptionId::CboTOTReset:
        return offThen(kTotResetItems - 1, language, sec);
    case OptionId::CboRing:
    case OptionId::CboHandModel:
    case OptionId::CboBatFunction:
        return words({1101, 1100}, language);
    case OptionId::CboSQ: {
        std::vector<std::string> levels;
        for (int level = 0; level <= 9; ++level)
            levels.push_back(std::to_string(level));
        return levels;
    }
    case OptionId::CboScan:
        return words({1101, 1352, 1353}, language);
    case OptionId::CboPriorityCH:
        return offThen(kPriorityItems - 1, language,
                       [&](int n) { return word(1203, language) + std::to_string(n); });
    case OptionId::CboBakScan: {
        std::vector<std::string> items;
        for (int tenths = kLookBackFirst; tenths <= kLookBackLast; ++tenths)
            items.push_back(tenthsOfSeconds(tenths, language));
        return items;
    }
    case OptionId::CboBakCH:
        return words({1354, 1355, 1356, 1313}, language);
    case OptionId::CboScanHold: {
        std::vector<std::string> items;
        for (int i = 0; i < kScanDelayItems; ++i)
            items.push_back(tenthsOfSeconds(i * 5, language));
        return items;
    }
    case OptionId::CboMoni:
        if (monitorListIsShort(image))
            return words({1359, 1361}, language);
        return words({1359, 1360, 1361, 1362}, language);
    case OptionId::CboPowSel:
        return words({1105, 1357, 1358}, language);
    case OptionId::CboBandSel:
        return words({1216, 1215}, language);
    }
    return {};
}

int decodeOption(OptionId id, const RadioImage& image) {
    switch (id) {
    case OptionId::CboTXLimit:
        return decodeTimeOut(image[kTimeOutByte]);
    case OptionId::CboPreAlert:
        return decodeSmallField(image[kPreAlertByte], kPreAlertItems);
    case OptionId::CboTOTAgain:
        return decodeBcdIndex(image[kRekeyByte], 0x60, kRekeyItems);
    case OptionId::CboTOTReset:
        return decodeBcdIndex(image[kTotResetByte], 0x15, kTotResetItems);
    case OptionId::CboRing:
        return bitSet(image, kFunctionByte, kBeepBit);
    case OptionId::CboHandModel:
        return bitSet(image, kFunctionByte, kManualBit);
    case OptionId::CboBatFunction:
        return bitSet(image, kFunctionByte, kBatterySaveBit);
    case OptionId::CboSQ:
        return decodeSmallField(image[kSquelchByte], 10);
    case OptionId::CboScan:
        return decodeSmallField(((image[kScanMoniByte] & 0x78) & kScanBits) >> 3, 3);
    case OptionId::CboPriorityCH:
        return decodeBcdIndex(image[kPriorityByte], 0x15, kPriorityItems);
    case OptionId::CboBakScan:
        return decodeLookBack(image[kLookBackByte]);
    case OptionId::CboBakCH: {
        const int value = image[kRevertByte] & kRevertBits;
        return value >= 1 && value <= 4 ? value - 1 : 0;
    }
    case OptionId::CboScanHold:
        return decodeScanDelay(image[kScanDelayByte]);
    case OptionId::CboMoni:
        return decodeMonitor(image);
    case OptionId::CboPowSel:
        return decodeSmallField(image[kPowerSelByte] & kPowerSelBits, 3);
    case OptionId::CboBandSel:
        return bitSet(image, kFunctionByte, kNarrowBit);
    }
    return 0;
}

bool encodeOption(OptionId id, RadioImage& image, int index) {
    if (index < 0 || index >= itemCount(id, image))
        return false;
    const auto byte = static_cast<std::uint8_t>(index);
    switch (id) {
    case OptionId::CboTXLimit:
        image[kTimeOutByte] = toBcd(index * 3);
        break;
    case OptionId::CboPreAlert:
        image[kPreAlertByte] = byte;
        break;
    case OptionId::CboTOTAgain:
        image[kRekeyByte] = toBcd(index);
        break;
    case OptionId::CboTOTReset:
        image[kTotResetByte] = toBcd(index);
        break;
    case OptionId::CboRing:
        setBits(image, kFunctionByte, kBeepBit, index ? kBeepBit : 0);
        break;
    case OptionId::CboHandModel:
        setBits(image, kFunctionByte, kManualBit, index ? kManualBit : 0);
        break;
    case OptionId::CboBatFunction:
        setBits(image, kFunctionByte, kBatterySaveBit, index ? kBatterySaveBit : 0);
        break;
    case OptionId::CboSQ:
        image[kSquelchByte] = byte;
        break;
    case OptionId::CboScan:
        setBits(image, kScanMoniByte, kScanBits, static_cast<std::uint8_t>(index << 3));
        break;
    case OptionId::CboPriorityCH:
        image[kPriorityByte] = toBcd(index);
        break;
    case OptionId::CboBakScan:
        image[kLookBackByte] = toBcd(index + kLookBackFirst);
        break;
    case OptionId::CboBakCH:
        setBits(image, kRevertByte, kRevertBits, static_cast<std::uint8_t>(index + 1));
        break;
    case OptionId::CboScanHold:
        image[kScanDelayByte] = toBcd(index * 5);
        break;
    case OptionId::CboMoni: {
        const int function = monitorListIsShort(image) ? (index == 1 ? 2 : 0) : index;
        setBits(image, kScanMoniByte, kMoniBits, static_cast<std::uint8_t>(function << 5));
        break;
    }
    case OptionId::CboPowSel:
        setBits(image, kPowerSelByte, kPowerSelBits, byte);
        break;
    case OptionId::CboBandSel:
        setBits(image, kFunctionByte, kNarrowBit, index ? kNarrowBit : 0);
        break;
    }
    return true;
}

} // namespace zr310
