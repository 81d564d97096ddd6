#include "channel_commands.h"

#include "channel.h"
#include "channel_list.h"
#include "channel_moves.h"
#include "cli_common.h"

#include <stdexcept>

namespace zr310 {

namespace {

std::vector<int> channelsArgument(const std::string& text, std::string_view what) {
    const auto channels = parseChannelList(text, kChannelCount);
    if (!channels)
        throw UsageError(std::string(what) + " '" + text +
                         "' is not channels 1..16 such as 3, 3-5 or 2,7");
    return *channels;
}

ChannelField sortField(const std::string& key) {
    std::string keys;
    for (ChannelField field : kChannelFields) {
        if (channelFieldKey(field) == key)
            return field;
        keys += (keys.empty() ? "" : ", ") + std::string(channelFieldKey(field));
    }
    throw UsageError("cannot sort by '" + key + "' (use " + keys + ")");
}

} // namespace

int runMoveCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const EditOptions options = takeEditOptions(args);
    if (args.size() != 3)
        throw UsageError("move needs a FILE, the channels FROM and the channel TO");
    const std::vector<int> from = channelsArgument(args[1], "FROM");
    const std::vector<int> to = channelsArgument(args[2], "TO");
    if (from.back() - from.front() + 1 != static_cast<int>(from.size()))
        throw UsageError("FROM '" + args[1] + "' is not one channel or a range such as 3-5");
    if (to.size() != 1)
        throw UsageError("TO '" + args[2] + "' is not one channel");
    return editImageFile(args[0], options, err, [&](RadioImage& image) {
        try {
            moveChannels(image, from.front(), from.back(), to.front());
        } catch (const std::out_of_range& e) {
            throw UsageError(e.what());
        }
        return kExitOk;
    });
}

int runSortCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const std::string by = takeValueOption(args, "--by");
    const EditOptions options = takeEditOptions(args);
    if (args.size() != 1)
        throw UsageError("sort needs exactly one FILE");
    const ChannelField field = by.empty() ? ChannelField::RxFreq : sortField(by);
    return editImageFile(args[0], options, err, [field](RadioImage& image) {
        sortChannels(image, field);
        return kExitOk;
    });
}

int runClearCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const EditOptions options = takeEditOptions(args);
    if (args.size() != 2)
        throw UsageError("clear needs a FILE and the CHANNELS to clear");
    const std::vector<int> channels = channelsArgument(args[1], "CHANNELS");
    return editImageFile(args[0], options, err, [&channels](RadioImage& image) {
        clearChannels(image, channels);
        return kExitOk;
    });
}

} // namespace zr310
