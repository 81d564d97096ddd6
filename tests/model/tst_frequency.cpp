#include "frequency.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

class TestFrequency : public QObject {
    Q_OBJECT

private slots:
    void formatting() {
        for (auto [mhz, text] :
             {std::pair{5.0, "005.00000"}, {145.123456, "145.12346"}, {149.999999, "150.00000"}})
            QCOMPARE(qs(formatFrequency(mhz)), QString(text));
    }

    void encoding_data() {
        QTest::addColumn<double>("mhz");
        QTest::addColumn<uint>("steps");
        QTest::addColumn<bool>("step625");
        QTest::newRow("on 6.25 only") << 145.5125 << 23282u << true;
        QTest::newRow("on 5 only") << 145.505 << 29101u << false;
        QTest::newRow("on both grids prefers 6.25") << 145.5 << 23280u << true;
        QTest::newRow("needs bit 16, 6.25") << 438.0125 << 70082u << true;
        QTest::newRow("needs bit 16, 5") << 400.005 << 80001u << false;
        // Quotients that come out a hair below the whole number in binary.
        QTest::newRow("inexact 6.25 quotient") << 512.05 << 81928u << true;
        QTest::newRow("inexact 5 quotient a") << 256.02 << 51204u << false;
        QTest::newRow("inexact 5 quotient b") << 512.035 << 102407u << false;
        // 23280.0032 and 23279.9968 show no decimal point in seven significant
        // digits; 23280.02 does, and is counted in 5 kHz steps.
        QTest::newRow("20 Hz above grid reads as 6.25") << 145.50002 << 23280u << true;
        QTest::newRow("20 Hz below grid reads as 6.25") << 145.49998 << 23280u << true;
        QTest::newRow("100 Hz off grid reads as 5") << 145.5001 << 29100u << false;
    }

    void encoding() {
        QFETCH(double, mhz);
        QFETCH(uint, steps);
        QFETCH(bool, step625);
        QCOMPARE(encodeFrequency(mhz), (FrequencyCode{steps, step625}));
    }

    void validation_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("lower");
        QTest::addColumn<int>("upper");
        QTest::addColumn<QString>("result");
        // Clamping at and beyond the band edges; the leading number of the text.
        QTest::newRow("below lower") << "135.99375" << 136 << 174 << "136.00000";
        QTest::newRow("999 gives upper") << "999" << 136 << 174 << "174.00000";
        QTest::newRow("at upper") << "174.00000" << 136 << 174 << "174.00000";
        QTest::newRow("garbage gives lower") << "abc" << 450 << 470 << "450.00000";
        QTest::newRow("trailing garbage") << "145.5abc" << 136 << 174 << "145.50000";
        // On-grid values are kept; off-grid values go to the nearer grid point.
        QTest::newRow("on 6.25 just below upper") << "173.99375" << 136 << 174 << "173.99375";
        QTest::newRow("on 5 just above lower") << "400.005" << 400 << 470 << "400.00500";
        QTest::newRow("both grids agree") << "145.002" << 136 << 174 << "145.00000";
        QTest::newRow("5 kHz nearer") << "145.003" << 136 << 174 << "145.00500";
        QTest::newRow("6.25 kHz nearer, down") << "145.0070" << 136 << 174 << "145.00625";
        QTest::newRow("more decimals") << "145.0050001" << 136 << 174 << "145.00500";
        QTest::newRow("snaps onto upper") << "519.99999" << 465 << 520 << "520.00000";
        // Ties go to 6.25 kHz, also where value * 100000 is a hair off the tie in binary.
        QTest::newRow("tie, 6.25 above, exact") << "136.03625" << 136 << 174 << "136.03750";
        QTest::newRow("tie, 6.25 below, exact") << "136.03875" << 136 << 174 << "136.03750";
        QTest::newRow("tie, 6.25 above") << "145.01125" << 136 << 174 << "145.01250";
        QTest::newRow("tie, 6.25 below") << "136.11375" << 136 << 174 << "136.11250";
    }

    void validation() {
        QFETCH(QString, text);
        QFETCH(int, lower);
        QFETCH(int, upper);
        QFETCH(QString, result);
        const std::string out = validateFrequencyText(text.toStdString(), BandLimits{lower, upper});
        QCOMPARE(qs(out), result);
        // The result is a fixed point: validating it again changes nothing.
        QCOMPARE(qs(validateFrequencyText(out, BandLimits{lower, upper})), qs(out));
    }
};

QTEST_APPLESS_MAIN(TestFrequency)
#include "tst_frequency.moc"
