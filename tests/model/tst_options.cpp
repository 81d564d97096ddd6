#include "model_test_util.h"
#include "options.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

Q_DECLARE_METATYPE(zr310::OptionId)

namespace {

int bcd(int value) {
    return (value / 10) * 16 + value % 10;
}

// Where each list is stored, which bits an item index writes there, and
// samples of its items ("index=text", English then Chinese).
struct OptionRule {
    OptionId id;
    const char* name;
    int labelId, offset, mask, count;
    int (*bits)(int);
    const char* english;
    const char* chinese;
};

using O = OptionId;
const OptionRule kRules[] = {
    {O::CboTXLimit, "CboTXLimit", 1304, 0x3D6, 0xFF, 11, [](int i) { return bcd(i * 3); },
     "0=Off;1=30sec;2=60sec;10=300sec", "0=关闭;1=30秒;10=300秒"},
    {O::CboPreAlert, "CboPreAlert", 1305, 0x2D7, 0xFF, 255, [](int i) { return i; },
     "0=Off;1=1sec;254=254sec", "0=关闭;254=254秒"},
    {O::CboTOTAgain, "CboTOTAgain", 1306, 0x357, 0xFF, 61, [](int i) { return bcd(i); },
     "0=Off;1=1sec;60=60sec", "0=关闭;60=60秒"},
    {O::CboTOTReset, "CboTOTReset", 1307, 0x3D7, 0xFF, 16, [](int i) { return bcd(i); },
     "0=Off;15=15sec", "0=关闭;15=15秒"},
    {O::CboRing, "CboRing", 1308, 0x257, 0x20, 2, [](int i) { return i << 5; }, "0=Off;1=On",
     "0=关闭;1=打开"},
    {O::CboHandModel, "CboHandModel", 1310, 0x257, 0x01, 2, [](int i) { return i; }, "0=Off;1=On",
     "0=关闭;1=打开"},
    {O::CboBatFunction, "CboBatFunction", 1311, 0x257, 0x08, 2, [](int i) { return i << 3; },
     "0=Off;1=On", "0=关闭;1=打开"},
    {O::CboSQ, "CboSQ", 1309, 0x1D7, 0xFF, 10, [](int i) { return i; }, "0=0;1=1;9=9", "9=9"},
    {O::CboScan, "CboScan", 1312, 0x056, 0x18, 3, [](int i) { return i << 3; },
     "0=Off;1=Carrier;2=Time", "0=关闭;1=载波;2=时间"},
    {O::CboPriorityCH, "CboPriorityCH", 1313, 0x156, 0xFF, 16, [](int i) { return bcd(i); },
     "0=Off;1=CH1;10=CH10;15=CH15", "0=关闭;1=信道1;15=信道15"},
    {O::CboBakScan, "CboBakScan", 1314, 0x1D6, 0xFF, 48, [](int i) { return bcd(i + 3); },
     "0=0.3sec;7=1.0sec;8=1.1sec;47=5.0sec", "0=0.3秒;47=5.0秒"},
    {O::CboBakCH, "CboBakCH", 1315, 0x0D6, 0x07, 4, [](int i) { return i + 1; },
     "0=Recent Rx Ch;1=Recent Used Ch;2=1st Scan Ch;3=Priority Ch",
     "0=最近接收呼叫信道;1=最近使用信道;2=第一扫描信道;3=优先信道"},
    {O::CboScanHold, "CboScanHold", 1316, 0x356, 0xFF, 20, [](int i) { return bcd(i * 5); },
     "0=0.0sec;1=0.5sec;2=1.0sec;19=9.5sec", "0=0.0秒;19=9.5秒"},
    {O::CboMoni, "CboMoni", 1317, 0x056, 0x60, 4, [](int i) { return i << 5; },
     "0=Off;1=Unmute Momentary;2=Unmute Toggle;3=Squelch Momentary",
     "0=关闭监听功能;1=暂态无条件监听;2=稳态无条件监听;3=暂态有条件监听"},
    {O::CboPowSel, "CboPowSel", 1318, 0x256, 0x03, 3, [](int i) { return i; },
     "0=None;1=Short-hit [Moni];2=Long-hit [Moni]", "0=无;1=短按[Moni]键;2=长按[Moni]键"},
    {O::CboBandSel, "CboBandSel", 1211, 0x257, 0x02, 2, [](int i) { return i << 1; },
     "0=Wide;1=Narrow", "0=宽带;1=窄带"},
};

const OptionRule& rule(OptionId id) {
    return kRules[int(std::find_if(std::begin(kRules), std::end(kRules),
                                   [id](const OptionRule& r) { return r.id == id; }) -
                      std::begin(kRules))];
}

// Bits 0-1 of 0x256 (power selection) choose between the two monitor lists.
void setPowerSelection(RadioImage& image, int selection) {
    image[0x256] = quint8((image[0x256] & ~0x03) | selection);
}

} // namespace

class TestOptions : public QObject {
    Q_OBJECT

private slots:
    void names() {
        QCOMPARE(kAllOptions.size(), std::size(kRules));
        for (std::size_t i = 0; i < kAllOptions.size(); ++i) {
            QCOMPARE(kAllOptions[i], kRules[i].id);
            QCOMPARE(qs(optionName(kRules[i].id)), QString::fromLatin1(kRules[i].name));
            QCOMPARE(optionLabelId(kRules[i].id), kRules[i].labelId);
            OptionId id = OptionId::CboBandSel;
            QVERIFY(optionFromName(kRules[i].name, id));
            QCOMPARE(id, kRules[i].id);
        }
        OptionId id = OptionId::CboSQ;
        QVERIFY(!optionFromName("CboNothing", id));
    }

    void items_data() {
        QTest::addColumn<OptionId>("id");
        for (const OptionRule& r : kRules)
            QTest::newRow(r.name) << r.id;
    }

    void items() {
        QFETCH(OptionId, id);
        RadioImage image;
        setPowerSelection(image, 1); // the full monitor list
        for (auto [language, samples] : {std::pair{Language::English, rule(id).english},
                                         {Language::Chinese, rule(id).chinese}}) {
            const QStringList items = qsl(optionItems(id, image, language));
            QCOMPARE(items.size(), rule(id).count);
            for (const QString& sample : QString::fromUtf8(samples).split(';'))
                QCOMPARE(items.value(sample.section('=', 0, 0).toInt()), sample.section('=', 1));
        }
    }

    // Every item of every list on three backgrounds: encoding writes exactly the
    // named bits, decoding gives the index back, indices off the list are refused.
    void encodeDecode_data() {
        QTest::addColumn<OptionId>("id");
        QTest::addColumn<int>("background");
        for (const OptionRule& r : kRules)
            for (int background : {0x00, 0xFF, -1})
                QTest::addRow("%s on %d", r.name, background) << r.id << background;
    }

    void encodeDecode() {
        QFETCH(OptionId, id);
        QFETCH(int, background);
        const OptionRule& r = rule(id);
        const std::size_t at = std::size_t(r.offset);

        RadioImage start = noiseImage(quint32(r.offset));
        if (background >= 0)
            start.fill(quint8(background));
        if (id == OptionId::CboMoni)
            setPowerSelection(start, 0);

        for (int index = 0; index < r.count; ++index) {
            RadioImage image = start;
            QVERIFY(encodeOption(id, image, index));
            const QByteArray where = QByteArray::number(index);
            QVERIFY2(decodeOption(id, image) == index, where);
            QVERIFY2(image[at] == ((start[at] & ~r.mask) | r.bits(index)), where);
            QVERIFY2(changedOffsets(start, image).size() <= 1, where);
        }
        for (int bad : {-1, r.count, 1000}) {
            RadioImage image = start;
            QVERIFY(!encodeOption(id, image, bad));
            QVERIFY(image == start);
        }
    }

    // "byte>index" pairs, in hexadecimal and decimal.
    void edgeBytes_data() {
        QTest::addColumn<OptionId>("id");
        QTest::addColumn<QString>("pairs");
        auto row = [](OptionId id, const char* pairs) {
            QTest::newRow(rule(id).name) << id << pairs;
        };
        row(O::CboTXLimit, "00>0 01>0 02>1 03>1 04>1 05>2 15>5 1A>7 2A>10 2F>10 30>10 31>0 99>0 "
                           "FE>0 FF>10");
        row(O::CboPreAlert, "00>0 01>1 80>128 FE>254 FF>0");
        row(O::CboTOTAgain, "00>0 0F>15 59>59 5A>60 5F>0 60>60 61>0 FF>0");
        row(O::CboTOTReset, "09>9 0A>10 0F>15 15>15 16>0 FF>0");
        row(O::CboSQ, "00>0 09>9 0A>0 10>0 FF>0");
        row(O::CboPriorityCH, "00>0 01>1 0A>10 0F>15 10>10 15>15 16>0 FF>0");
        row(O::CboBakScan, "00>0 02>0 03>0 04>1 0A>7 10>7 49>46 4F>0 50>47 51>0 FF>0");
        row(O::CboScanHold, "00>0 02>0 03>1 05>1 07>1 08>2 10>2 95>19 97>19 99>19 FF>19");
        row(O::CboBakCH, "00>0 01>0 02>1 03>2 04>3 05>0 07>0 F9>0 0C>3");
        row(O::CboScan, "00>0 08>1 10>2 18>0 E7>0 EF>1");
        row(O::CboPowSel, "00>0 01>1 02>2 03>0 FD>1 FE>2");
        row(O::CboRing, "DF>0 20>1");
        row(O::CboBatFunction, "F7>0 08>1");
        row(O::CboHandModel, "FE>0 01>1");
        row(O::CboBandSel, "FD>0 02>1");
    }

    void edgeBytes() {
        QFETCH(OptionId, id);
        QFETCH(QString, pairs);
        RadioImage image = noiseImage(17);
        for (const QString& pair : pairs.split(' ')) {
            image[std::size_t(rule(id).offset)] =
                quint8(pair.section('>', 0, 0).toUInt(nullptr, 16));
            QVERIFY2(decodeOption(id, image) == pair.section('>', 1).toInt(), qPrintable(pair));
        }
    }

    void everyByteDecodesToAnItem() {
        RadioImage image = noiseImage(99);
        for (const OptionRule& r : kRules) {
            for (int power = 0; power < 4; ++power) {
                setPowerSelection(image, power);
                for (int byte = 0; byte < 256; ++byte) {
                    image[std::size_t(r.offset)] = quint8(byte);
                    const int count = int(optionItems(r.id, image, Language::English).size());
                    const int index = decodeOption(r.id, image);
                    QVERIFY2(index >= 0 && index < count, r.name);
                }
            }
        }
    }

    // While power selection is "Long-hit [Moni]" the monitor list is "Off", "Unmute Toggle".
    void shortMonitorList_data() {
        QTest::addColumn<int>("powerByte");
        QTest::addColumn<bool>("isShort");
        QTest::newRow("none") << 0x00 << false;
        QTest::newRow("short hit") << 0x01 << false;
        QTest::newRow("long hit") << 0x02 << true;
        QTest::newRow("long hit, high bits set") << 0xFE << true;
        QTest::newRow("unused value 3") << 0xFF << false;
    }

    void shortMonitorList() {
        QFETCH(int, powerByte);
        QFETCH(bool, isShort);
        RadioImage start = noiseImage(8);
        start[0x256] = quint8(powerByte);
        start[0x056] = 0x9F; // monitor bits clear, all others set
        QCOMPARE(monitorListIsShort(start), isShort);
        QCOMPARE(qsl(optionItems(O::CboMoni, start, Language::English)).join('|'),
                 isShort ? "Off|Unmute Toggle"
                         : "Off|Unmute Momentary|Unmute Toggle|Squelch Momentary");
        if (!isShort)
            return;
        QCOMPARE(qsl(optionItems(O::CboMoni, start, Language::Chinese)).join('|'),
                 "关闭监听功能|稳态无条件监听");

        for (auto [bits, index] : {std::pair{0x00, 0}, {0x20, 0}, {0x40, 1}, {0x60, 0}}) {
            RadioImage image = start;
            image[0x056] = quint8(0x9F | bits);
            QCOMPARE(decodeOption(O::CboMoni, image), index);
        }
        for (auto [index, bits] : {std::pair{0, 0x00}, {1, 0x40}}) {
            RadioImage image = start;
            image[0x056] = 0xFF;
            QVERIFY(encodeOption(O::CboMoni, image, index));
            QCOMPARE(int(image[0x056]), 0x9F | bits);
            QCOMPARE(decodeOption(O::CboMoni, image), index);
        }
        RadioImage image = start;
        QVERIFY(!encodeOption(O::CboMoni, image, 2));
        QVERIFY(image == start);
    }

    void clearPowerSelection() {
        for (int byte : {0xFF, 0x02, 0x7D}) {
            RadioImage before = noiseImage(quint32(byte));
            before[0x256] = quint8(byte);
            RadioImage image = before;
            zr310::clearPowerSelection(image);
            QCOMPARE(int(image[0x256]), byte & 0xFC);
            QVERIFY(changedOffsets(before, image).size() <= 1);
        }
    }

    // Narrow on the radio-wide W/N list also marks the 16 channels narrow (bit 0
    // of each odd column's block 2); Wide leaves them. Test channels are not channels.
    void radioWideBandwidth() {
        for (int index : {0, 1}) {
            const RadioImage before = noiseImage(quint32(index) + 30);
            RadioImage image = before;
            setRadioWideBandwidth(image, index);
            QCOMPARE(int(image[0x257]), index ? before[0x257] | 0x02 : before[0x257] & ~0x02);
            for (std::size_t options = 0x101; options <= 0x11F; options += 2)
                QCOMPARE(int(image[options]), index ? before[options] | 0x01 : before[options]);
            for (int offset : changedOffsets(before, image))
                QVERIFY(offset == 0x257 || (offset >= 0x101 && offset <= 0x11F && offset % 2));
        }
    }
};

QTEST_APPLESS_MAIN(TestOptions)
#include "tst_options.moc"
