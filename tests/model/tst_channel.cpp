#include "channel.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

// Offsets of a record's bytes: blocks 0-7 of the even column, blocks 0-2 of the odd one.
QList<int> recordOffsets(int column) {
    QList<int> offsets;
    for (int block = 0; block < 8; ++block)
        offsets << block * 128 + column;
    return offsets << column + 1 << 128 + column + 1 << 256 + column + 1;
}

// A noise image with the bytes at `offsets` set.
RadioImage withBytes(quint32 seed, const QList<int>& offsets, const QByteArray& bytes) {
    RadioImage image = noiseImage(seed);
    for (int i = 0; i < bytes.size(); ++i)
        image[std::size_t(offsets[i])] = quint8(bytes[i]);
    return image;
}

} // namespace

// A channel's frequencies and tones, and its record of 11 bytes.
class TestChannel : public QObject {
    Q_OBJECT

private slots:
    void frequencyEncoding() {
        const auto row = [](double mhz, uint steps, bool step625) {
            QCOMPARE(encodeFrequency(mhz), (FrequencyCode{steps, step625}));
        };
        row(145.505, 29101, false); // on 5 only
        row(145.5, 23280, true);    // on both grids: 6.25
        row(438.0125, 70082, true); // needs bit 16
        // Quotients that come out a hair below the whole number in binary.
        row(512.05, 81928, true);
        row(512.035, 102407, false);
        // 23280.0032 and 23279.9968 show no decimal point in seven significant
        // digits; 23280.02 does, and is counted in 5 kHz steps.
        row(145.50002, 23280, true);
        row(145.49998, 23280, true);
        row(145.5001, 29100, false);
    }

    // Clamping at and beyond the band edges, the leading number of the text;
    // off-grid values go to the nearer grid point, ties to 6.25 kHz, also where
    // value * 100000 is a hair off the tie in binary.
    void frequencyValidation() {
        const auto row = [](const char* text, int lower, int upper, const QString& result) {
            const std::string out = validateFrequencyText(text, BandLimits{lower, upper});
            QCOMPARE(qs(out), result);
            // The result is a fixed point: validating it again changes nothing.
            QCOMPARE(qs(validateFrequencyText(out, BandLimits{lower, upper})), result);
        };
        row("135.99375", 136, 174, "136.00000");
        row("174.00000", 136, 174, "174.00000");
        row("145.5abc", 136, 174, "145.50000");
        row("173.99375", 136, 174, "173.99375"); // on 6.25 just below the upper edge
        row("145.002", 136, 174, "145.00000");   // both grids agree
        row("145.0070", 136, 174, "145.00625");
        row("145.0050001", 136, 174, "145.00500");
        row("519.99999", 465, 520, "520.00000");
        row("136.03625", 136, 174, "136.03750"); // exact tie
        row("136.11375", 136, 174, "136.11250");
    }

    // Every listed tone and code, and values and texts off the lists: the stored
    // value's text, and what parsing the text gives back.
    void tones() {
        const auto row = [](const QString& text, int flags, int value, bool parses) {
            const Tone tone = decodeTone(quint8(flags), quint8(value & 0xFF), quint8(value >> 8));
            if (flags >= 0) // -1: a text no stored value shows
                QCOMPARE(qs(toneText(tone)), text);
            QCOMPARE(parseToneText(text.toStdString()),
                     parses ? std::optional(tone) : std::nullopt);
        };
        const auto ctcss = SetQtcodeArray(), dcs = SetDQtcodeArray();
        QCOMPARE(qs(ctcss.front() + " " + ctcss.back()), QString("67.0 254.1"));
        QCOMPARE(qs(dcs.front() + " " + dcs.back()), QString("023 754"));
        QCOMPARE(int(ctcss.size() + dcs.size()), 50 + 83);
        for (const auto& tone : ctcss) // four BCD digits of the tenths of a hertz
            row("CTC " + qs(tone), 0x30, qs(tone).remove('.').toInt(nullptr, 16), true);
        for (const auto& code : dcs) { // the binary value of the octal code
            row("DCS " + qs(code), 0x50, qs(code).toInt(nullptr, 8), true);
            row("-DCS " + qs(code), 0x70, qs(code).toInt(nullptr, 8), true);
        }
        row("OFF", 0x00, 0, true);
        row("DCS 777", 0x50, 0777, true); // any octal code
        row("-DCS 017", 0x70, 017, true);
        row("CTC 101.1", 0x30, 0x0A0B, false); // nibbles above 9
        row("-DCS 800", 0x70, 0x0200, false);  // above 511
        for (const char* text : {"", "CTC 88.6", "CTC 88.5x", "-CTC 88.5", "DCS 028", "DCS 23",
                                 "DCS 0234", "DCS023", "--DCS 023"})
            row(text, -1, 0, false);
    }

    // Only bits 4-6 of the flags byte name the tone type; 0x30, 0x50, 0x70 or off.
    void toneTypes() {
        const char* texts[] = {"OFF", "OFF", "OFF", "CTC 8.5", "OFF", "DCS 205", "OFF", "-DCS 205"};
        for (int flags = 0; flags < 256; ++flags)
            QCOMPARE(qs(toneText(decodeTone(quint8(flags), 0x85, 0x00))),
                     QString(texts[(flags >> 4) & 7]));
    }

    // Crafted records (blocks 0-7 of the even column, then 0-2 of the odd one) in
    // noise: rx, tx, tones, close, no tx, W/N, busy, scan, power. The command
    // line's `show` reads random records of every kind.
    void decode() {
        const auto row = [](int column, const char* hex, Language language, const QString& texts) {
            const auto bytes = QByteArray::fromHex(hex);
            const RadioImage image = withBytes(quint32(column), recordOffsets(column), bytes);
            const ChannelTexts t = decodeChannel(image, column, language);
            QStringList shown{qs(t.rxFreq), qs(t.txFreq), qs(t.rxTone), qs(t.txTone)};
            shown << (t.close ? "Close" : "-") << (t.noTx ? "No TX" : "-") << qs(t.bandwidth)
                  << qs(t.busyLock) << qs(t.scan) << qs(t.power);
            QCOMPARE(shown, texts.split('|'));
        };
        const auto en = Language::English, zh = Language::Chinese;
        row(0x0C, "f25a3c8508ad7158 130035", en,
            "145.51250|145.50500|CTC 88.5|DCS 023|-|-|Narrow|On|Del|Low");
        row(0x1E, "ffff050000ffff01 000000", zh, // 17-bit counts, CH 16
            "819.19375|655.35500|OFF|OFF|Close|No TX|宽带|关闭|添加|高");
    }

    // A side's frequency and tone: count bytes low and high, the flags byte (bit 0:
    // bit 16 of the count, bit 2: 6.25 kHz steps, bits 4-6: tone type; the others
    // kept), then the tone value low and high. Bit 16 is never cleared once stored.
    // Receive: even column blocks 0-4. Transmit: even column blocks 5-7, odd column 0-1.
    void encodeSide() {
        const auto row = [](Side side, int oldFlags, double mhz, ToneKind kind, int value,
                            const QByteArray& bytes) {
            const QList<int> offsets = recordOffsets(0x0A).mid(side == Side::Receive ? 0 : 5, 5);
            const RadioImage before = withBytes(7, {offsets[2]}, QByteArray(1, char(oldFlags)));
            RadioImage image = before;
            ChannelRecord(image, 0x0A).setFrequency(side, mhz);
            ChannelRecord(image, 0x0A).setTone(side, Tone{kind, quint16(value)});
            QByteArray got;
            for (int offset : offsets)
                got += char(image[std::size_t(offset)]);
            QCOMPARE(got.toHex(), bytes);
            QVERIFY(changedOnlyAt(before, image, offsets));
        };
        const auto rx = Side::Receive, tx = Side::Transmit;
        row(rx, 0x00, 145.5125, ToneKind::Ctcss, 0x0885, "f25a348508"); // 6.25 kHz
        row(rx, 0xFF, 145.505, ToneKind::Off, 0x0000, "ad718b0000");    // 5 kHz, bits kept
        row(tx, 0x78, 438.0125, ToneKind::Dcs, 0x0013, "c2115d1300");   // bit 16
        row(tx, 0x0C, 400.005, ToneKind::DcsInverted, 0x01EC, "813879ec01");
    }

    // Simplex copies the receive frequency, step and tone over the transmit ones
    // and keeps No TX; version 1.0 clears option bits 0 and 5 (Wide and High).
    // Both stay in the record of the first and last channel and test channel.
    void wholeRecordEdits() {
        for (int column : {0x00, 0x1E, 0x20, 0x34}) {
            RadioImage before = noiseImage(quint32(column));
            before[std::size_t(2 * 128 + column)] &= 0xFE; // receive bit 16 clear,
            before[std::size_t(7 * 128 + column)] |= 0x01; // transmit bit 16 set
            RadioImage image = before;
            const int number = column % 0x20 / 2 + 1;
            ChannelRecord record = column >= 0x20 ? ChannelRecord::testChannel(image, number)
                                                  : ChannelRecord::channel(image, number);
            record.copyReceiveToTransmit();
            QCOMPARE(record.frequency(Side::Transmit), record.frequency(Side::Receive));
            QCOMPARE(record.tone(Side::Transmit), record.tone(Side::Receive));
            QCOMPARE(record.txAllowed(), ChannelView(before, column).txAllowed());
            record.forceWideAndHigh();
            const std::size_t options = std::size_t(256 + column + 1);
            QCOMPARE(int(image[options]), before[options] & ~0x21);
            QVERIFY(changedOnlyAt(before, image, recordOffsets(column)));
        }
    }
};

QTEST_APPLESS_MAIN(TestChannel)
#include "tst_channel.moc"
