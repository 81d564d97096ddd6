#include "model_test_util.h"
#include "radio_image.h"
#include "tuning.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

class TestRadioImage : public QObject {
    Q_OBJECT

private slots:
    // Places of the memory map: (column, block) -> linear offset and radio address.
    void addressing_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("block");
        QTest::addColumn<int>("linear");
        QTest::addColumn<int>("address");
        QTest::newRow("first byte") << 0x00 << 0 << 0x000 << 0x000;
        QTest::newRow("last byte") << 0x7F << 7 << 0x3FF << 0x3FF;
        QTest::newRow("column 0 block 1") << 0x00 << 1 << 0x080 << 0x001;
        QTest::newRow("column 1 block 0") << 0x01 << 0 << 0x001 << 0x008;
        QTest::newRow("ch16 tx flags") << 0x1E << 7 << 0x39E << 0x0F7;
        QTest::newRow("last test channel odd") << 0x35 << 2 << 0x135 << 0x1AA;
        QTest::newRow("time-out timer") << 0x56 << 7 << 0x3D6 << 0x2B7;
        QTest::newRow("user text end") << 0x77 << 7 << 0x3F7 << 0x3BF;
        QTest::newRow("write date end") << 0x79 << 5 << 0x2F9 << 0x3CD;
        QTest::newRow("radio id start") << 0x7C << 0 << 0x07C << 0x3E0;
    }

    void addressing() {
        QFETCH(int, column);
        QFETCH(int, block);
        QFETCH(int, linear);
        QFETCH(int, address);
        QCOMPARE(int(RadioImage::linearOffset(column, block)), linear);
        QCOMPARE(RadioImage::radioAddressOf(std::size_t(linear)), address);
        QCOMPARE(int(RadioImage::linearOffsetOf(address)), linear);

        // The three ways of reaching the byte agree, for reading and for writing.
        RadioImage image;
        image.set(column, block, 0xA5);
        QCOMPARE(int(image[std::size_t(linear)]), 0xA5);
        QCOMPARE(int(image.atAddress(address)), 0xA5);
        image.setAtAddress(address, 0x5A);
        QCOMPARE(int(image.at(column, block)), 0x5A);
        QCOMPARE(changedOffsets(RadioImage{}, image), QList<int>{linear});
    }

    // Raw export and import in radio-address order.
    void radioOrderRoundTrip() {
        for (quint32 seed : {1u, 77u}) {
            const RadioImage image = noiseImage(seed);
            const RadioImage::Bytes radio = image.toRadioOrder();
            for (int a = 0; a < int(RadioImage::kSize); ++a) {
                const int linear = (a % 8) * 128 + a / 8;
                QCOMPARE(int(radio[a]), int(image[std::size_t(linear)]));
                QCOMPARE(int(RadioImage::linearOffsetOf(a)), linear);
                QCOMPARE(RadioImage::radioAddressOf(std::size_t(linear)), a);
            }
            QVERIFY(RadioImage::fromRadioOrder(radio) == image);

            // Arbitrary raw bytes land at their radio addresses.
            const RadioImage::Bytes raw = noiseImage(seed + 1).linear();
            const RadioImage imported = RadioImage::fromRadioOrder(raw);
            for (int c = 0; c < 128; ++c)
                for (int b = 0; b < 8; ++b)
                    QCOMPARE(int(imported.at(c, b)), int(raw[std::size_t(c * 8 + b)]));
            QVERIFY(imported.toRadioOrder() == raw);
        }
    }

    void columnAccess() {
        for (int column : {0x00, 0x56, 0x7F}) {
            const RadioImage before = noiseImage(quint32(column) + 5);
            const RadioImage::Bytes radio = before.toRadioOrder();
            // A column: blocks 0-7 at one column, eight consecutive radio addresses.
            const auto bytes = before.column(column);
            for (int b = 0; b < 8; ++b) {
                QCOMPARE(int(bytes[b]), int(before[std::size_t(b * 128 + column)]));
                QCOMPARE(int(bytes[b]), int(radio[std::size_t(column * 8 + b)]));
            }
            RadioImage after = before;
            const std::array<std::uint8_t, 8> fresh{0x10, 0x21, 0x32, 0x43, 0x54, 0x65, 0x76, 0x87};
            after.setColumn(column, fresh);
            QVERIFY(after.column(column) == fresh);
            for (int offset : changedOffsets(before, after))
                QVERIFY(columnOffsets(column).contains(offset));
        }
    }

    void startImage() {
        const RadioImage image = makeStartImage();
        QCOMPARE(changedOffsets(RadioImage{}, image), QList<int>{0x3D6});
        QCOMPARE(int(image[0x3D6]), 0x03);
    }

    // The five alignment values, one byte each in blocks 0-4 of column 0x5E.
    void tuningValues() {
        const std::tuple<int, int, char> expected[] = {{0x05E, 0x11, 'B'},
                                                       {0x0DE, 0x33, 'M'},
                                                       {0x15E, 0x55, 'm'},
                                                       {0x1DE, 0x77, 'Q'},
                                                       {0x25E, 0x99, 'D'}};
        for (int i = 0; i < 5; ++i) {
            const auto [offset, code, letter] = expected[i];
            const TuningItemInfo& info = kTuningItems[std::size_t(i)];
            QCOMPARE(int(info.item), i);
            QCOMPARE(int(info.itemCode), code);
            QCOMPARE(info.commandLetter, letter);
            RadioImage image;
            setTuningValue(image, info.item, 0xC3);
            QCOMPARE(changedOffsets(RadioImage{}, image), QList<int>{offset});
            image[std::size_t(offset)] = 0x3C;
            QCOMPARE(int(tuningValue(image, info.item)), 0x3C);
        }
    }
};

QTEST_APPLESS_MAIN(TestRadioImage)
#include "tst_radio_image.moc"
