#include "channel_rows.h"

#include "bands.h"
#include "channel.h"

#include <algorithm>

namespace zr310 {

namespace {

// The record: the marker, the band code, the channel count, then the even and
// the odd column of each channel.
constexpr std::string_view kRecordMarker = "ZR310CH1";
constexpr std::size_t kRecordHeader = kRecordMarker.size() + 2;
constexpr std::size_t kBytesPerChannel = 2 * RadioImage::kBlocks;

// Value columns of a text row: without Close and No TX, without No TX, or all.
constexpr std::size_t kFewestValues = kChannelFields.size() - 2;

void checkChannel(int channel) {
    if (channel < 1 || channel > kChannelCount)
        throw std::out_of_range("channel " + std::to_string(channel) + " is not 1..16");
}

// Which row goes onto target i: the rows in order, or one row onto every target.
std::size_t rowForTarget(std::size_t rows, std::size_t targets, std::size_t i) {
    if (rows == 1)
        return 0;
    if (rows != targets)
        throw std::invalid_argument("pasted rows and target channels do not pair up");
    return i;
}

std::vector<std::string_view> splitTabs(std::string_view line) {
    std::vector<std::string_view> fields;
    std::size_t start = 0;
    for (;;) {
        const auto tab = line.find('\t', start);
        fields.push_back(line.substr(start, tab - start));
        if (tab == std::string_view::npos)
            return fields;
        start = tab + 1;
    }
}

// Lines of the text with their 1-based numbers; "\r\n", "\n" and "\r" each end a line.
std::vector<std::pair<int, std::string_view>> splitLines(std::string_view text) {
    std::vector<std::pair<int, std::string_view>> lines;
    std::size_t start = 0;
    int number = 1;
    while (start < text.size()) {
        auto end = text.find_first_of("\r\n", start);
        if (end == std::string_view::npos)
            end = text.size();
        lines.emplace_back(number++, text.substr(start, end - start));
        if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n')
            ++end;
        start = end + 1;
    }
    return lines;
}

// The grid's header line, recognised by its RX Freq caption in either language.
bool isHeader(const std::vector<std::string_view>& fields) {
    return std::any_of(fields.begin(), fields.end(), [](std::string_view field) {
        field = trimmed(field);
        return field == ResString(txt::RxFreq, Language::English) ||
               field == ResString(txt::RxFreq, Language::Chinese);
    });
}

bool isBlank(const std::vector<std::string_view>& fields) {
    return std::all_of(fields.begin(), fields.end(),
                       [](std::string_view field) { return trimmed(field).empty(); });
}

} // namespace

ChannelBytes channelBytes(const RadioImage& image, int channel) {
    checkChannel(channel);
    return {image.column(channelColumn(channel)), image.column(channelColumn(channel) + 1)};
}

void setChannelBytes(RadioImage& image, int channel, const ChannelBytes& bytes) {
    checkChannel(channel);
    image.setColumn(channelColumn(channel), bytes.even);
    image.setColumn(channelColumn(channel) + 1, bytes.odd);
}

std::vector<std::uint8_t> encodeChannelRecords(const RadioImage& image,
                                               std::span<const int> channels) {
    if (channels.empty() || channels.size() > static_cast<std::size_t>(kChannelCount))
        throw std::invalid_argument("a record holds 1 to 16 channels");
    std::vector<std::uint8_t> bytes(kRecordMarker.begin(), kRecordMarker.end());
    bytes.push_back(image[kBandCodeOffset]);
    bytes.push_back(static_cast<std::uint8_t>(channels.size()));
    for (int channel : channels) {
        const ChannelBytes record = channelBytes(image, channel);
        bytes.insert(bytes.end(), record.even.begin(), record.even.end());
        bytes.insert(bytes.end(), record.odd.begin(), record.odd.end());
    }
    return bytes;
}

std::optional<ChannelRecords> decodeChannelRecords(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < kRecordHeader ||
        !std::equal(kRecordMarker.begin(), kRecordMarker.end(), bytes.begin()))
        return std::nullopt;
    const std::size_t count = bytes[kRecordMarker.size() + 1];
    if (count < 1 || count > static_cast<std::size_t>(kChannelCount) ||
        bytes.size() != kRecordHeader + count * kBytesPerChannel)
        return std::nullopt;
    ChannelRecords records;
    records.bandCode = bytes[kRecordMarker.size()];
    for (std::size_t i = 0; i < count; ++i) {
        const auto channel = bytes.subspan(kRecordHeader + i * kBytesPerChannel, kBytesPerChannel);
        ChannelBytes record;
        std::copy_n(channel.begin(), RadioImage::kBlocks, record.even.begin());
        std::copy_n(channel.begin() + RadioImage::kBlocks, RadioImage::kBlocks, record.odd.begin());
        records.channels.push_back(record);
    }
    return records;
}

std::string channelRowsText(const RadioImage& image, std::span<const int> channels,
                            Language language) {
    std::string text;
    for (int channel : channels) {
        checkChannel(channel);
        text += std::string(ResString(txt::Channel, language)) + " " + std::to_string(channel);
        for (ChannelField field : kChannelFields)
            text += "\t" + channelFieldText(image, channelColumn(channel), field, language);
        text += "\r\n";
    }
    return text;
}

std::vector<ChannelRowTexts> splitChannelRows(std::string_view text) {
    std::vector<ChannelRowTexts> rows;
    for (const auto& [line, content] : splitLines(text)) {
        std::vector<std::string_view> fields = splitTabs(content);
        if (isBlank(fields) || isHeader(fields))
            continue;
        // The label column ("CH 3") is there when the first field is no frequency.
        if (!isPlainDecimalNumber(trimmed(fields.front())))
            fields.erase(fields.begin());
        if (fields.size() < kFewestValues || fields.size() > kChannelFields.size())
            throw RowError(line, 0,
                           "line " + std::to_string(line) + " has " +
                               std::to_string(fields.size()) + " values; a channel has " +
                               std::to_string(kFewestValues) + " to " +
                               std::to_string(kChannelFields.size()));
        ChannelRowTexts row;
        row.line = line;
        std::copy(fields.begin(), fields.end(), row.fields.begin());
        rows.push_back(std::move(row));
    }
    return rows;
}

std::optional<std::vector<int>> pasteTargets(int count, std::span<const int> selectedChannels) {
    if (count < 1 || selectedChannels.empty())
        return std::nullopt;
    std::vector<int> selected(selectedChannels.begin(), selectedChannels.end());
    std::sort(selected.begin(), selected.end());
    selected.erase(std::unique(selected.begin(), selected.end()), selected.end());
    if (selected.front() < 1 || selected.back() > kChannelCount)
        return std::nullopt;
    if (count == 1 && selected.size() > 1)
        return selected;
    // From the topmost selected channel down.
    if (selected.front() + count - 1 > kChannelCount)
        return std::nullopt;
    std::vector<int> targets;
    for (int i = 0; i < count; ++i)
        targets.push_back(selected.front() + i);
    return targets;
}

RowError::RowError(int row, int channel, std::string message, std::optional<EditError> cause)
    : std::runtime_error(std::move(message)), m_row(row), m_channel(channel),
      m_cause(std::move(cause)) {}

void pasteChannelRows(RadioImage& image, const std::vector<ChannelRowTexts>& rows,
                      std::span<const int> targets) {
    RadioImage pasted = image;
    for (std::size_t i = 0; i < targets.size(); ++i) {
        const std::size_t r = rowForTarget(rows.size(), targets.size(), i);
        const int channel = targets[i];
        checkChannel(channel);
        try {
            for (std::size_t f = 0; f < kChannelFields.size(); ++f)
                setChannelField(pasted, channelColumn(channel), kChannelFields[f],
                                rows[r].fields[f]);
        } catch (const EditError& e) {
            const int row = static_cast<int>(r) + 1;
            throw RowError(row, channel,
                           "row " + std::to_string(row) + " (CH " + std::to_string(channel) +
                               "): " + e.what(),
                           e);
        }
    }
    image = pasted;
}

void pasteChannelRecords(RadioImage& image, const ChannelRecords& records,
                         std::span<const int> targets) {
    RadioImage pasted = image;
    for (std::size_t i = 0; i < targets.size(); ++i)
        setChannelBytes(pasted, targets[i],
                        records.channels[rowForTarget(records.channels.size(), targets.size(), i)]);
    image = pasted;
}

} // namespace zr310
