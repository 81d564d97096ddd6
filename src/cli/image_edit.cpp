#include "image_edit.h"

#include "bands.h"
#include "channel.h"
#include "cli_common.h"
#include "options.h"
#include "radio_info.h"
#include "tuning.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <optional>
#include <string>

namespace zr310 {

namespace {

bool sameWord(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

[[noreturn]] void badValue(std::string_view key, std::string_view value,
                           std::string_view expected) {
    throw UsageError("invalid value '" + std::string(value) + "' for " + std::string(key) +
                     " (expected " + std::string(expected) + ")");
}

[[noreturn]] void unknownKey(std::string_view key) {
    throw UsageError("unknown key '" + std::string(key) + "'");
}

// Picks between two words, e.g. Add/Del; returns true for `whenTrue`.
bool chooseWord(std::string_view key, std::string_view value, std::string_view whenTrue,
                std::string_view whenFalse) {
    if (sameWord(value, whenTrue))
        return true;
    if (sameWord(value, whenFalse))
        return false;
    badValue(key, value, std::string(whenTrue) + " or " + std::string(whenFalse));
}

bool isDecimalNumber(std::string_view text) {
    const auto point = std::count(text.begin(), text.end(), '.');
    const auto digits = std::count_if(text.begin(), text.end(), [](char c) {
        return std::isdigit(static_cast<unsigned char>(c));
    });
    return digits > 0 && point <= 1 && digits + point == static_cast<long>(text.size());
}

// "ch12" -> 12 when 1 <= n <= count.
std::optional<int> numberAfter(std::string_view prefix, std::string_view text, int count) {
    if (text.substr(0, prefix.size()) != prefix || text.size() == prefix.size() ||
        text.size() > prefix.size() + 2)
        return std::nullopt;
    int n = 0;
    for (char c : text.substr(prefix.size())) {
        if (!std::isdigit(static_cast<unsigned char>(c)))
            return std::nullopt;
        n = n * 10 + (c - '0');
    }
    if (n < 1 || n > count)
        return std::nullopt;
    return n;
}

void editFrequency(RadioImage& image, ChannelRecord record, Side side, std::string_view key,
                   std::string_view value) {
    if (!isDecimalNumber(value))
        badValue(key, value, "a frequency in MHz, such as 145.5");
    const BandLimits limits = kBands[bandIndexFromImage(image)].limits;
    const std::string accepted = validateFrequencyText(value, limits);
    record.setFrequency(side, leadingNumber(accepted));
}

void editTone(ChannelRecord record, Side side, std::string_view key, std::string_view value) {
    const auto tone = parseToneText(value);
    if (!tone)
        badValue(key, value, "OFF, CTC 88.5, DCS 023 or -DCS 023");
    record.setTone(side, *tone);
}

// Fields shared by channels and test channels; returns false for other fields.
bool editRecordField(RadioImage& image, ChannelRecord record, std::string_view field,
                     std::string_view key, std::string_view value) {
    if (field == "rx_freq" || field == "tx_freq")
        editFrequency(image, record, field[0] == 'r' ? Side::Receive : Side::Transmit, key, value);
    else if (field == "rx_tone" || field == "tx_tone")
        editTone(record, field[0] == 'r' ? Side::Receive : Side::Transmit, key, value);
    else if (field == "close")
        record.setOpen(!chooseWord(key, value, "true", "false"));
    else if (field == "no_tx")
        record.setTxAllowed(!chooseWord(key, value, "true", "false"));
    else
        return false;
    return true;
}

bool editChannelOnlyField(ChannelRecord record, std::string_view field, std::string_view key,
                          std::string_view value) {
    if (field == "scan")
        record.setScanDeleted(chooseWord(key, value, "Del", "Add"));
    else if (field == "busy_lock")
        record.setBusyLock(chooseWord(key, value, "On", "Off"));
    else if (field == "power")
        record.setLowPower(chooseWord(key, value, "Low", "High"));
    else if (field == "bandwidth")
        record.setNarrow(chooseWord(key, value, "Narrow", "Wide"));
    else
        return false;
    return true;
}

bool editRecord(RadioImage& image, std::string_view key, std::string_view value) {
    const auto dot = key.find('.');
    if (dot == std::string_view::npos)
        return false;
    const std::string_view record = key.substr(0, dot);
    const std::string_view field = key.substr(dot + 1);
    if (const auto n = numberAfter("ch", record, kChannelCount)) {
        const ChannelRecord channel = ChannelRecord::channel(image, *n);
        return editRecordField(image, channel, field, key, value) ||
               editChannelOnlyField(channel, field, key, value);
    }
    if (const auto t = numberAfter("tch", record, kTestChannelCount))
        return editRecordField(image, ChannelRecord::testChannel(image, *t), field, key, value);
    return false;
}

int itemIndex(const std::vector<std::string>& items, std::string_view key, std::string_view value) {
    for (std::size_t i = 0; i < items.size(); ++i)
        if (sameWord(items[i], value))
            return static_cast<int>(i);
    std::string expected = "one of: ";
    for (std::size_t i = 0; i < items.size(); ++i) {
        if (i == 8 && items.size() > 10) {
            expected += ", ... " + items.back();
            break;
        }
        expected += (i ? ", " : "") + items[i];
    }
    badValue(key, value, expected);
}

bool editList(RadioImage& image, std::string_view key, std::string_view value) {
    if (key == "CboBand") {
        std::vector<std::string> texts;
        for (const Band& band : kBands)
            texts.emplace_back(band.text);
        setBand(image, itemIndex(texts, key, value));
        return true;
    }
    OptionId id;
    if (!optionFromName(key, id))
        return false;
    const int index = itemIndex(optionItems(id, image, Language::English), key, value);
    if (id == OptionId::CboBandSel)
        setRadioWideBandwidth(image, index);
    else
        encodeOption(id, image, index);
    return true;
}

bool editTuning(RadioImage& image, std::string_view key, std::string_view value) {
    constexpr std::string_view kPrefix = "tuning.";
    if (key.substr(0, kPrefix.size()) != kPrefix)
        return false;
    const auto item =
        std::find_if(kTuningItems.begin(), kTuningItems.end(), [&](const TuningItemInfo& info) {
            return info.key == key.substr(kPrefix.size());
        });
    if (item == kTuningItems.end())
        return false;
    const bool digitsOnly =
        !value.empty() && value.size() <= 3 && std::all_of(value.begin(), value.end(), [](char c) {
            return std::isdigit(static_cast<unsigned char>(c));
        });
    if (!digitsOnly || std::stoi(std::string(value)) > 255)
        badValue(key, value, "a whole number from 0 to 255");
    setTuningValue(image, item->item, static_cast<std::uint8_t>(std::stoi(std::string(value))));
    return true;
}

bool editUserText(RadioImage& image, std::string_view key, std::string_view value) {
    if (key != "user_text")
        return false;
    const int length = utf16Length(value);
    if (length < 0)
        badValue(key, value, "UTF-8 text");
    if (length > kUserTextLength)
        badValue(key, value, "at most 96 characters");
    encodeUserText(image, value);
    return true;
}

} // namespace

void applyImageEdit(RadioImage& image, std::string_view key, std::string_view value) {
    RadioImage edited = image;
    const bool known = editRecord(edited, key, value) || editList(edited, key, value) ||
                       editTuning(edited, key, value) || editUserText(edited, key, value);
    if (!known)
        unknownKey(key);
    image = edited;
}

} // namespace zr310
