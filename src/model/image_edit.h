#pragma once

#include "channel.h"
#include "options.h"
#include "radio_image.h"
#include "string_table.h"

#include <array>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// The fields of a channel record in the channel grid's column order, then the
// two boxes beside the grid. Every editor that takes a channel field from a
// text (the grid, `zr310-cli set`, paste, CSV) goes through setChannelField.
enum class ChannelField {
    RxFreq,
    RxTone,
    TxFreq,
    TxTone,
    Scan,
    BusyLock,
    Power,
    Bandwidth,
    Close,
    NoTx
};

inline constexpr std::array<ChannelField, 10> kChannelFields{
    ChannelField::RxFreq, ChannelField::RxTone,   ChannelField::TxFreq, ChannelField::TxTone,
    ChannelField::Scan,   ChannelField::BusyLock, ChannelField::Power,  ChannelField::Bandwidth,
    ChannelField::Close,  ChannelField::NoTx};

// "rx_freq", "rx_tone", ... "close", "no_tx": the field's key on the command line.
std::string_view channelFieldKey(ChannelField field);

// The string id of the field's caption: the grid's column header (1204..1211)
// or the box's legend (1201 "Close", 1202 "No TX").
int channelFieldCaptionId(ChannelField field);

// A text that an editor cannot take. `subject` says which field or key; the
// message is English, for the command line; a window builds its own from
// value() and expected(). An empty expected() means the subject itself is
// not known (a `zr310-cli set` key that names nothing).
class EditError : public std::runtime_error {
public:
    EditError(std::string subject, std::string value, std::string expected);

    const std::string& subject() const { return m_subject; }
    const std::string& value() const { return m_value; }
    const std::string& expected() const { return m_expected; }

private:
    std::string m_subject, m_value, m_expected;
};

// The text without the blanks, tabs and line ends around it.
std::string_view trimmed(std::string_view text);

// Sets one field of the channel record at `evenColumn` (a channel or a test
// channel) from a text as the grid shows it, in either language and any
// letter case, with blanks around it ignored:
// - frequencies: a plain decimal number of MHz, then clamped to the image's
//   band and brought onto the 5 kHz / 6.25 kHz grids as the frequency box
//   does (validateFrequencyText);
// - tones: "OFF", "CTC " + a tone of the list, "DCS " / "-DCS " + three
//   octal digits;
// - Scan Add/Del, Busy Lock On/Off, TX Power High/Low, W/N Wide/Narrow;
// - Close and No TX: the legend word ("Close", "No TX" in either language),
//   true, yes, 1 or x for a checked box; empty, false, no or 0 for a clear one.
// Only the bytes and bits of that field change. Throws EditError and leaves
// the image unchanged when the text cannot be taken.
void setChannelField(RadioImage& image, int evenColumn, ChannelField field, std::string_view text);

// The text of a field as the grid shows it ("145.50000", "CTC 88.5", "Add",
// and for Close / No TX the legend word when checked, "" when clear).
std::string channelFieldText(const RadioImage& image, int evenColumn, ChannelField field,
                             Language language);

// Chooses an item of an option list by its index. The radio-wide W/N list
// also marks every channel narrow when it goes to Narrow. An index outside
// the list throws EditError.
void setOptionIndex(RadioImage& image, OptionId id, int index);
// The same by the item's text, in either language and any letter case.
void setOptionText(RadioImage& image, OptionId id, std::string_view text);

// Chooses the band by its list text ("136 - 174MHz"); throws EditError for
// a text not in the band list.
void setBandText(RadioImage& image, std::string_view text);

// One KEY=VALUE of `zr310-cli set`: "ch3.rx_freq", "tch2.tx_tone",
// "CboScan", "CboBand", "tuning.battery", "user_text". A channel or test
// channel key may name a range or a list ("ch1-8.power", "ch2,5,9.rx_tone",
// parseChannelList): the value is set on each channel in turn, as the key of
// that one channel would set it. Throws EditError naming the key (for a range,
// the first channel that refuses, "ch5.rx_tone") or the value; the image is
// then unchanged.
void applyImageEdit(RadioImage& image, std::string_view key, std::string_view value);

// A key applyImageEdit takes and what it takes for it, in English, for the
// help of `zr310-cli set`. `key` is as typed, but for "ch{1..16}." and
// "tch{1..11}." standing for each channel or test channel. `values` are
// texts the key takes, where "..." stands for the items between its
// neighbours; `note` says what else is taken, or what a value does.
struct EditKeyHelp {
    std::string key;
    std::vector<std::string> values;
    std::string note;
};

// Every key, in the order of the window: channel fields, test channel
// fields, the band, the option lists, tuning values, the user text.
std::vector<EditKeyHelp> imageEditKeys();

} // namespace zr310
