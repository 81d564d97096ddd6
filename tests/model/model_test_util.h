#pragma once

// Small helpers shared by the model suites.

#include "frequency.h"
#include "radio_image.h"
#include "tones.h"

#include <QList>
#include <QRandomGenerator>
#include <QStringList>
#include <QTest>

#include <optional>
#include <string>
#include <vector>

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

inline QStringList qsl(const std::vector<std::string>& texts) {
    QStringList list;
    for (const auto& text : texts)
        list << qs(text);
    return list;
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

// The linear offsets of the eight bytes of a column.
inline QList<int> columnOffsets(int column) {
    QList<int> offsets;
    for (int block = 0; block < 8; ++block)
        offsets << block * 128 + column;
    return offsets;
}

} // namespace zr310::test
