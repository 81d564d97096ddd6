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
    QList<int> offsets;
    for (int block = 0; block < 8; ++block)
        offsets << even(column, block);
    return offsets << odd(column, 0) << odd(column, 1) << odd(column, 2);
}

// What the grid shows: frequencies, tones, then the flags.
QStringList shownTexts(const ChannelTexts& t) {
    QStringList texts{qs(t.rxFreq), qs(t.txFreq), qs(t.rxTone), qs(t.txTone)};
    return texts << (t.close ? "Close" : "-") << (t.noTx ? "No TX" : "-") << qs(t.bandwidth)
                 << qs(t.busyLock) << qs(t.scan) << qs(t.power);
}

// Sets the bytes at `offsets` of a noise image and returns a copy of the image.
RadioImage withBytes(quint32 seed, const QList<int>& offsets, const QByteArray& bytes) {
    RadioImage image = noiseImage(seed);
    for (int i = 0; i < bytes.size(); ++i)
        image[std::size_t(offsets[i])] = quint8(bytes[i]);
    return image;
}

} // namespace

class TestChannel : public QObject {
    Q_OBJECT

private slots:
    // Crafted records: blocks 0-7 of the even column, then blocks 0-2 of the odd one.
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
    }

    void decode() {
        QFETCH(int, column);
        QFETCH(QByteArray, bytes);
        QFETCH(QString, texts);
        // Noise around the record: nothing outside it may take part.
        const RadioImage image =
            withBytes(quint32(column), recordOffsets(column), QByteArray::fromHex(bytes));
        QCOMPARE(shownTexts(decodeChannel(image, column, Language::English)), texts.split('|'));
        const QHash<QString, QString> zh{{"Add", "添加"},  {"Del", "删除"},   {"On", "打开"},
                                         {"Off", "关闭"},  {"High", "高"},    {"Low", "低"},
                                         {"Wide", "宽带"}, {"Narrow", "窄带"}};
        QStringList chinese = texts.split('|');
        for (QString& text : chinese)
            text = zh.value(text, text);
        QCOMPARE(shownTexts(decodeChannel(image, column, Language::Chinese)), chinese);
    }

    // A side's frequency and tone: count bytes low and high, the flags byte (bit 0:
    // bit 16 of the count, bit 2: 6.25 kHz steps, bits 4-6: tone type; the others
    // kept), then the tone value low and high. Bit 16 is never cleared once stored.
    // Receive: even column blocks 0-4. Transmit: even column blocks 5-7, odd column 0-1.
    void encodeSide_data() {
        QTest::addColumn<Side>("side");
        QTest::addColumn<int>("oldFlags");
        QTest::addColumn<double>("mhz");
        QTest::addColumn<ToneKind>("kind");
        QTest::addColumn<int>("value");
        QTest::addColumn<QByteArray>("bytes");
        const auto rx = Side::Receive, tx = Side::Transmit;
        QTest::newRow("rx 6.25, ctcss")
            << rx << 0x00 << 145.5125 << ToneKind::Ctcss << 0x0885 << QByteArray("f25a348508");
        QTest::newRow("rx 5 and off over all ones")
            << rx << 0xFF << 145.505 << ToneKind::Off << 0x0000 << QByteArray("ad718b0000");
        QTest::newRow("tx bit 16, 6.25, dcs")
            << tx << 0x78 << 438.0125 << ToneKind::Dcs << 0x0013 << QByteArray("c2115d1300");
        QTest::newRow("tx bit 16, 5, -dcs")
            << tx << 0x0C << 400.005 << ToneKind::DcsInverted << 0x01EC << QByteArray("813879ec01");
        QTest::newRow("tx old bit 16 stays")
            << tx << 0x01 << 145.5 << ToneKind::Ctcss << 0x2541 << QByteArray("f05a354125");
    }

    void encodeSide() {
        QFETCH(Side, side);
        QFETCH(int, oldFlags);
        QFETCH(double, mhz);
        QFETCH(ToneKind, kind);
        QFETCH(int, value);
        QFETCH(QByteArray, bytes);
        const int c = 0x0A;
        const QList<int> offsets = recordOffsets(c).mid(side == Side::Receive ? 0 : 5, 5);
        const RadioImage before = withBytes(7, {offsets[2]}, QByteArray(1, char(oldFlags)));
        RadioImage image = before;
        ChannelRecord(image, c).setFrequency(side, mhz);
        ChannelRecord(image, c).setTone(side, Tone{kind, quint16(value)});
        QByteArray got;
        for (int offset : offsets)
            got += char(image[std::size_t(offset)]);
        QCOMPARE(got.toHex(), bytes);
        QVERIFY(changedOnlyAt(before, image, offsets));
    }

    // Every write through a record touches only its own bytes; all 1024 are checked.
    void writesStayInTheRecord_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("number"); // of a channel, or from column 0x20 a test channel
        for (int n = 1; n <= 16; ++n)
            QTest::addRow("channel %d", n) << 2 * (n - 1) << n;
        for (int t = 1; t <= 11; ++t)
            QTest::addRow("test channel %d", t) << 0x20 + 2 * (t - 1) << t;
    }

    void writesStayInTheRecord() {
        QFETCH(int, column);
        QFETCH(int, number);
        for (bool on : {false, true}) {
            RadioImage before = noiseImage(quint32(column * 2 + on));
            before[std::size_t(even(column, 2))] &= 0xFE; // receive bit 16 clear
            RadioImage image = before;
            ChannelRecord record = column >= 0x20 ? ChannelRecord::testChannel(image, number)
                                                  : ChannelRecord::channel(image, number);
            record.setFrequency(Side::Transmit, on ? 145.505 : 438.0125);
            record.setFrequency(Side::Receive, on ? 438.0125 : 145.5);
            record.setTone(Side::Transmit, Tone{ToneKind::DcsInverted, 0x01EC});
            record.setTone(Side::Receive, Tone{ToneKind::Ctcss, 0x0885});
            // Flags alternate, so that each setter's bit differs from its neighbours'.
            // Close and No TX are stored inverted, in bit 3 of the flags bytes.
            record.setOpen(!on);
            record.setTxAllowed(on);
            record.setNarrow(on);
            record.setBusyLock(!on);
            record.setScanDeleted(on);
            record.setLowPower(!on);
            const std::size_t options = std::size_t(odd(column, 2));
            QCOMPARE(image[std::size_t(even(column, 2))] & 0x08, on ? 0x00 : 0x08);
            QCOMPARE(image[std::size_t(even(column, 7))] & 0x08, on ? 0x08 : 0x00);
            QCOMPARE(image[options] & 0x35, on ? 0x11 : 0x24);
            // Version 1.0: Wide and High (option bits 0 and 5 cleared), the rest kept.
            record.forceWideAndHigh();
            QCOMPARE(image[options] & 0x35, on ? 0x10 : 0x04);
            QCOMPARE(image[options] & 0xCA, before[options] & 0xCA);
            // Simplex copies the receive bytes over the transmit ones, No TX kept.
            record.copyReceiveToTransmit();
            QCOMPARE(record.frequency(Side::Transmit), record.frequency(Side::Receive));
            QCOMPARE(record.tone(Side::Transmit), (Tone{ToneKind::Ctcss, 0x0885}));
            QCOMPARE(record.txAllowed(), on);
            QVERIFY(changedOnlyAt(before, image, recordOffsets(column)));
        }
    }
};

QTEST_APPLESS_MAIN(TestChannel)
#include "tst_channel.moc"
