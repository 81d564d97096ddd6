#include "model_test_util.h"
#include "radio_image.h"
#include "tuning.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

class TestRadioImage : public QObject {
    Q_OBJECT

private slots:
    // Every radio address, read and written each way, against the memory map;
    // raw export and import in radio-address order.
    void addressing() {
        const RadioImage image = noiseImage(1);
        const RadioImage::Bytes radio = image.toRadioOrder();
        for (int a = 0; a < int(RadioImage::kSize); ++a) {
            const int linear = linearOf(a);
            QCOMPARE(int(RadioImage::linearOffsetOf(a)), linear);
            QCOMPARE(RadioImage::radioAddressOf(std::size_t(linear)), a);
            QCOMPARE(int(image.at(a / 8, a % 8)), int(image[std::size_t(linear)]));
            QCOMPARE(int(image.atAddress(a)), int(image[std::size_t(linear)]));
            QCOMPARE(int(radio[std::size_t(a)]), int(image[std::size_t(linear)]));
        }
        QVERIFY(RadioImage::fromRadioOrder(radio) == image);
        const RadioImage::Bytes raw = noiseImage(2).linear();
        QVERIFY(RadioImage::fromRadioOrder(raw).toRadioOrder() == raw);

        RadioImage written;
        written.set(0x56, 7, 0xA5);        // the time-out timer
        written.setAtAddress(0x3E0, 0x5A); // the first byte of the radio id
        QCOMPARE(changedOffsets(RadioImage{}, written), (QList<int>{0x07C, 0x3D6}));
    }

    // A column is blocks 0-7 of one column: eight consecutive radio addresses.
    void columnAccess() {
        const RadioImage before = noiseImage(5);
        const RadioImage::Bytes radio = before.toRadioOrder();
        const std::array<std::uint8_t, 8> fresh{0x10, 0x21, 0x32, 0x43, 0x54, 0x65, 0x76, 0x87};
        RadioImage after = before;
        after.setColumn(0x56, fresh);
        for (int b = 0; b < 8; ++b) {
            QCOMPARE(int(before.column(0x56)[b]), int(radio[std::size_t(0x56 * 8 + b)]));
            QCOMPARE(int(after[std::size_t(b * 128 + 0x56)]), int(fresh[b]));
        }
        QCOMPARE(changedOffsets(before, after).size(), 8);
    }

    void startImage() {
        const RadioImage image = makeStartImage();
        QCOMPARE(changedOffsets(RadioImage{}, image), QList<int>{0x3D6});
        QCOMPARE(int(image[0x3D6]), 0x03);
    }

    // The five alignment values, one byte each in blocks 0-4 of column 0x5E.
    void tuningValues() {
        for (int i = 0; i < 5; ++i) {
            RadioImage image;
            setTuningValue(image, kTuningItems[std::size_t(i)].item, 0xC3);
            QCOMPARE(changedOffsets(RadioImage{}, image), QList<int>{i * 128 + 0x5E});
            QCOMPARE(int(tuningValue(image, kTuningItems[std::size_t(i)].item)), 0xC3);
        }
    }
};

QTEST_APPLESS_MAIN(TestRadioImage)
#include "tst_radio_image.moc"
