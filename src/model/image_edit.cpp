#include "image_edit.h"

#include "bands.h"
#include "channel_list.h"
#include "radio_info.h"
#include "tones.h"
#include "tuning.h"

#include <algorithm>
#include <cctype>
#include <optional>

namespace zr310 {

namespace {

// Keys and captions in kChannelFields order.
constexpr std::string_view kKeys[] = {"rx_freq",   "rx_tone", "tx_freq",   "tx_tone", "scan",
                                      "busy_lock", "power",   "bandwidth", "close",   "no_tx"};
constexpr int kCaptionIds[] = {txt::RxFreq,     txt::RxTone,   txt::TxFreq,  txt::TxTone,
                               txt::ScanDelAdd, txt::BusyLock, txt::TxPower, txt::WideNarrow,
                               txt::Close,      txt::NoTx};

// The texts a check box takes besides its legend word (and empty for clear).
constexpr std::string_view kCheckedWords[] = {"true", "yes", "1", "x"};
constexpr std::string_view kClearWords[] = {"false", "no", "0"};

// The words of a two-word field (Scan, BusyLock, Power, Bandwidth): the one
// for the bit set, then the one for it clear.
struct FieldWords {
    int set;
    int clear;
};

FieldWords wordsOf(ChannelField field) {
    switch (field) {
    case ChannelField::Scan:
        return {txt::Del, txt::Add};
    case ChannelField::BusyLock:
        return {txt::On, txt::Off};
    case ChannelField::Power:
        return {txt::Low, txt::High};
    default:
        return {txt::Narrow, txt::Wide};
    }
}

std::string englishWord(int id) {
    return std::string(ResString(id, Language::English));
}

template <typename Words> std::string joined(const Words& words, std::string_view separator) {
    std::string text;
    for (const auto& word : words)
        text += (text.empty() ? "" : std::string(separator)) + std::string(word);
    return text;
}

std::string editMessage(const std::string& subject, const std::string& value,
                        const std::string& expected) {
    if (expected.empty())
        return "unknown key '" + subject + "'";
    return "invalid value '" + value + "' for " + subject + " (expected " + expected + ")";
}

[[noreturn]] void badValue(std::string_view subject, std::string_view value,
                           std::string_view expected) {
    throw EditError(std::string(subject), std::string(value), std::string(expected));
}

// Equal but for the letter case of ASCII letters; other bytes (Chinese) must match.
bool sameWord(std::string_view a, std::string_view b) {
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               return std::tolower(static_cast<unsigned char>(x)) ==
                      std::tolower(static_cast<unsigned char>(y));
           });
}

// The text of string `id` in either language.
bool isWord(std::string_view text, int id) {
    return sameWord(text, ResString(id, Language::English)) ||
           sameWord(text, ResString(id, Language::Chinese));
}

Side sideOf(ChannelField field) {
    return field == ChannelField::RxFreq || field == ChannelField::RxTone ? Side::Receive
                                                                          : Side::Transmit;
}

void setFrequencyField(RadioImage& image, ChannelRecord record, Side side, std::string_view text,
                       std::string_view subject, std::string_view original) {
    if (!isPlainDecimalNumber(text))
        badValue(subject, original, "a frequency in MHz, such as 145.5");
    const BandLimits limits = bandOfImage(image).limits;
    record.setFrequency(side, leadingNumber(validateFrequencyText(text, limits)));
}

void setToneField(ChannelRecord record, Side side, std::string_view text, std::string_view subject,
                  std::string_view original) {
    std::string upper(text);
    std::transform(upper.begin(), upper.end(), upper.begin(),
                   [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    const auto tone = parseToneText(upper);
    if (!tone)
        badValue(subject, original, "OFF, CTC 88.5, DCS 023 or -DCS 023");
    record.setTone(side, *tone);
}

// A two-word field such as Del/Add: true for the word of the bit set.
bool chooseWord(std::string_view text, ChannelField field, std::string_view original) {
    const FieldWords words = wordsOf(field);
    if (isWord(text, words.set))
        return true;
    if (isWord(text, words.clear))
        return false;
    badValue(channelFieldKey(field), original,
             englishWord(words.set) + " or " + englishWord(words.clear));
}

template <typename Words> bool isAnyOf(std::string_view text, const Words& words) {
    return std::any_of(std::begin(words), std::end(words),
                       [text](std::string_view word) { return sameWord(text, word); });
}

// A check box: its legend word or true/yes/1/x when checked, empty or
// false/no/0 when clear. On/Off is not taken: the Chinese "Off" is the
// Chinese "Close" too, and would mean both.
bool chooseChecked(std::string_view text, int legendId, std::string_view subject,
                   std::string_view original) {
    if (isWord(text, legendId) || isAnyOf(text, kCheckedWords))
        return true;
    if (text.empty() || isAnyOf(text, kClearWords))
        return false;
    badValue(subject, original,
             englishWord(legendId) + ", " + joined(kCheckedWords, ", ") + "; or empty, " +
                 joined(kClearWords, ", "));
}

// The index of `text` in a list, looked up in English and then in Chinese.
int itemIndex(const std::vector<std::string>& english, const std::vector<std::string>& chinese,
              std::string_view subject, std::string_view original) {
    const std::string_view text = trimmed(original);
    for (const auto* items : {&english, &chinese})
        for (std::size_t i = 0; i < items->size(); ++i)
            if (sameWord((*items)[i], text))
                return static_cast<int>(i);
    std::string expected = "one of: ";
    for (std::size_t i = 0; i < english.size(); ++i) {
        if (i == 8 && english.size() > 10) {
            expected += ", ... " + english.back();
            break;
        }
        expected += (i ? ", " : "") + english[i];
    }
    badValue(subject, original, expected);
}

// "ch12", "ch1-8" or "ch2,5,9" -> the channels when each is 1..count.
std::optional<std::vector<int>> channelsAfter(std::string_view prefix, std::string_view text,
                                              int count) {
    if (text.substr(0, prefix.size()) != prefix)
        return std::nullopt;
    return parseChannelList(text.substr(prefix.size()), count);
}

std::optional<ChannelField> fieldOfKey(std::string_view key) {
    for (ChannelField field : kChannelFields)
        if (channelFieldKey(field) == key)
            return field;
    return std::nullopt;
}

// Test channels have no option byte of their own: only frequencies, tones,
// Close and No TX.
bool testChannelHas(ChannelField field) {
    return field == ChannelField::RxFreq || field == ChannelField::RxTone ||
           field == ChannelField::TxFreq || field == ChannelField::TxTone ||
           field == ChannelField::Close || field == ChannelField::NoTx;
}

// "ch3.rx_freq", "ch1-8.power" or "tch2,5.close"; false when the key names no
// record field. A list of channels takes the value on each in turn; the first
// that refuses it is named by its own key ("ch5.rx_tone").
bool editRecord(RadioImage& image, std::string_view key, std::string_view value) {
    const auto dot = key.find('.');
    if (dot == std::string_view::npos)
        return false;
    const std::string_view fieldKey = key.substr(dot + 1);
    const auto field = fieldOfKey(fieldKey);
    if (!field)
        return false;
    const std::string_view records = key.substr(0, dot);
    std::string_view prefix = "ch";
    int (*column)(int) = channelColumn;
    auto numbers = channelsAfter(prefix, records, kChannelCount);
    if (!numbers && testChannelHas(*field)) {
        prefix = "tch";
        column = testChannelColumn;
        numbers = channelsAfter(prefix, records, kTestChannelCount);
    }
    if (!numbers)
        return false;
    for (int n : *numbers) {
        try {
            setChannelField(image, column(n), *field, value);
        } catch (const EditError& e) {
            badValue(std::string(prefix) + std::to_string(n) + "." + std::string(fieldKey),
                     e.value(), e.expected());
        }
    }
    return true;
}

bool editList(RadioImage& image, std::string_view key, std::string_view value) {
    if (key == "CboBand") {
        setBandText(image, value);
        return true;
    }
    OptionId id;
    if (!optionFromName(key, id))
        return false;
    setOptionText(image, id, value);
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
    const std::string_view digits = trimmed(value);
    const bool digitsOnly = !digits.empty() && digits.size() <= 3 &&
                            std::all_of(digits.begin(), digits.end(), [](char c) {
                                return std::isdigit(static_cast<unsigned char>(c));
                            });
    const int number = digitsOnly ? std::stoi(std::string(digits)) : -1;
    if (number < 0 || number > 255)
        badValue(key, value, "a whole number from 0 to 255");
    setTuningValue(image, item->item, static_cast<std::uint8_t>(number));
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

std::string_view trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n";
    const auto first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

EditError::EditError(std::string subject, std::string value, std::string expected)
    : std::runtime_error(editMessage(subject, value, expected)), m_subject(std::move(subject)),
      m_value(std::move(value)), m_expected(std::move(expected)) {}

std::string_view channelFieldKey(ChannelField field) {
    return kKeys[static_cast<int>(field)];
}

int channelFieldCaptionId(ChannelField field) {
    return kCaptionIds[static_cast<int>(field)];
}

void setChannelField(RadioImage& image, int evenColumn, ChannelField field, std::string_view text) {
    // Every field is checked before its first byte is written, so a refused
    // text leaves the image as it was.
    const std::string_view subject = channelFieldKey(field);
    const std::string_view value = trimmed(text);
    ChannelRecord record(image, evenColumn);
    switch (field) {
    case ChannelField::RxFreq:
    case ChannelField::TxFreq:
        setFrequencyField(image, record, sideOf(field), value, subject, text);
        break;
    case ChannelField::RxTone:
    case ChannelField::TxTone:
        setToneField(record, sideOf(field), value, subject, text);
        break;
    case ChannelField::Scan:
        record.setScanDeleted(chooseWord(value, field, text));
        break;
    case ChannelField::BusyLock:
        record.setBusyLock(chooseWord(value, field, text));
        break;
    case ChannelField::Power:
        record.setLowPower(chooseWord(value, field, text));
        break;
    case ChannelField::Bandwidth:
        record.setNarrow(chooseWord(value, field, text));
        break;
    case ChannelField::Close:
        record.setOpen(!chooseChecked(value, txt::Close, subject, text));
        break;
    case ChannelField::NoTx:
        record.setTxAllowed(!chooseChecked(value, txt::NoTx, subject, text));
        break;
    }
}

std::string channelFieldText(const RadioImage& image, int evenColumn, ChannelField field,
                             Language language) {
    const ChannelView record(image, evenColumn);
    auto word = [language](int id) { return std::string(ResString(id, language)); };
    switch (field) {
    case ChannelField::RxFreq:
    case ChannelField::TxFreq:
        return formatFrequency(frequencyMHz(record.frequency(sideOf(field))));
    case ChannelField::RxTone:
    case ChannelField::TxTone:
        return toneText(record.tone(sideOf(field)));
    case ChannelField::Scan:
        return word(record.scanDeleted() ? txt::Del : txt::Add);
    case ChannelField::BusyLock:
        return word(record.busyLock() ? txt::On : txt::Off);
    case ChannelField::Power:
        return word(record.lowPower() ? txt::Low : txt::High);
    case ChannelField::Bandwidth:
        return word(record.narrow() ? txt::Narrow : txt::Wide);
    case ChannelField::Close:
        return record.isOpen() ? std::string() : word(txt::Close);
    case ChannelField::NoTx:
        return record.txAllowed() ? std::string() : word(txt::NoTx);
    }
    return {};
}

void setOptionIndex(RadioImage& image, OptionId id, int index) {
    const auto count = static_cast<int>(optionItems(id, image, Language::English).size());
    if (index < 0 || index >= count)
        badValue(optionName(id), std::to_string(index),
                 "an index from 0 to " + std::to_string(count - 1));
    if (id == OptionId::CboBandSel)
        setRadioWideBandwidth(image, index);
    else
        encodeOption(id, image, index);
}

void setOptionText(RadioImage& image, OptionId id, std::string_view text) {
    const int index = itemIndex(optionItems(id, image, Language::English),
                                optionItems(id, image, Language::Chinese), optionName(id), text);
    setOptionIndex(image, id, index);
}

void setBandText(RadioImage& image, std::string_view text) {
    std::vector<std::string> texts;
    for (const Band& band : kBands)
        texts.emplace_back(band.text);
    setBand(image, itemIndex(texts, texts, "CboBand", text));
}

void applyImageEdit(RadioImage& image, std::string_view key, std::string_view value) {
    RadioImage edited = image;
    const bool known = editRecord(edited, key, value) || editList(edited, key, value) ||
                       editTuning(edited, key, value) || editUserText(edited, key, value);
    if (!known)
        throw EditError(std::string(key), std::string(value), {});
    image = edited;
}

namespace {

// Lists longer than this show their first items, "..." and the last.
constexpr std::size_t kLongList = 12;

std::vector<std::string> shortened(std::vector<std::string> items) {
    if (items.size() <= kLongList)
        return items;
    const std::string last = items.back();
    items.resize(3);
    items.insert(items.end(), {"...", last});
    return items;
}

// "CTC 67.0", "...", "CTC 254.1": the first and last tone of a list as shown.
std::vector<std::string> firstToLast(ToneKind kind, const std::vector<std::string>& list,
                                     std::uint16_t (*value)(std::string_view)) {
    return {toneText({kind, value(list.front())}), "...", toneText({kind, value(list.back())})};
}

EditKeyHelp fieldHelp(ChannelField field, std::string_view record, int count) {
    EditKeyHelp help{std::string(record) + "{1.." + std::to_string(count) + "}." +
                         std::string(channelFieldKey(field)),
                     {},
                     {}};
    switch (field) {
    case ChannelField::RxFreq:
    case ChannelField::TxFreq:
        help.values = {"145.5"};
        help.note = "any frequency in MHz, brought into the file's band and onto its "
                    "5 / 6.25 kHz steps";
        break;
    case ChannelField::RxTone:
    case ChannelField::TxTone: {
        const auto tones = SetQtcodeArray();
        const auto codes = SetDQtcodeArray();
        help.values = {toneText(Tone{})};
        for (const auto& part : {firstToLast(ToneKind::Ctcss, tones, ctcssValue),
                                 firstToLast(ToneKind::Dcs, codes, dcsValue),
                                 firstToLast(ToneKind::DcsInverted, codes, dcsValue)})
            help.values.insert(help.values.end(), part.begin(), part.end());
        help.note = "CTC: one of the " + std::to_string(tones.size()) +
                    " tones; DCS and -DCS: three octal digits";
        break;
    }
    case ChannelField::Close:
    case ChannelField::NoTx:
        help.values = {englishWord(channelFieldCaptionId(field))};
        help.values.insert(help.values.end(), std::begin(kCheckedWords), std::end(kCheckedWords));
        help.values.insert(help.values.end(), std::begin(kClearWords), std::end(kClearWords));
        help.note = "checks the box with " + help.values.front() + ", " +
                    joined(kCheckedWords, ", ") + "; clears it with " + joined(kClearWords, ", ") +
                    " or nothing";
        break;
    default:
        help.values = {englishWord(wordsOf(field).set), englishWord(wordsOf(field).clear)};
        break;
    }
    return help;
}

// The monitor list is short while power selection is on the long press:
// the full list, and a note naming that choice and the short list.
EditKeyHelp monitorHelp() {
    EditKeyHelp help{std::string(optionName(OptionId::CboMoni)), {}, {}};
    RadioImage image = makeStartImage();
    const auto choices = optionItems(OptionId::CboPowSel, image, Language::English);
    for (std::size_t i = 0; i < choices.size(); ++i) {
        encodeOption(OptionId::CboPowSel, image, static_cast<int>(i));
        const auto items = optionItems(OptionId::CboMoni, image, Language::English);
        if (!monitorListIsShort(image))
            help.values = items;
        else
            help.note = "only " + joined(items, " or ") + " while " +
                        std::string(optionName(OptionId::CboPowSel)) + " is " + choices[i];
    }
    return help;
}

EditKeyHelp optionHelp(OptionId id) {
    EditKeyHelp help =
        id == OptionId::CboMoni
            ? monitorHelp()
            : EditKeyHelp{std::string(optionName(id)),
                          shortened(optionItems(id, makeStartImage(), Language::English)),
                          {}};
    const std::string label = englishWord(optionLabelId(id));
    help.note = help.note.empty() ? label : label + "; " + help.note;
    return help;
}

} // namespace

std::vector<EditKeyHelp> imageEditKeys() {
    std::vector<EditKeyHelp> keys;
    for (ChannelField field : kChannelFields)
        keys.push_back(fieldHelp(field, "ch", kChannelCount));
    for (ChannelField field : kChannelFields)
        if (testChannelHas(field))
            keys.push_back(fieldHelp(field, "tch", kTestChannelCount));
    EditKeyHelp band{"CboBand", {}, "the band"};
    for (const Band& entry : kBands)
        band.values.emplace_back(entry.text);
    keys.push_back(band);
    for (OptionId id : kAllOptions)
        keys.push_back(optionHelp(id));
    for (const TuningItemInfo& info : kTuningItems)
        keys.push_back({"tuning." + std::string(info.key), {"0", "...", "255"}, {}});
    keys.push_back({"user_text",
                    {"Fleet 7"},
                    "any text of at most " + std::to_string(kUserTextLength) + " characters"});
    return keys;
}

} // namespace zr310
