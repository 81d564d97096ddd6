#include "channel.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

// A channel's frequencies and tones. The radio stores a frequency as a count of
// 5 or 6.25 kHz steps: 16 bits in two bytes, then a flags byte with bit 16 of
// the count (bit 0), the 6.25 kHz step (bit 2) and the tone type (bits 4-6).
// The bytes of the whole record are read and written by the command line's
// `show` and `set` suites.
class TestChannel : public QObject {
    Q_OBJECT

private slots:
    // The plain cases (5 kHz only, both grids, past 16 bits) are the command
    // line's `set` rows and the window's frequency box; here the binary edges.
    void frequencyEncoding() {
        const auto row = [](double mhz, uint steps, bool step625) {
            QCOMPARE(encodeFrequency(mhz), (FrequencyCode{steps, step625}));
        };
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
};

QTEST_APPLESS_MAIN(TestChannel)
#include "tst_channel.moc"
