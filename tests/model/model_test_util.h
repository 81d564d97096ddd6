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

// The linear offset of a radio address, from the memory map: address c * 8 + b
// is column c, block b, kept at b * 128 + c.
inline int linearOf(int address) {
    return (address % 8) * 128 + address / 8;
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

// True when every byte that differs lies at one of the allowed linear offsets.
inline bool changedOnlyAt(const RadioImage& before, const RadioImage& after,
                          const QList<int>& allowed) {
    for (int offset : changedOffsets(before, after))
        if (!allowed.contains(offset))
            return false;
    return true;
}

} // namespace zr310::test
