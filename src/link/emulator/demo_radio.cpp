#include "demo_radio.h"

#include "bands.h"
#include "channel.h"
#include "radio_info.h"
#include "tuning.h"

#include <string_view>

namespace zr310 {

namespace {

struct DemoChannel {
    double rxMHz, txMHz;
    Tone rxTone, txTone;
    bool narrow, lowPower, busyLock;
};

Tone ctcss(std::string_view hz) {
    return {ToneKind::Ctcss, ctcssValue(hz)};
}
Tone dcs(std::string_view code) {
    return {ToneKind::Dcs, dcsValue(code)};
}

} // namespace

RadioImage makeDemoRadioImage() {
    RadioImage image = makeStartImage();
    setBand(image, 7); // 450 - 470MHz

    const DemoChannel channels[] = {
        {460.0125, 460.0125, {}, {}, false, false, false},
        {460.0250, 460.0250, ctcss("88.5"), ctcss("88.5"), false, false, false},
        {461.0375, 461.0375, dcs("023"), dcs("023"), true, false, false},
        {462.5500, 467.5500, ctcss("100.0"), ctcss("100.0"), false, false, true},
        {463.1000, 463.1000, {}, ctcss("67.0"), true, true, false},
        {464.5000, 464.5000, {}, {}, false, true, false},
    };
    int n = 1;
    for (const auto& c : channels) {
        auto record = ChannelRecord::channel(image, n++);
        record.setFrequency(Side::Receive, c.rxMHz);
        record.setFrequency(Side::Transmit, c.txMHz);
        record.setTone(Side::Receive, c.rxTone);
        record.setTone(Side::Transmit, c.txTone);
        record.setOpen(true);
        record.setTxAllowed(true);
        record.setNarrow(c.narrow);
        record.setLowPower(c.lowPower);
        record.setBusyLock(c.busyLock);
    }
    for (int t = 1; t <= kTestChannelCount; ++t) {
        auto record = ChannelRecord::testChannel(image, t);
        const double mhz = 450.0 + 2.0 * (t - 1);
        record.setFrequency(Side::Receive, mhz);
        record.setFrequency(Side::Transmit, mhz);
        record.setOpen(true);
        record.setTxAllowed(true);
    }
    for (const auto& item : kTuningItems)
        setTuningValue(image, item.item, 0x80);

    encodeUserText(image, "Emulated ZR-310 for trying out the programming software");
    stampWriteDate(image, {2006, 5, 18, 9, 30, 0});
    constexpr std::string_view kRadioId = "ZR310-EMU-0001";
    for (std::size_t i = 0; i < 16; ++i) {
        const auto byte =
            i < kRadioId.size() ? static_cast<std::uint8_t>(kRadioId[i]) : std::uint8_t{0xFF};
        image.setAtAddress(kRadioIdAddress + static_cast<int>(i), byte);
    }
    return image;
}

} // namespace zr310
