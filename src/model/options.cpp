#include "options.h"

#include "bcd.h"
#include "channel.h"

#include <algorithm>
#include <bit>
#include <cstdio>

namespace zr310 {

namespace {

// Where a list is kept: the bits `mask` of the image byte at linear offset
// `offset`. The option bytes are blocks of columns 0x56 and 0x57.
struct Field {
    std::size_t offset;
    std::uint8_t mask;
};

constexpr Field kPowerSel{0x256, 0x03};
constexpr int kLongHit = 2; // power selection "Long-hit [Moni]"

enum class Number { Binary, Bcd };
enum class Place { After, Before };

// Numbered items: `count` of them, each showing its stored number × `scale`,
// in tenths when `tenths`, with the word `unit` (0: none) after or before it.
struct Numbers {
    int count = 0;
    int scale = 1;
    bool tenths = false;
    int unit = 0;
    Place place = Place::After;
};

constexpr Numbers plain(int count) {
    return {count, 1, false, 0, Place::After};
}
constexpr Numbers seconds(int count, int scale = 1) {
    return {count, scale, false, txt::Seconds, Place::After};
}
constexpr Numbers tenthSeconds(int count) {
    return {count, 1, true, txt::Seconds, Place::After};
}
constexpr Numbers channels(int count) {
    return {count, 1, false, txt::Channel, Place::Before};
}

struct Codec;
// The item index a field's bits show; any bits show some item.
using Reader = int (*)(const Codec& codec, int bits);

// A list's items and how they are stored: item i is the number
// i × step + base, written in binary or BCD into the field's bits. The items
// are the words (string ids, up to the first 0), then the numbered ones.
struct Codec {
    Number number;
    int step;
    int base;
    Reader read;
    std::array<int, 4> words;
    Numbers numbers;
};

constexpr int wordCount(const Codec& codec) {
    return static_cast<int>(std::ranges::find(codec.words, 0) - codec.words.begin());
}

constexpr int itemCount(const Codec& codec) {
    return wordCount(codec) + codec.numbers.count;
}

constexpr int storedNumber(const Codec& codec, int index) {
    return index * codec.step + codec.base;
}

constexpr int bitsOf(const Codec& codec, int index) {
    const int number = storedNumber(codec, index);
    return codec.number == Number::Bcd ? toBcd(number) : number;
}

constexpr int numberOf(const Codec& codec, int bits) {
    return codec.number == Number::Bcd ? bcdValue(static_cast<std::uint8_t>(bits)) : bits;
}

// An item's own number shows that item; any other number the first item.
int exact(const Codec& codec, int bits) {
    const int offset = numberOf(codec, bits) - codec.base;
    const int index = offset / codec.step;
    return offset >= 0 && offset % codec.step == 0 && index < itemCount(codec) ? index : 0;
}

// The nearest item; numbers past the list show the last one.
int nearest(const Codec& codec, int bits) {
    const int index = (numberOf(codec, bits) - codec.base + codec.step / 2) / codec.step;
    return std::clamp(index, 0, itemCount(codec) - 1);
}

// The time-out byte: 0xFF (erased) shows the last item, bytes above the last
// item's show Off, the others the nearest item.
int timeOut(const Codec& codec, int bits) {
    const int last = itemCount(codec) - 1;
    if (bits == 0xFF)
        return last;
    return bits > bitsOf(codec, last) ? 0 : nearest(codec, bits);
}

// Items that are words, stored as index + base.
constexpr Codec choices(std::array<int, 4> words, int base = 0) {
    return {Number::Binary, 1, base, exact, words, {}};
}

// While power selection is Long-hit the long press is taken, and the monitor
// key offers only Off (0) and Unmute Toggle (2); a stored momentary function
// shows as Off and stays in the bits until an item is chosen.
constexpr Codec kShortMonitor{
    Number::Binary, 2, 0, exact, {txt::MonitorOff, txt::UnmuteToggle}, {}};

struct OptionList {
    OptionId id;
    std::string_view name;
    int label; // string id
    Field field;
    Codec codec;
    const Codec* whileLongHit = nullptr; // the list while power selection is Long-hit
};

using enum OptionId;
using enum Number;

// Bytes: 0x056 bits 3-4 scan mode, 5-6 monitor key; 0x0D6 bits 0-2 revert
// channel; 0x257 bits 0 manual, 1 narrow, 3 battery save, 5 beep; the others
// are whole bytes, their numbers in BCD except pre-alert and squelch.
constexpr OptionList kLists[] = {
    // Time-out in tens of seconds.
    {CboTXLimit,
     "CboTXLimit",
     txt::TimeOutTimer,
     {0x3D6, 0xFF},
     {Bcd, 3, 0, timeOut, {txt::Off}, seconds(10, 10)}},
    {CboPreAlert,
     "CboPreAlert",
     txt::TotPreAlert,
     {0x2D7, 0xFF},
     {Binary, 1, 0, exact, {txt::Off}, seconds(254)}},
    {CboTOTAgain,
     "CboTOTAgain",
     txt::TotRekeyTime,
     {0x357, 0xFF},
     {Bcd, 1, 0, exact, {txt::Off}, seconds(60)}},
    {CboTOTReset,
     "CboTOTReset",
     txt::TotResetTime,
     {0x3D7, 0xFF},
     {Bcd, 1, 0, exact, {txt::Off}, seconds(15)}},
    {CboRing, "CboRing", txt::Beep, {0x257, 0x20}, choices({txt::Off, txt::On})},
    {CboHandModel, "CboHandModel", txt::HandModel, {0x257, 0x01}, choices({txt::Off, txt::On})},
    {CboBatFunction,
     "CboBatFunction",
     txt::BatterySave,
     {0x257, 0x08},
     choices({txt::Off, txt::On})},
    {CboSQ, "CboSQ", txt::SquelchLevel, {0x1D7, 0xFF}, {Binary, 1, 0, exact, {}, plain(10)}},
    {CboScan,
     "CboScan",
     txt::ScanMode,
     {0x056, 0x18},
     choices({txt::Off, txt::Carrier, txt::Time})},
    // The radio reads bytes above 0x15 as Off, so channel 16 is not offered.
    {CboPriorityCH,
     "CboPriorityCH",
     txt::PriorityChannel,
     {0x156, 0xFF},
     {Bcd, 1, 0, exact, {txt::Off}, channels(15)}},
    // Look-back period and scan delay in tenths of a second.
    {CboBakScan,
     "CboBakScan",
     txt::LookBackPeriod,
     {0x1D6, 0xFF},
     {Bcd, 1, 3, exact, {}, tenthSeconds(48)}},
    {CboBakCH,
     "CboBakCH",
     txt::RevertChannel,
     {0x0D6, 0x07},
     choices({txt::RecentRxChannel, txt::RecentUsedChannel, txt::FirstScanChannel,
              txt::PriorityChannel},
             1)},
    {CboScanHold,
     "CboScanHold",
     txt::ScanDelay,
     {0x356, 0xFF},
     {Bcd, 5, 0, nearest, {}, tenthSeconds(20)}},
    {CboMoni,
     "CboMoni",
     txt::Monitor,
     {0x056, 0x60},
     choices({txt::MonitorOff, txt::UnmuteMomentary, txt::UnmuteToggle, txt::SquelchMomentary}),
     &kShortMonitor},
    {CboPowSel, "CboPowSel", txt::PowerSelect, kPowerSel,
     choices({txt::None, txt::ShortHitMoni, txt::LongHitMoni})},
    {CboBandSel, "CboBandSel", txt::WideNarrow, {0x257, 0x02}, choices({txt::Wide, txt::Narrow})},
};

// Every item's bits fit the field.
constexpr bool fits(const Field& field, const Codec& codec) {
    for (int index = 0; index < itemCount(codec); ++index)
        if (((bitsOf(codec, index) << std::countr_zero(field.mask)) & ~field.mask) != 0)
            return false;
    return true;
}
// Each id's row is at the id's place, and every list fits its field.
constexpr bool tableIsSound() {
    for (std::size_t i = 0; i < std::size(kLists); ++i) {
        const OptionList& list = kLists[i];
        if (list.id != kAllOptions[i] || !fits(list.field, list.codec) ||
            (list.whileLongHit && !fits(list.field, *list.whileLongHit)))
            return false;
    }
    return std::size(kLists) == kAllOptions.size();
}
static_assert(tableIsSound());

const OptionList& listOf(OptionId id) {
    return kLists[static_cast<std::size_t>(id)];
}

const Codec& codecOf(const OptionList& list, const RadioImage& image) {
    return list.whileLongHit && monitorListIsShort(image) ? *list.whileLongHit : list.codec;
}

int fieldBits(const RadioImage& image, const Field& field) {
    return (image[field.offset] & field.mask) >> std::countr_zero(field.mask);
}

void setFieldBits(RadioImage& image, const Field& field, int bits) {
    const int shifted = bits << std::countr_zero(field.mask);
    image[field.offset] =
        static_cast<std::uint8_t>((image[field.offset] & ~field.mask) | (shifted & field.mask));
}

std::string word(int id, Language language) {
    return std::string(ResString(id, language));
}

std::string numberText(const Numbers& numbers, int value, Language language) {
    char text[16];
    if (numbers.tenths)
        std::snprintf(text, sizeof text, "%d.%d", value / 10, value % 10);
    else
        std::snprintf(text, sizeof text, "%d", value);
    if (numbers.unit == 0)
        return text;
    const std::string unit = word(numbers.unit, language);
    return numbers.place == Place::Before ? unit + text : text + unit;
}

} // namespace

std::string_view optionName(OptionId id) {
    return listOf(id).name;
}

int optionLabelId(OptionId id) {
    return listOf(id).label;
}

bool optionFromName(std::string_view name, OptionId& id) {
    for (const OptionList& list : kLists) {
        if (list.name == name) {
            id = list.id;
            return true;
        }
    }
    return false;
}

bool monitorListIsShort(const RadioImage& image) {
    return fieldBits(image, kPowerSel) == kLongHit;
}

void setRadioWideBandwidth(RadioImage& image, int index) {
    if (!encodeOption(OptionId::CboBandSel, image, index) || index != 1)
        return;
    for (int n = 1; n <= kChannelCount; ++n)
        ChannelRecord::channel(image, n).setNarrow(true);
}

void clearPowerSelection(RadioImage& image) {
    setFieldBits(image, kPowerSel, 0);
}

std::vector<std::string> optionItems(OptionId id, const RadioImage& image, Language language) {
    const Codec& codec = codecOf(listOf(id), image);
    std::vector<std::string> items;
    for (int index = 0; index < itemCount(codec); ++index) {
        if (index < wordCount(codec))
            items.push_back(word(codec.words[static_cast<std::size_t>(index)], language));
        else
            items.push_back(numberText(codec.numbers,
                                       storedNumber(codec, index) * codec.numbers.scale, language));
    }
    return items;
}

int decodeOption(OptionId id, const RadioImage& image) {
    const OptionList& list = listOf(id);
    const Codec& codec = codecOf(list, image);
    return codec.read(codec, fieldBits(image, list.field));
}

bool encodeOption(OptionId id, RadioImage& image, int index) {
    const OptionList& list = listOf(id);
    const Codec& codec = codecOf(list, image);
    if (index < 0 || index >= itemCount(codec))
        return false;
    setFieldBits(image, list.field, bitsOf(codec, index));
    return true;
}

} // namespace zr310
