#include "channel.h"
#include "model_test_util.h"
#include "options.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

int bcd(int value) {
    return (value / 10) * 16 + value % 10;
}

// A list: its key and label; where it is stored, which bits an item index
// writes there; its first and last item ("English=Chinese") and samples of
// the others ("index=English=Chinese"); "byte>index" readings of stored bytes,
// the odd and out-of-range ones included.
struct OptionRule {
    OptionId id;
    const char *name, *label;
    int offset, mask, count;
    int (*bits)(int);
    int power; // what bits 0-1 of 0x256 (power selection) are set to, -1: left as they are
    const char *first, *last, *samples, *readings;
};

using O = OptionId;
const OptionRule kRules[] = {
    {O::CboTXLimit, "CboTXLimit", "Time Out Timer", 0x3D6, 0xFF, 11,
     [](int i) { return bcd(i * 3); }, -1, "Off=关闭", "300sec=300秒", "1=30sec=30秒",
     "01>0 02>1 04>1 05>2 1A>7 2A>10 30>10 31>0 FE>0 FF>10"},
    {O::CboPreAlert, "CboPreAlert", "TOT Pre-Alert", 0x2D7, 0xFF, 255, [](int i) { return i; }, -1,
     "Off=关闭", "254sec=254秒", "1=1sec=1秒", "80>128 FF>0"},
    {O::CboTOTAgain, "CboTOTAgain", "TOT Rekey Time", 0x357, 0xFF, 61, [](int i) { return bcd(i); },
     -1, "Off=关闭", "60sec=60秒", "", "0F>15 5A>60 5F>0 60>60 61>0 FF>0"},
    {O::CboTOTReset, "CboTOTReset", "TOT Reset Time", 0x3D7, 0xFF, 16, [](int i) { return bcd(i); },
     -1, "Off=关闭", "15sec=15秒", "", "0A>10 0F>15 15>15 16>0 FF>0"},
    {O::CboRing, "CboRing", "Beep", 0x257, 0x20, 2, [](int i) { return i << 5; }, -1, "Off=关闭",
     "On=打开", "", ""},
    {O::CboHandModel, "CboHandModel", "Manual", 0x257, 0x01, 2, [](int i) { return i; }, -1,
     "Off=关闭", "On=打开", "", ""},
    {O::CboBatFunction, "CboBatFunction", "Batt Save", 0x257, 0x08, 2, [](int i) { return i << 3; },
     -1, "Off=关闭", "On=打开", "", ""},
    {O::CboSQ, "CboSQ", "Sq Level", 0x1D7, 0xFF, 10, [](int i) { return i; }, -1, "0=0", "9=9", "",
     "0A>0 10>0 FF>0"},
    {O::CboScan, "CboScan", "Scan Mode", 0x056, 0x18, 3, [](int i) { return i << 3; }, -1,
     "Off=关闭", "Time=时间", "1=Carrier=载波", "18>0 E7>0 EF>1"},
    {O::CboPriorityCH, "CboPriorityCH", "Priority Ch", 0x156, 0xFF, 16,
     [](int i) { return bcd(i); }, -1, "Off=关闭", "CH15=信道15", "1=CH1=信道1",
     "0A>10 0F>15 10>10 15>15 16>0 FF>0"},
    {O::CboBakScan, "CboBakScan", "LB Period", 0x1D6, 0xFF, 48, [](int i) { return bcd(i + 3); },
     -1, "0.3sec=0.3秒", "5.0sec=5.0秒", "7=1.0sec=1.0秒",
     "00>0 02>0 04>1 0A>7 10>7 4A>47 4F>0 50>47 51>0"},
    {O::CboBakCH, "CboBakCH", "Revert Ch", 0x0D6, 0x07, 4, [](int i) { return i + 1; }, -1,
     "Recent Rx Ch=最近接收呼叫信道", "Priority Ch=优先信道", "", "00>0 05>0 07>0 F9>0 0C>3"},
    {O::CboScanHold, "CboScanHold", "Scan Delay", 0x356, 0xFF, 20, [](int i) { return bcd(i * 5); },
     -1, "0.0sec=0.0秒", "9.5sec=9.5秒", "1=0.5sec=0.5秒", "02>0 03>1 07>1 08>2 10>2 97>19 FF>19"},
    {O::CboMoni, "CboMoni", "Moni", 0x056, 0x60, 4, [](int i) { return i << 5; }, 0,
     "Off=关闭监听功能", "Squelch Momentary=暂态有条件监听",
     "1=Unmute Momentary=暂态无条件监听;2=Unmute Toggle=稳态无条件监听", "20>1 60>3 9F>0"},
    {O::CboPowSel, "CboPowSel", "Power Sel", 0x256, 0x03, 3, [](int i) { return i; }, -1, "None=无",
     "Long-hit [Moni]=长按[Moni]键", "", "03>0 FD>1 FE>2"},
    {O::CboBandSel, "CboBandSel", "W/N", 0x257, 0x02, 2, [](int i) { return i << 1; }, -1,
     "Wide=宽带", "Narrow=窄带", "", ""},
    // While power selection is "Long-hit [Moni]" the monitor list is short, and
    // the momentary functions show as "Off".
    {O::CboMoni, "CboMoni, short", "Moni", 0x056, 0x60, 2, [](int i) { return i << 6; }, 2,
     "Off=关闭监听功能", "Unmute Toggle=稳态无条件监听", "", "00>0 20>0 40>1 60>0 FF>0"},
};

void setPowerSelection(RadioImage& image, int selection) {
    if (selection >= 0)
        image[0x256] = quint8((image[0x256] & ~0x03) | selection);
}

} // namespace

class TestOptions : public QObject {
    Q_OBJECT

private slots:
    void options_data() {
        QTest::addColumn<int>("rule");
        for (int i = 0; i < int(std::size(kRules)); ++i)
            QTest::newRow(kRules[i].name) << i;
    }

    // The list's name, label and items in both languages. Every item from
    // three starting images (zeros, ones, noise): encoding writes exactly the
    // named bits and no other byte, and decoding gives the index back; indices
    // off the list are refused and change nothing. Every stored byte reads as an
    // item of the list, which is short exactly when bits 0-1 of 0x256 hold 2.
    void options() {
        QFETCH(int, rule);
        const OptionRule& r = kRules[rule];
        const OptionId id = r.id;
        OptionId named = OptionId::CboSQ;
        QVERIFY(optionFromName(optionName(id), named) && named == id);
        QCOMPARE(qs(optionName(id)), QString(r.name).section(',', 0, 0));
        QCOMPARE(qs(ResString(optionLabelId(id), Language::English)), QString(r.label));
        RadioImage image = noiseImage(17);
        setPowerSelection(image, r.power);
        QStringList samples = QString::fromUtf8(r.samples).split(';', Qt::SkipEmptyParts);
        samples << "0=" + QString::fromUtf8(r.first)
                << QString::number(r.count - 1) + "=" + QString::fromUtf8(r.last);
        for (int part : {1, 2}) {
            const auto items =
                optionItems(id, image, part == 1 ? Language::English : Language::Chinese);
            QCOMPARE(int(items.size()), r.count);
            for (const QString& sample : samples)
                QCOMPARE(qs(items.at(sample.section('=', 0, 0).toUInt())),
                         sample.section('=', part, part));
        }
        RadioImage zeros, ones;
        zeros.fill(0x00);
        ones.fill(0xFF);
        for (RadioImage base : {zeros, ones, noiseImage(23)}) {
            setPowerSelection(base, r.power);
            for (int index = 0; index < r.count; ++index) {
                RadioImage edited = base;
                QVERIFY(encodeOption(id, edited, index));
                QCOMPARE(decodeOption(id, edited), index);
                QCOMPARE(int(edited[std::size_t(r.offset)]),
                         (base[std::size_t(r.offset)] & ~r.mask) | r.bits(index));
                for (int offset : changedOffsets(base, edited))
                    QCOMPARE(offset, r.offset);
            }
            for (int bad : {-1, r.count}) {
                RadioImage edited = base;
                QVERIFY(!encodeOption(id, edited, bad));
                QVERIFY(edited == base);
            }
        }
        for (const QString& pair : QString(r.readings).split(' ', Qt::SkipEmptyParts)) {
            image[std::size_t(r.offset)] = quint8(pair.section('>', 0, 0).toUInt(nullptr, 16));
            QVERIFY2(decodeOption(id, image) == pair.section('>', 1).toInt(), qPrintable(pair));
        }
        for (int power = 0; power < 4; ++power) {
            setPowerSelection(image, power);
            for (int byte = 0; byte < 256; ++byte) {
                image[std::size_t(r.offset)] = quint8(byte);
                const int index = decodeOption(id, image);
                QVERIFY(index >= 0 &&
                        index < int(optionItems(id, image, Language::English).size()));
                QCOMPARE(monitorListIsShort(image), (image[0x256] & 0x03) == 2);
            }
        }
    }

    // A version-1.0 radio has no power selection, no low power and no narrow
    // band: bits 0-1 of 0x256 and bits 0 and 5 of a channel's options byte
    // (CH 16: block 2 of column 0x1F) are cleared, the others kept.
    void version10Edits() {
        RadioImage before = noiseImage(4);
        before[0x256] = before[0x11F] = 0xFF;
        RadioImage image = before;
        clearPowerSelection(image);
        ChannelRecord::channel(image, 16).forceWideAndHigh();
        QCOMPARE(changedOffsets(before, image), (QList<int>{0x11F, 0x256}));
        QCOMPARE(int(image[0x256]), 0xFC);
        QCOMPARE(int(image[0x11F]), 0xDE);
    }
};

QTEST_APPLESS_MAIN(TestOptions)
#include "tst_options.moc"
