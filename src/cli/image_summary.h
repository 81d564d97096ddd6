#pragma once

#include "channel.h"
#include "options.h"
#include "radio_image.h"
#include "string_table.h"
#include "tuning.h"

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace zr310 {

struct ListChoice {
    int index = 0;
    std::string text;
};

struct OptionChoice {
    OptionId id;
    ListChoice choice;
};

struct TestChannelSummary {
    ChannelTexts texts;
    std::string rxStep, txStep;
};

// Everything the main window shows for an image, decoded in one language.
struct ImageSummary {
    ListChoice band;
    std::string bandRange;
    ListChoice bandwidth; // the radio-wide W/N list
    std::vector<ChannelTexts> channels;
    std::vector<OptionChoice> options; // every option list but the W/N list
    std::vector<TestChannelSummary> testChannels;
    std::array<int, kTuningItems.size()> tuning{};
    std::string radioId;
    std::optional<std::string> writeDate;
    std::string userText;
};

ImageSummary summarizeImage(const RadioImage& image, Language language);

} // namespace zr310
