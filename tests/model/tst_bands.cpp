#include "bands.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

struct BandRow {
    const char* text;
    int code;
    int lower, upper;
};

// The band list in list order, with the code stored at 0x15A.
const BandRow kBandRows[] = {
    {"136 - 150MHz", 0x01, 136, 150}, {"150 - 174MHz", 0x00, 150, 174},
    {"136 - 174MHz", 0x52, 136, 174}, {"245 - 246MHz", 0x53, 245, 246},
    {"350 - 390MHz", 0x54, 350, 390}, {"400 - 430MHz", 0x07, 400, 430},
    {"430 - 450MHz", 0x20, 430, 450}, {"450 - 470MHz", 0x06, 450, 470},
    {"400 - 470MHz", 0x58, 400, 470}, {"465 - 520MHz", 0x59, 465, 520},
};

int listIndexOfCode(int code) {
    for (int i = 0; i < int(std::size(kBandRows)); ++i)
        if (kBandRows[i].code == code)
            return i;
    return 7; // unknown codes show "450 - 470MHz"
}

} // namespace

class TestBands : public QObject {
    Q_OBJECT

private slots:
    void table_data() {
        QTest::addColumn<int>("index");
        for (int i = 0; i < int(std::size(kBandRows)); ++i)
            QTest::newRow(kBandRows[i].text) << i;
    }

    void table() {
        QFETCH(int, index);
        const BandRow& row = kBandRows[index];
        const QString range =
            QString::fromUtf8("%1.00000～%2.00000 MHz").arg(row.lower).arg(row.upper);

        QCOMPARE(qs(kBands[std::size_t(index)].text), QString::fromLatin1(row.text));
        QCOMPARE(int(kBands[std::size_t(index)].code), row.code);
        QCOMPARE(bandIndexOfText(row.text), std::optional<int>(index));
        QCOMPARE(qs(bandRangeText(row.text)), range);
        QCOMPARE(bandLimitsOfText(row.text), (BandLimits{row.lower, row.upper}));

        // Writing the band stores its code and nothing else; reading it back gives the entry.
        const RadioImage before = noiseImage(quint32(index));
        RadioImage image = before;
        setBand(image, index);
        QCOMPARE(int(image[0x15A]), row.code);
        QVERIFY(changedOffsets(before, image).size() <= 1);
        QCOMPARE(bandIndexFromImage(image), index);
    }

    void everyCodeSelectsAnEntry() {
        RadioImage image = noiseImage(42);
        for (int code = 0; code < 256; ++code) {
            image[0x15A] = quint8(code);
            QCOMPARE(bandIndexFromImage(image), listIndexOfCode(code));
        }
    }

    void unknownTexts_data() {
        QTest::addColumn<QString>("text");
        QTest::newRow("empty") << "";
        QTest::newRow("space before unit") << "450 - 470 MHz";
        QTest::newRow("lower case unit") << "450 - 470mhz";
        QTest::newRow("no spaces") << "450-470MHz";
        QTest::newRow("trailing blank") << "450 - 470MHz ";
        QTest::newRow("range label") << "450.00000～470.00000 MHz";
    }

    void unknownTexts() {
        QFETCH(QString, text);
        const std::string utf8 = text.toStdString();
        QCOMPARE(bandIndexOfText(utf8), std::optional<int>());
        QCOMPARE(qs(bandRangeText(utf8)), QString());
        QCOMPARE(bandLimitsOfText(utf8), (BandLimits{0, 0}));
    }

    void rangeLabel() {
        QCOMPARE(qs(bandRangeText("465 - 520MHz")), QString::fromUtf8("465.00000～520.00000 MHz"));
    }
};

QTEST_APPLESS_MAIN(TestBands)
#include "tst_bands.moc"
