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

} // namespace

class TestBands : public QObject {
    Q_OBJECT

private slots:
    // Each entry by its text and by its code; writing the band stores its code and
    // nothing else. Every other code reads as "450 - 470MHz".
    void table() {
        RadioImage image = noiseImage(42);
        QList<int> codes;
        for (int index = 0; index < int(std::size(kBandRows)); ++index) {
            const BandRow& row = kBandRows[index];
            QCOMPARE(bandIndexOfText(row.text), std::optional<int>(index));
            QCOMPARE(qs(bandRangeText(row.text)),
                     QString::fromUtf8("%1.00000～%2.00000 MHz").arg(row.lower).arg(row.upper));
            QCOMPARE(bandLimitsOfText(row.text), (BandLimits{row.lower, row.upper}));
            const RadioImage before = image;
            setBand(image, index);
            QCOMPARE(changedOffsets(before, image), QList<int>{0x15A});
            QCOMPARE(int(image[0x15A]), row.code);
            codes << row.code;
        }
        for (int code = 0; code < 256; ++code) {
            image[0x15A] = quint8(code);
            QCOMPARE(bandIndexFromImage(image), codes.contains(code) ? codes.indexOf(code) : 7);
        }
    }

    void unknownTexts() {
        for (const char* text :
             {"", "450 - 470 MHz", "450 - 470MHz ", "450.00000～470.00000 MHz"}) {
            QCOMPARE(bandIndexOfText(text), std::optional<int>());
            QCOMPARE(qs(bandRangeText(text)), QString());
            QCOMPARE(bandLimitsOfText(text), (BandLimits{0, 0}));
        }
    }
};

QTEST_APPLESS_MAIN(TestBands)
#include "tst_bands.moc"
