#pragma once

#include "image_edit.h"
#include "radio_image.h"
#include "string_table.h"

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// Whole channels on the clipboard, in two forms:
// - the program's own record: every byte of each channel's two columns, with
//   the band the channels were copied from;
// - tab-separated text in the channel grid's column order, one line per
//   channel ("CH 3", RX Freq, RX CTC/DCS, TX Freq, TX CTC/DCS, Scan, Busy
//   Lock, TX Power, W/N, Close, No TX), that a spreadsheet takes and gives back.

// The 16 bytes of one channel: its even and its odd column.
struct ChannelBytes {
    std::array<std::uint8_t, RadioImage::kBlocks> even{};
    std::array<std::uint8_t, RadioImage::kBlocks> odd{};

    bool operator==(const ChannelBytes&) const = default;
};

ChannelBytes channelBytes(const RadioImage& image, int channel); // channel 1..16
void setChannelBytes(RadioImage& image, int channel, const ChannelBytes& bytes);

// The program's own clipboard record.
struct ChannelRecords {
    std::uint8_t bandCode = 0; // the byte at 0x15A of the image they came from
    std::vector<ChannelBytes> channels;
};
inline constexpr std::string_view kChannelRecordsMimeType = "application/x-zr310-channels";

std::vector<std::uint8_t> encodeChannelRecords(const RadioImage& image,
                                               std::span<const int> channels);
// Nothing for bytes that are not a well-formed record (wrong marker, length
// or count).
std::optional<ChannelRecords> decodeChannelRecords(std::span<const std::uint8_t> bytes);

// The text form, lines ended by "\r\n" as spreadsheets write them. Close and
// No TX hold the legend word when checked and are empty when clear.
std::string channelRowsText(const RadioImage& image, std::span<const int> channels,
                            Language language);

// One channel of pasted text: the ten field texts in kChannelFields order.
struct ChannelRowTexts {
    int line = 0; // 1-based line of the pasted text
    std::array<std::string, kChannelFields.size()> fields;
};

// Splits pasted text into channel rows. Accepts "\r\n", "\n" or "\r" line
// ends, a trailing newline, blank lines, an optional header line (the grid's
// column captions in either language), with or without the leading "CH n"
// column, and without the Close and No TX columns (then the channel is in
// use and may transmit). Throws RowError for a line with a wrong number of
// columns; an empty result means the text held no rows at all.
std::vector<ChannelRowTexts> splitChannelRows(std::string_view text);

// Where pasted channels go: `count` rows from the first selected channel
// down; one copied channel onto several selected channels fills each of
// them. Returns the target channels, or nothing when the rows would run past
// CH 16.
std::optional<std::vector<int>> pasteTargets(int count, std::span<const int> selectedChannels);

// A pasted row that cannot be taken.
class RowError : public std::runtime_error {
public:
    RowError(int row, int channel, std::string message, std::optional<EditError> cause = {});
    int row() const { return m_row; }         // 1-based row of the paste (line for text)
    int channel() const { return m_channel; } // target channel, 0 when not known
    const std::optional<EditError>& cause() const { return m_cause; }

private:
    int m_row, m_channel;
    std::optional<EditError> m_cause;
};

// Puts text rows onto the target channels through setChannelField, all or
// nothing: the first row that cannot be taken throws RowError and the image
// is left as it was.
void pasteChannelRows(RadioImage& image, const std::vector<ChannelRowTexts>& rows,
                      std::span<const int> targets);

// Puts records onto the target channels, byte for byte.
void pasteChannelRecords(RadioImage& image, const ChannelRecords& records,
                         std::span<const int> targets);

} // namespace zr310
