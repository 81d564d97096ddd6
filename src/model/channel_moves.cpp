#include "channel_moves.h"

#include "channel.h"

#include <algorithm>
#include <cstdint>
#include <stdexcept>
#include <string>
#include <tuple>
#include <vector>

namespace zr310 {

namespace {

using Records = std::vector<ChannelBytes>;

void checkChannel(int channel) {
    if (channel < 1 || channel > kChannelCount)
        throw std::out_of_range("channel " + std::to_string(channel) + " is not 1..16");
}

Records allRecords(const RadioImage& image) {
    Records records;
    for (int n = 1; n <= kChannelCount; ++n)
        records.push_back(channelBytes(image, n));
    return records;
}

void putRecords(RadioImage& image, const Records& records) {
    for (int n = 1; n <= kChannelCount; ++n)
        setChannelBytes(image, n, records[static_cast<std::size_t>(n - 1)]);
}

Records::iterator channelAt(Records& records, int channel) {
    return records.begin() + (channel - 1);
}

// What a channel sorts by: closed channels last, all alike; open ones by a
// number (a frequency in hertz, a tone), then a text.
using SortKey = std::tuple<bool, std::uint64_t, std::string>;

SortKey sortKey(const RadioImage& image, int channel, ChannelField by) {
    const ChannelView record(image, channelColumn(channel));
    if (!record.isOpen())
        return {true, 0, {}}; // closed channels keep their order
    switch (by) {
    case ChannelField::RxFreq:
    case ChannelField::TxFreq: {
        const FrequencyCode code =
            record.frequency(by == ChannelField::RxFreq ? Side::Receive : Side::Transmit);
        return {false, std::uint64_t{code.steps} * (code.step625 ? 6250u : 5000u), {}};
    }
    case ChannelField::RxTone:
    case ChannelField::TxTone: {
        const Tone tone = record.tone(by == ChannelField::RxTone ? Side::Receive : Side::Transmit);
        return {false, std::uint64_t{static_cast<unsigned>(tone.kind)} << 16 | tone.value, {}};
    }
    default:
        return {false, 0, channelFieldText(image, channelColumn(channel), by, Language::English)};
    }
}

} // namespace

void swapChannels(RadioImage& image, int a, int b) {
    checkChannel(a);
    checkChannel(b);
    const ChannelBytes first = channelBytes(image, a);
    setChannelBytes(image, a, channelBytes(image, b));
    setChannelBytes(image, b, first);
}

void moveChannels(RadioImage& image, int first, int last, int to) {
    checkChannel(first);
    checkChannel(last);
    checkChannel(to);
    if (last < first)
        throw std::out_of_range("channels " + std::to_string(first) + "-" + std::to_string(last) +
                                " run backwards");
    if (to + (last - first) > kChannelCount)
        throw std::out_of_range("channels " + std::to_string(first) + "-" + std::to_string(last) +
                                " do not fit from channel " + std::to_string(to));
    Records records = allRecords(image);
    if (to < first)
        std::rotate(channelAt(records, to), channelAt(records, first),
                    channelAt(records, last + 1));
    else
        std::rotate(channelAt(records, first), channelAt(records, last + 1),
                    channelAt(records, last + 1 + (to - first)));
    putRecords(image, records);
}

void sortChannels(RadioImage& image, ChannelField by) {
    std::vector<std::pair<SortKey, ChannelBytes>> keyed;
    for (int n = 1; n <= kChannelCount; ++n)
        keyed.emplace_back(sortKey(image, n, by), channelBytes(image, n));
    std::stable_sort(keyed.begin(), keyed.end(),
                     [](const auto& a, const auto& b) { return a.first < b.first; });
    Records records;
    for (const auto& entry : keyed)
        records.push_back(entry.second);
    putRecords(image, records);
}

bool insertEmptyChannel(RadioImage& image, int at) {
    checkChannel(at);
    const bool pushedOutOpen = ChannelView(image, channelColumn(kChannelCount)).isOpen();
    Records records = allRecords(image);
    std::rotate(channelAt(records, at), channelAt(records, kChannelCount),
                channelAt(records, kChannelCount + 1));
    *channelAt(records, at) = channelBytes(makeStartImage(), at);
    putRecords(image, records);
    return pushedOutOpen;
}

void clearChannels(RadioImage& image, std::span<const int> channels) {
    std::for_each(channels.begin(), channels.end(), checkChannel);
    const RadioImage start = makeStartImage();
    for (int channel : channels)
        setChannelBytes(image, channel, channelBytes(start, channel));
}

} // namespace zr310
