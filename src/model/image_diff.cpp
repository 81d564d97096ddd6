#include "image_diff.h"

#include "bands.h"
#include "channel.h"
#include "image_edit.h"
#include "options.h"
#include "radio_info.h"
#include "sizes.h"
#include "tuning.h"

#include <cstdio>
#include <functional>

namespace zr310 {

namespace {

using TextOf = std::function<std::string(const RadioImage&)>;
using Edit = std::function<void(RadioImage&)>;

constexpr int kRadioIdBytes = 16;
constexpr int kWriteDateBytes = 14;

// A shown field: its key, its text and the bits of the image it is made of
// (a RadioImage used as a bit mask).
struct Field {
    std::string key;
    TextOf text;
    RadioImage bits;
};

// The bits an edit writes: what it changes in an image of zeros and in one of
// ones. Any value written into a bit shows in one of the two. The probes are
// on the band 450 - 470 MHz, so a frequency there needs bit 16 of its count.
RadioImage bitsWritten(const Edit& edit) {
    RadioImage bits;
    for (const std::uint8_t fill : {std::uint8_t{0x00}, std::uint8_t{0xFF}}) {
        RadioImage probe;
        probe.fill(fill);
        setBand(probe, kFallbackBandIndex);
        const RadioImage before = probe;
        edit(probe);
        for (std::size_t i = 0; i < RadioImage::kSize; ++i)
            bits[i] = static_cast<std::uint8_t>(bits[i] | (before[i] ^ probe[i]));
    }
    return bits;
}

RadioImage addressRange(int first, int count) {
    RadioImage bits;
    for (int address = first; address < first + count; ++address)
        bits.setAtAddress(address, 0xFF);
    return bits;
}

// A value of each field the probes can write: it only has to be accepted.
std::string_view probeText(ChannelField field) {
    switch (field) {
    case ChannelField::RxFreq:
    case ChannelField::TxFreq:
        return "465";
    case ChannelField::RxTone:
    case ChannelField::TxTone:
        return "CTC 88.5";
    case ChannelField::Scan:
        return "Add";
    case ChannelField::BusyLock:
        return "Off";
    case ChannelField::Power:
        return "High";
    case ChannelField::Bandwidth:
        return "Wide";
    case ChannelField::Close:
    case ChannelField::NoTx:
        return "x";
    }
    return {};
}

bool isTestChannelField(ChannelField field) {
    return field == ChannelField::RxFreq || field == ChannelField::RxTone ||
           field == ChannelField::TxFreq || field == ChannelField::TxTone ||
           field == ChannelField::Close || field == ChannelField::NoTx;
}

void addRecordFields(std::vector<Field>& fields, const std::string& prefix, int number, int column,
                     bool testChannel) {
    for (ChannelField field : kChannelFields) {
        if (testChannel && !isTestChannelField(field))
            continue;
        const std::string key =
            prefix + std::to_string(number) + "." + std::string(channelFieldKey(field));
        const bool checkBox = field == ChannelField::Close || field == ChannelField::NoTx;
        TextOf text = [column, field, checkBox](const RadioImage& image) {
            const std::string shown = channelFieldText(image, column, field, Language::English);
            if (checkBox)
                return std::string(shown.empty() ? "false" : "true");
            return shown;
        };
        const std::string value(probeText(field));
        fields.push_back({key, text, bitsWritten([&](RadioImage& image) {
                              applyImageEdit(image, key, value);
                          })});
    }
}

std::vector<Field> makeFields() {
    std::vector<Field> fields;
    for (int n = 1; n <= kChannelCount; ++n)
        addRecordFields(fields, "ch", n, channelColumn(n), false);
    for (int t = 1; t <= kTestChannelCount; ++t)
        addRecordFields(fields, "tch", t, testChannelColumn(t), true);

    RadioImage bandBits;
    bandBits[kBandCodeOffset] = 0xFF;
    fields.push_back({"CboBand",
                      [](const RadioImage& image) { return std::string(bandOfImage(image).text); },
                      bandBits});
    for (OptionId id : kAllOptions) {
        TextOf text = [id](const RadioImage& image) {
            return optionItems(id, image, Language::English)[toIndex(decodeOption(id, image))];
        };
        fields.push_back({std::string(optionName(id)), text,
                          bitsWritten([id](RadioImage& image) { encodeOption(id, image, 0); })});
    }
    for (const TuningItemInfo& info : kTuningItems) {
        const TuningItem item = info.item;
        fields.push_back(
            {"tuning." + std::string(info.key),
             [item](const RadioImage& image) { return std::to_string(tuningValue(image, item)); },
             bitsWritten([item](RadioImage& image) { setTuningValue(image, item, 0); })});
    }
    fields.push_back({"radio_id", decodeRadioId, addressRange(kRadioIdAddress, kRadioIdBytes)});
    fields.push_back({"write_date",
                      [](const RadioImage& image) { return decodeWriteDate(image).value_or(""); },
                      addressRange(kWriteDateAddress, kWriteDateBytes)});
    fields.push_back({"user_text", decodeUserText,
                      bitsWritten([](RadioImage& image) { encodeUserText(image, "A"); })});
    return fields;
}

const std::vector<Field>& shownFields() {
    static const std::vector<Field> fields = makeFields();
    return fields;
}

std::string hex(int value, int digits) {
    char text[16];
    std::snprintf(text, sizeof text, "0x%0*X", digits, value);
    return text;
}

} // namespace

std::vector<ImageDifference> diffImages(const RadioImage& a, const RadioImage& b) {
    std::vector<ImageDifference> differences;
    if (a == b)
        return differences;
    RadioImage explained;
    for (const Field& field : shownFields()) {
        std::string textA = field.text(a);
        std::string textB = field.text(b);
        if (textA == textB)
            continue;
        differences.push_back({field.key, std::move(textA), std::move(textB)});
        for (std::size_t i = 0; i < RadioImage::kSize; ++i)
            explained[i] |= field.bits[i];
    }
    for (int address = 0; address < static_cast<int>(RadioImage::kSize); ++address) {
        const std::uint8_t byteA = a.atAddress(address);
        const std::uint8_t byteB = b.atAddress(address);
        if (((byteA ^ byteB) & ~explained.atAddress(address)) == 0)
            continue;
        differences.push_back({"byte " + hex(address, 3), hex(byteA, 2), hex(byteB, 2)});
    }
    return differences;
}

} // namespace zr310
