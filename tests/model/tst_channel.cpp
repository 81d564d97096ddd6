#include "channel.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

Q_DECLARE_METATYPE(zr310::Side)
Q_DECLARE_METATYPE(zr310::ToneKind)

namespace {

// Offsets of a record's bytes: blocks 0-7 of the even column, blocks 0-2 of the odd one.
int even(int column, int block) {
    return block * 128 + column;
}
int odd(int column, int block) {
    return block * 128 + column + 1;
}

QList<int> recordOffsets(int column) {
    return columnOffsets(column) << odd(column, 0) << odd(column, 1) << odd(column, 2);
}

// One flag bit: its setter, its byte (relative to the even column), its mask, and
// the texts the grid shows when it is off and on. Close and No TX are stored inverted.
struct Flag {
    const char* name;
    void (*set)(ChannelRecord&, bool);
    int offset, mask;
    bool inverted;
    const char *offText, *onText;
};

const Flag kFlags[] = {
    {"close", [](ChannelRecord& r, bool on) { r.setOpen(!on); }, 0x100, 0x08, true, "-", "Close"},
    {"no tx", [](ChannelRecord& r, bool on) { r.setTxAllowed(!on); }, 0x380, 0x08, true, "-",
     "No TX"},
    {"narrow", [](ChannelRecord& r, bool on) { r.setNarrow(on); }, 0x101, 0x01, false, "Wide",
     "Narrow"},
    {"busy lock", [](ChannelRecord& r, bool on) { r.setBusyLock(on); }, 0x101, 0x04, false, "Off",
     "On"},
    {"scan del", [](ChannelRecord& r, bool on) { r.setScanDeleted(on); }, 0x101, 0x10, false, "Add",
     "Del"},
    {"low power", [](ChannelRecord& r, bool on) { r.setLowPower(on); }, 0x101, 0x20, false, "High",
     "Low"},
};

// What the grid shows: frequencies, tones, then the flags in the order above.
QStringList shownTexts(const ChannelTexts& t) {
    QStringList texts{qs(t.rxFreq), qs(t.txFreq), qs(t.rxTone), qs(t.txTone)};
    return texts << (t.close ? "Close" : "-") << (t.noTx ? "No TX" : "-") << qs(t.bandwidth)
                 << qs(t.busyLock) << qs(t.scan) << qs(t.power);
}

} // namespace

class TestChannel : public QObject {
    Q_OBJECT

private slots:
    // Crafted records: blocks 0-7 of the even column, blocks 0-2 of the odd one.
    void decode_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QString>("texts"); // rx, tx, tones, close, no tx, W/N, busy, scan, power
        QTest::newRow("all zero, ch 1")
            << 0x00 << QByteArray("0000000000000000 000000")
            << "000.00000|000.00000|OFF|OFF|Close|No TX|Wide|Off|Add|High";
        QTest::newRow("ctc and dcs, all options, ch 7")
            << 0x0C << QByteArray("f25a3c8508ad7158 130035")
            << "145.51250|145.50500|CTC 88.5|DCS 023|-|-|Narrow|On|Del|Low";
        QTest::newRow("17-bit counts, ch 16")
            << 0x1E << QByteArray("ffff050000ffff01 000000")
            << "819.19375|655.35500|OFF|OFF|Close|No TX|Wide|Off|Add|High";
        QTest::newRow("-DCS 754 and CTC 254.1, test ch 1")
            << 0x20 << QByteArray("000078ec0100003c 4125ca")
            << "000.00000|000.00000|-DCS 754|CTC 254.1|-|-|Wide|Off|Add|High";
        QTest::newRow("types 0x10, 0x20 show OFF, test ch 11")
            << 0x34 << QByteArray("00001085080000a8 130000")
            << "000.00000|000.00000|OFF|OFF|Close|-|Wide|Off|Add|High";
        QTest::newRow("types 0x40, 0x60 show OFF, ch 9")
            << 0x10 << QByteArray("00004c85080000e8 130001")
            << "000.00000|000.00000|OFF|OFF|-|-|Narrow|Off|Add|High";
        QTest::newRow("every other flag bit, ch 2")
            << 0x02 << QByteArray("f05af71300f05af3 0b0014")
            << "555.10000|444.08000|-DCS 023|-DCS 013|Close|No TX|Wide|On|Del|High";
        QTest::newRow("ctcss nibbles above 9, ch 3")
            << 0x04 << QByteArray("0000380b0a000008 000000")
            << "000.00000|000.00000|CTC 101.1|OFF|-|-|Wide|Off|Add|High";
    }

    void decode() {
        QFETCH(int, column);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, texts);
        // Noise around the record: nothing outside it may take part.
        RadioImage image = noiseImage(quint32(column));
        const QByteArray raw = QByteArray::fromHex(bytes);
        for (int i = 0; i < raw.size(); ++i)
            image[std::size_t(recordOffsets(column)[i])] = quint8(raw[i]);

        QCOMPARE(shownTexts(decodeChannel(image, column, Language::English)), texts.split('|'));
        const QHash<QString, QString> zh{{"Add", "添加"},  {"Del", "删除"},   {"On", "打开"},
                                         {"Off", "关闭"},  {"High", "高"},    {"Low", "低"},
                                         {"Wide", "宽带"}, {"Narrow", "窄带"}};
        QStringList chinese = texts.split('|');
        for (QString& text : chinese)
            text = zh.value(text, text);
        QCOMPARE(shownTexts(decodeChannel(image, column, Language::Chinese)), chinese);
    }

    void encodeFrequency_data() {
        QTest::addColumn<Side>("side");
        QTest::addColumn<int>("oldFlags");
        QTest::addColumn<double>("mhz");
        QTest::addColumn<QByteArray>("bytes"); // low, high, flags
        const auto rx = Side::Receive, tx = Side::Transmit;
        QTest::newRow("rx 6.25") << rx << 0x00 << 145.5125 << QByteArray("f25a04");
        QTest::newRow("rx 5 clears step only") << rx << 0xFF << 145.505 << QByteArray("ad71fb");
        QTest::newRow("rx on both grids") << rx << 0x08 << 150.0 << QByteArray("c05d0c");
        QTest::newRow("rx single precision") << rx << 0x00 << 145.50002 << QByteArray("f05a04");
        QTest::newRow("tx bit 16, 6.25") << tx << 0x78 << 438.0125 << QByteArray("c2117d");
        QTest::newRow("tx bit 16, 5") << tx << 0x0C << 400.005 << QByteArray("813809");
        QTest::newRow("tx old bit 16 stays") << tx << 0x01 << 145.5 << QByteArray("f05a05");
        QTest::newRow("tx zero") << tx << 0xF0 << 0.0 << QByteArray("0000f4");
    }

    void encodeFrequency() {
        QFETCH(Side, side);
        QFETCH(int, oldFlags);
        QFETCH(double, mhz);
        QFETCH(QByteArray, bytes);
        const int column = 0x0A;
        const int base = side == Side::Receive ? 0 : 5; // blocks: low, high, flags
        const QList<int> offsets{even(column, base), even(column, base + 1),
                                 even(column, base + 2)};
        RadioImage before = noiseImage(7);
        before[std::size_t(offsets[2])] = quint8(oldFlags);
        RadioImage image = before;
        ChannelRecord(image, column).setFrequency(side, mhz);

        QByteArray got;
        for (int offset : offsets)
            got += char(image[std::size_t(offset)]);
        QCOMPARE(got.toHex(), bytes);
        for (int offset : changedOffsets(before, image))
            QVERIFY(offsets.contains(offset));
    }

    // Once a count of 65536 or more was stored, a lower entry keeps bit 16.
    void highBitIsNeverCleared() {
        RadioImage image;
        ChannelRecord record = ChannelRecord::channel(image, 4);
        record.setFrequency(Side::Receive, 438.0125);
        record.setFrequency(Side::Receive, 145.5);
        QCOMPARE(record.frequency(Side::Receive), (FrequencyCode{65536 + 23280, true}));
        QCOMPARE(qs(decodeChannel(image, 6, Language::English).rxFreq), "555.10000");
        QCOMPARE(record.frequency(Side::Transmit), (FrequencyCode{0, false}));
    }

    void encodeTone_data() {
        QTest::addColumn<Side>("side");
        QTest::addColumn<int>("oldFlags");
        QTest::addColumn<ToneKind>("kind");
        QTest::addColumn<int>("value");
        QTest::addColumn<int>("flags");
        const auto rx = Side::Receive, tx = Side::Transmit;
        QTest::newRow("rx ctcss") << rx << 0x0D << ToneKind::Ctcss << 0x0885 << 0x3D;
        QTest::newRow("rx ctcss over dcs") << rx << 0xFF << ToneKind::Ctcss << 0x2541 << 0xBF;
        QTest::newRow("tx dcs") << tx << 0x8F << ToneKind::Dcs << 0x0013 << 0xDF;
        QTest::newRow("tx -dcs") << tx << 0x00 << ToneKind::DcsInverted << 0x01EC << 0x70;
        QTest::newRow("rx off") << rx << 0xFF << ToneKind::Off << 0x0000 << 0x8F;
        QTest::newRow("tx off") << tx << 0x3C << ToneKind::Off << 0x0000 << 0x0C;
    }

    void encodeTone() {
        QFETCH(Side, side);
        QFETCH(int, oldFlags);
        QFETCH(ToneKind, kind);
        QFETCH(int, value);
        QFETCH(int, flags);
        // Flags: even column block 2 or 7. Value: receive in the even column's
        // blocks 3 (low) and 4 (high), transmit in the odd column's blocks 0 and 1.
        const int column = 0x16;
        const bool rx = side == Side::Receive;
        const QList<int> bytes{even(column, rx ? 2 : 7), rx ? even(column, 3) : odd(column, 0),
                               rx ? even(column, 4) : odd(column, 1)};
        RadioImage before = noiseImage(11);
        before[std::size_t(bytes[0])] = quint8(oldFlags);
        RadioImage image = before;
        ChannelRecord record(image, column);
        record.setTone(side, Tone{kind, quint16(value)});

        QCOMPARE(int(image[std::size_t(bytes[0])]), flags);
        QCOMPARE(int(image[std::size_t(bytes[1])]), value & 0xFF);
        QCOMPARE(int(image[std::size_t(bytes[2])]), value >> 8);
        QCOMPARE(record.tone(side), (Tone{kind, quint16(value)}));
        for (int offset : changedOffsets(before, image))
            QVERIFY(bytes.contains(offset));
    }

    // Each setter changes one bit of one byte; Close and No TX are stored inverted.
    void flagBits_data() {
        QTest::addColumn<int>("flag");
        QTest::addColumn<bool>("on");
        QTest::addColumn<int>("oldByte");
        for (int i = 0; i < int(std::size(kFlags)); ++i)
            for (bool on : {false, true})
                for (int oldByte : {0x00, 0xFF, 0x5A})
                    QTest::addRow("%s %s, 0x%02X", kFlags[i].name, on ? "on" : "off", oldByte)
                        << i << on << oldByte;
    }

    void flagBits() {
        QFETCH(int, flag);
        QFETCH(bool, on);
        QFETCH(int, oldByte);
        const Flag& f = kFlags[flag];

        const int column = 0x0E; // channel 8
        const std::size_t offset = std::size_t(f.offset + column);
        RadioImage before = noiseImage(3);
        before[offset] = quint8(oldByte);
        RadioImage image = before;
        ChannelRecord record(image, column);
        f.set(record, on);

        QCOMPARE(int(image[offset]), on != f.inverted ? oldByte | f.mask : oldByte & ~f.mask);
        QVERIFY(changedOffsets(before, image).size() <= 1);
        QCOMPARE(shownTexts(decodeChannel(image, column, Language::English))[4 + flag],
                 QString(on ? f.onText : f.offText));
    }

    // Version-1.0 radios: the option byte is masked with 0xDE.
    void forceWideAndHigh() {
        for (auto [options, masked] : {std::pair{0xFF, 0xDE}, {0x21, 0x00}, {0x35, 0x14}}) {
            RadioImage before = noiseImage(5);
            before[std::size_t(odd(0x1E, 2))] = quint8(options);
            RadioImage image = before;
            ChannelRecord::channel(image, 16).forceWideAndHigh();
            QCOMPARE(int(image[std::size_t(odd(0x1E, 2))]), masked);
            QVERIFY(changedOffsets(before, image).size() == 1);
            const QStringList texts = shownTexts(decodeChannel(image, 0x1E, Language::English));
            QCOMPARE(texts[6] + texts[9], "WideHigh");
        }
    }

    // Simplex: the transmit bytes are copied from the receive bytes, No TX kept.
    // Every write through a record touches only its own bytes; all 1024 are checked.
    void writesStayInTheRecord_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<bool>("test");
        QTest::addColumn<int>("number");
        for (int n = 1; n <= 16; ++n)
            QTest::addRow("channel %d", n) << 2 * (n - 1) << false << n;
        for (int t = 1; t <= 11; ++t)
            QTest::addRow("test channel %d", t) << 0x20 + 2 * (t - 1) << true << t;
    }

    void writesStayInTheRecord() {
        QFETCH(int, column);
        QFETCH(bool, test);
        QFETCH(int, number);
        QCOMPARE(test ? testChannelColumn(number) : channelColumn(number), column);

        for (bool on : {false, true}) {
            RadioImage before = noiseImage(quint32(column * 2 + on));
            before[std::size_t(even(column, 2))] &= 0xFE; // receive bit 16 clear
            RadioImage image = before;
            ChannelRecord record = test ? ChannelRecord::testChannel(image, number)
                                        : ChannelRecord::channel(image, number);
            record.setFrequency(Side::Transmit, on ? 145.505 : 438.0125);
            record.setFrequency(Side::Receive, on ? 438.0125 : 145.5);
            record.setTone(Side::Transmit, Tone{ToneKind::DcsInverted, 0x01EC});
            record.setTone(Side::Receive, Tone{ToneKind::Ctcss, 0x0885});
            for (const Flag& flag : kFlags)
                flag.set(record, on);
            record.forceWideAndHigh();
            // Simplex copies the receive bytes over the transmit ones and keeps No TX.
            record.copyReceiveToTransmit();
            QCOMPARE(record.frequency(Side::Transmit), record.frequency(Side::Receive));
            QCOMPARE(record.tone(Side::Transmit), (Tone{ToneKind::Ctcss, 0x0885}));
            QCOMPARE(record.txAllowed(), !on);

            const QList<int> changed = changedOffsets(before, image);
            QVERIFY(!changed.isEmpty());
            for (int offset : changed)
                QVERIFY2(recordOffsets(column).contains(offset),
                         qPrintable(QString::number(offset)));
        }
    }

    void stepTexts() {
        QCOMPARE(qs(stepText({23282, true})) + qs(stepText({29101, false})), "6.255.00");
    }
};

QTEST_APPLESS_MAIN(TestChannel)
#include "tst_channel.moc"
