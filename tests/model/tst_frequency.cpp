#include "frequency.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

class TestFrequency : public QObject {
    Q_OBJECT

private slots:
    void stepsToText_data() {
        QTest::addColumn<uint>("steps");
        QTest::addColumn<bool>("step625");
        QTest::addColumn<QString>("text");
        QTest::newRow("zero, 6.25") << 0u << true << "000.00000";
        QTest::newRow("zero, 5") << 0u << false << "000.00000";
        QTest::newRow("all 17 bits, 6.25") << 131071u << true << "819.19375";
        QTest::newRow("all 17 bits, 5") << 131071u << false << "655.35500";
        QTest::newRow("145.505") << 29101u << false << "145.50500";
        QTest::newRow("bit 16 alone, 6.25") << 65536u << true << "409.60000";
        QTest::newRow("438.0125") << 70082u << true << "438.01250";
        QTest::newRow("one step, 5") << 1u << false << "000.00500";
    }

    void stepsToText() {
        QFETCH(uint, steps);
        QFETCH(bool, step625);
        QFETCH(QString, text);
        const double mhz = frequencyMHz({steps, step625});
        QCOMPARE(mhz, steps * (step625 ? 6.25 : 5.0) / 1000.0);
        QCOMPARE(qs(formatFrequency(mhz)), text);
    }

    void formatting() {
        for (auto [mhz, text] : {std::pair{5.0, "005.00000"},
                                 {27.125, "027.12500"},
                                 {145.123456, "145.12346"},
                                 {145.123454, "145.12345"},
                                 {149.999999, "150.00000"}})
            QCOMPARE(qs(formatFrequency(mhz)), QString(text));
    }

    void encoding_data() {
        QTest::addColumn<double>("mhz");
        QTest::addColumn<uint>("steps");
        QTest::addColumn<bool>("step625");
        QTest::newRow("zero") << 0.0 << 0u << true;
        QTest::newRow("on 6.25 only") << 145.5125 << 23282u << true;
        QTest::newRow("on 5 only") << 145.505 << 29101u << false;
        QTest::newRow("on both grids prefers 6.25") << 145.5 << 23280u << true;
        QTest::newRow("25 kHz multiple") << 150.0 << 24000u << true;
        QTest::newRow("5 odd multiple") << 145.005 << 29001u << false;
        QTest::newRow("needs bit 16, 6.25") << 438.0125 << 70082u << true;
        QTest::newRow("needs bit 16, 5") << 400.005 << 80001u << false;
        QTest::newRow("exactly 65536 steps") << 409.6 << 65536u << true;
        QTest::newRow("band top 520") << 520.0 << 83200u << true;
        // Quotients that come out a hair below the whole number in binary.
        QTest::newRow("inexact 6.25 quotient a") << 256.025 << 40964u << true;
        QTest::newRow("inexact 6.25 quotient b") << 512.05 << 81928u << true;
        QTest::newRow("inexact 5 quotient a") << 256.02 << 51204u << false;
        QTest::newRow("inexact 5 quotient b") << 512.035 << 102407u << false;
        // 23280.0032 has no decimal point in seven significant digits.
        QTest::newRow("20 Hz off grid reads as 6.25") << 145.50002 << 23280u << true;
        QTest::newRow("30 Hz off grid reads as 6.25") << 145.50003 << 23280u << true;
        QTest::newRow("20 Hz below grid reads as 6.25") << 145.49998 << 23280u << true;
        // 23280.02 keeps its decimal point: counted in 5 kHz steps.
        QTest::newRow("100 Hz off grid reads as 5") << 145.5001 << 29100u << false;
    }

    void encoding() {
        QFETCH(double, mhz);
        QFETCH(uint, steps);
        QFETCH(bool, step625);
        const FrequencyCode code = encodeFrequency(mhz);
        QCOMPARE(uint(code.steps), steps);
        QCOMPARE(code.step625, step625);
    }

    void validation_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lower");
        QTest::addColumn<int>("upper");
        QTest::addColumn<QString>("result");
        // Clamping at and beyond the band edges.
        QTest::newRow("zero gives lower") << "0" << 136 << 174 << "136.00000";
        QTest::newRow("at lower") << "136" << 136 << 174 << "136.00000";
        QTest::newRow("below lower") << "135.99375" << 136 << 174 << "136.00000";
        QTest::newRow("999 gives upper") << "999" << 136 << 174 << "174.00000";
        QTest::newRow("at upper") << "174.00000" << 136 << 174 << "174.00000";
        QTest::newRow("other band lower") << "12" << 400 << 470 << "400.00000";
        QTest::newRow("empty gives lower") << "" << 450 << 470 << "450.00000";
        QTest::newRow("garbage gives lower") << "abc" << 450 << 470 << "450.00000";
        QTest::newRow("second point ends the number") << "145.1.2" << 136 << 174 << "145.10000";
        QTest::newRow("trailing garbage") << "145.5abc" << 136 << 174 << "145.50000";
        // On-grid values are kept.
        QTest::newRow("on 6.25") << "145.00625" << 136 << 174 << "145.00625";
        QTest::newRow("on 5") << "145.005" << 136 << 174 << "145.00500";
        QTest::newRow("on 6.25 just below upper") << "173.99375" << 136 << 174 << "173.99375";
        QTest::newRow("on 5 just above lower") << "400.005" << 400 << 470 << "400.00500";
        QTest::newRow("short text padded") << "438.1" << 400 << 470 << "438.10000";
        // Off-grid values go to the nearer grid point.
        QTest::newRow("both grids agree") << "145.002" << 136 << 174 << "145.00000";
        QTest::newRow("5 kHz nearer") << "145.003" << 136 << 174 << "145.00500";
        QTest::newRow("6.25 kHz nearer") << "145.006" << 136 << 174 << "145.00625";
        QTest::newRow("6.25 kHz nearer, down") << "145.0070" << 136 << 174 << "145.00625";
        QTest::newRow("tie, 6.25 above, exact") << "136.03625" << 136 << 174 << "136.03750";
        QTest::newRow("tie, 6.25 below, exact") << "136.03875" << 136 << 174 << "136.03750";
        QTest::newRow("tie, 6.25 above") << "145.01125" << 136 << 174 << "145.01250";
        QTest::newRow("tie, 6.25 below") << "145.01375" << 136 << 174 << "145.01250";
        QTest::newRow("tie, 6.25 below, other") << "136.11375" << 136 << 174 << "136.11250";
        QTest::newRow("more decimals") << "145.0050001" << 136 << 174 << "145.00500";
        QTest::newRow("snaps onto upper") << "519.99999" << 465 << 520 << "520.00000";
        QTest::newRow("just above lower snaps to it") << "150.00001" << 150 << 174 << "150.00000";
    }

    void validation() {
        QFETCH(QString, text);
        QFETCH(int, lower);
        QFETCH(int, upper);
        QFETCH(QString, result);
        const std::string out = validateFrequencyText(text.toStdString(), BandLimits{lower, upper});
        // 145.01125 * 100000 and 136.11375 * 100000 come out a hair off the exact
        // tie in binary, so the strict comparison picks the 5 kHz point.
        QCOMPARE(qs(out), result);

        // The result is a fixed point: validating it again changes nothing.
        QCOMPARE(qs(validateFrequencyText(out, BandLimits{lower, upper})), qs(out));
    }
};

QTEST_APPLESS_MAIN(TestFrequency)
#include "tst_frequency.moc"
