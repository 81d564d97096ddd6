#include "channel_list.h"

#include <algorithm>

namespace zr310 {

namespace {

// "12" -> 12 when it is one or two digits and 1..count.
std::optional<int> channelNumber(std::string_view text, int count) {
    if (text.empty() || text.size() > 2)
        return std::nullopt;
    int n = 0;
    for (char c : text) {
        if (c < '0' || c > '9')
            return std::nullopt;
        n = n * 10 + (c - '0');
    }
    if (n < 1 || n > count)
        return std::nullopt;
    return n;
}

} // namespace

std::optional<std::vector<int>> parseChannelList(std::string_view text, int count) {
    std::vector<int> channels;
    std::size_t start = 0;
    for (;;) {
        const auto comma = text.find(',', start);
        const std::string_view item = text.substr(start, comma - start);
        const auto dash = item.find('-');
        const auto first = channelNumber(item.substr(0, dash), count);
        const auto last =
            dash == std::string_view::npos ? first : channelNumber(item.substr(dash + 1), count);
        if (!first || !last || *last < *first)
            return std::nullopt;
        for (int n = *first; n <= *last; ++n)
            channels.push_back(n);
        if (comma == std::string_view::npos)
            break;
        start = comma + 1;
    }
    std::sort(channels.begin(), channels.end());
    channels.erase(std::unique(channels.begin(), channels.end()), channels.end());
    return channels;
}

} // namespace zr310
