#pragma once

// Small helpers shared by the model suites (and the CSV suite).

#include "bands.h"
#include "frequency.h"
#include "image_edit.h"
#include "radio_image.h"
#include "sizes.h"
#include "tones.h"

#include <QList>
#include <QRandomGenerator>
#include <QTest>

#include <optional>
#include <string>

// Readable failure messages for the model's value types (found by QTest through ADL).
namespace zr310 {
inline char* toString(const Tone& tone) {
    return QTest::toString(
        QStringLiteral("kind %1 value 0x%2").arg(int(tone.kind)).arg(tone.value, 0, 16));
}
inline char* toString(const std::optional<Tone>& tone) {
    return tone ? toString(*tone) : qstrdup("nothing");
}
inline char* toString(const FrequencyCode& code) {
    return QTest::toString(
        QStringLiteral("%1 steps, 6.25 kHz %2").arg(code.steps).arg(code.step625));
}
} // namespace zr310

namespace zr310::test {

inline QString qs(std::string_view text) {
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// Reproducible noise, so that kept bits are tested on ones and zeros alike.
inline RadioImage noiseImage(quint32 seed) {
    QRandomGenerator rng(seed);
    RadioImage image;
    for (std::size_t i = 0; i < RadioImage::kSize; ++i)
        image[i] = quint8(rng.bounded(256));
    return image;
}

// Linear offsets at which two images differ.
inline QList<int> changedOffsets(const RadioImage& before, const RadioImage& after) {
    QList<int> offsets;
    for (std::size_t i = 0; i < RadioImage::kSize; ++i)
        if (before[i] != after[i])
            offsets << int(i);
    return offsets;
}

// Noise on the band, with every channel set from random texts the grid offers.
// Bit 16 of the frequency counts starts clear: the editors keep it as they find it.
inline RadioImage randomChannels(QRandomGenerator& rng, int bandIndex) {
    RadioImage image = noiseImage(rng.generate());
    setBand(image, bandIndex);
    const BandLimits band = kBands[std::size_t(bandIndex)].limits;
    const auto ctcss = SetQtcodeArray(), dcs = SetDQtcodeArray();
    const auto frequency = [&] {
        return std::to_string(band.lowerMHz + rng.bounded(band.upperMHz - band.lowerMHz) +
                              rng.bounded(1000) / 1000.0);
    };
    const auto tone = [&] {
        const std::string kinds[] = {"OFF", "CTC " + ctcss[toIndex(rng.bounded(50))],
                                     "DCS " + dcs[toIndex(rng.bounded(83))],
                                     "-DCS " + dcs[toIndex(rng.bounded(83))]};
        return kinds[rng.bounded(4)];
    };
    // Two choices for each field after the tones, in kChannelFields order.
    const char* words[] = {"Add",  "Del",    "On", "Off", "Low", "High",
                           "Wide", "Narrow", "",   "x",   "",    "x"};
    for (int n = 1; n <= kChannelCount; ++n) {
        for (int block : {2, 7})
            image.set(channelColumn(n), block, image.at(channelColumn(n), block) & 0xFE);
        std::string texts[10] = {frequency(), tone()};
        texts[2] = rng.bounded(3) ? frequency() : texts[0];
        texts[3] = rng.bounded(2) ? tone() : texts[1];
        for (int f = 4; f < 10; ++f)
            texts[f] = words[2 * (f - 4) + rng.bounded(2)];
        for (std::size_t f = 0; f < kChannelFields.size(); ++f)
            setChannelField(image, channelColumn(n), kChannelFields[f], texts[f]);
    }
    return image;
}

} // namespace zr310::test
