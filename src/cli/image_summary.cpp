#include "image_summary.h"

#include "bands.h"
#include "radio_info.h"
#include "sizes.h"

namespace zr310 {

namespace {

ListChoice choiceOf(OptionId id, const RadioImage& image, Language language) {
    const int index = decodeOption(id, image);
    return {index, optionItems(id, image, language).at(toIndex(index))};
}

} // namespace

ImageSummary summarizeImage(const RadioImage& image, Language language) {
    ImageSummary summary;
    const int bandIndex = bandIndexFromImage(image);
    const Band& band = bandOfImage(image);
    summary.band = {bandIndex, std::string(band.text)};
    summary.bandRange = bandRangeText(band.text);
    summary.bandwidth = choiceOf(OptionId::CboBandSel, image, language);

    for (int n = 1; n <= kChannelCount; ++n)
        summary.channels.push_back(decodeChannel(image, channelColumn(n), language));

    for (OptionId id : kAllOptions)
        if (id != OptionId::CboBandSel)
            summary.options.push_back({id, choiceOf(id, image, language)});

    for (int t = 1; t <= kTestChannelCount; ++t) {
        const ChannelView record(image, testChannelColumn(t));
        summary.testChannels.push_back({decodeChannel(image, testChannelColumn(t), language),
                                        stepText(record.frequency(Side::Receive)),
                                        stepText(record.frequency(Side::Transmit))});
    }

    for (std::size_t i = 0; i < kTuningItems.size(); ++i)
        summary.tuning[i] = tuningValue(image, kTuningItems[i].item);

    summary.radioId = decodeRadioId(image);
    summary.writeDate = decodeWriteDate(image);
    summary.userText = decodeUserText(image);
    return summary;
}

} // namespace zr310
