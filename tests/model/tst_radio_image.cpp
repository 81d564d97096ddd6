#include "bands.h"
#include "model_test_util.h"
#include "radio_image.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

// The radio's memory map: addresses, the band code and the fixed places.
class TestRadioImage : public QObject {
    Q_OBJECT

private slots:
    // Every radio address against the memory map: address c * 8 + b is column c,
    // block b, kept at b * 128 + c. Raw export and import go in radio-address
    // order; a column is eight consecutive addresses.
    void addressing() {
        const RadioImage image = noiseImage(1);
        const RadioImage::Bytes radio = image.toRadioOrder();
        for (int a = 0; a < int(RadioImage::kSize); ++a) {
            const std::size_t linear = std::size_t((a % 8) * 128 + a / 8);
            QCOMPARE(RadioImage::linearOffsetOf(a), linear);
            QCOMPARE(RadioImage::radioAddressOf(linear), a);
            QCOMPARE(int(radio[std::size_t(a)]), int(image[linear]));
            QCOMPARE(int(image.column(a / 8)[std::size_t(a % 8)]), int(image[linear]));
        }
        QVERIFY(RadioImage::fromRadioOrder(radio) == image);
        RadioImage copy;
        for (int c = 0; c < RadioImage::kColumns; ++c)
            copy.setColumn(c, image.column(c));
        QVERIFY(copy == image);
    }

    // The start image holds only the time-out timer's 0x03.
    void startImage() {
        QCOMPARE(changedOffsets(RadioImage{}, makeStartImage()), QList<int>{0x3D6});
        QCOMPARE(int(makeStartImage()[0x3D6]), 0x03);
    }

    // The code each entry of the band list stores at 0x15A, in list order:
    // writing a band stores its code and nothing else; every other code reads
    // as "450 - 470MHz".
    void bandCodes() {
        const QList<int> codes{0x01, 0x00, 0x52, 0x53, 0x54, 0x07, 0x20, 0x06, 0x58, 0x59};
        QCOMPARE(int(kBands.size()), codes.size());
        RadioImage image = noiseImage(42);
        for (int index = 0; index < codes.size(); ++index) {
            const RadioImage before = image;
            setBand(image, index);
            QCOMPARE(changedOffsets(before, image), QList<int>{0x15A});
            QCOMPARE(int(image[0x15A]), codes[index]);
        }
        for (int code = 0; code < 256; ++code) {
            image[0x15A] = quint8(code);
            QCOMPARE(bandIndexFromImage(image), codes.contains(code) ? codes.indexOf(code) : 7);
        }
    }

    // Only an exact entry of the list is known.
    void bandTexts() {
        QCOMPARE(bandIndexOfText("465 - 520MHz"), std::optional<int>(9));
        QCOMPARE(qs(bandRangeText("465 - 520MHz")), QString("465.00000～520.00000 MHz"));
        QCOMPARE(bandLimitsOfText("465 - 520MHz"), (BandLimits{465, 520}));
        for (const char* text : {"", "450 - 470MHz "}) {
            QCOMPARE(bandIndexOfText(text), std::optional<int>());
            QCOMPARE(qs(bandRangeText(text)), QString());
            QCOMPARE(bandLimitsOfText(text), (BandLimits{0, 0}));
        }
    }
};

QTEST_APPLESS_MAIN(TestRadioImage)
#include "tst_radio_image.moc"
