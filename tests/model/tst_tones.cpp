#include "model_test_util.h"
#include "tones.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

const QStringList kCtcss =
    QStringLiteral("67.0 69.3 71.9 74.4 77.0 79.7 82.5 85.4 88.5 91.5 94.8 97.4 100.0 "
                   "103.5 107.2 110.9 114.8 118.8 123.0 127.3 131.8 136.5 141.3 146.2 "
                   "151.4 156.7 159.8 162.2 165.5 167.9 171.3 173.8 177.3 179.9 183.5 "
                   "186.2 189.9 192.8 196.6 199.5 203.5 206.5 210.7 218.1 225.7 229.1 "
                   "233.6 241.8 250.3 254.1")
        .split(' ');

const QStringList kDcs =
    QStringLiteral(
        "023 025 026 031 032 043 047 051 054 065 071 072 073 074 114 115 116 125 131 132 134 143 "
        "152 155 156 162 165 172 174 205 223 226 243 244 245 251 261 263 265 271 306 311 315 331 "
        "343 346 351 364 365 371 411 412 413 423 431 432 445 464 465 466 503 506 516 532 546 565 "
        "606 612 624 627 631 632 654 662 664 703 712 723 731 732 734 743 754")
        .split(' ');

} // namespace

class TestTones : public QObject {
    Q_OBJECT

private slots:
    void lists() {
        QCOMPARE(qsl(SetQtcodeArray()), kCtcss);
        QCOMPARE(qsl(SetDQtcodeArray()), kDcs);
    }

    // Every listed tone and code, and values and texts off the lists: the stored
    // value's text, and what parsing the text gives back.
    void table_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("flags"); // -1: a text no stored value shows
        QTest::addColumn<int>("value");
        QTest::addColumn<bool>("parses");
        for (const QString& tone : kCtcss) // four BCD digits of the tenths of a hertz
            QTest::newRow(qPrintable(tone))
                << "CTC " + tone << 0x30 << QString(tone).remove('.').toInt(nullptr, 16) << true;
        for (const QString& code : kDcs) { // the binary value of the octal code
            QTest::newRow(qPrintable(code))
                << "DCS " + code << 0x50 << code.toInt(nullptr, 8) << true;
            QTest::newRow(qPrintable("-" + code))
                << "-DCS " + code << 0x70 << code.toInt(nullptr, 8) << true;
        }
        QTest::newRow("OFF") << "OFF" << 0x00 << 0 << true;
        QTest::newRow("any octal DCS") << "DCS 777" << 0x50 << 0777 << true;
        QTest::newRow("-DCS not listed") << "-DCS 017" << 0x70 << 017 << true;
        QTest::newRow("ctcss nibbles above 9") << "CTC 101.1" << 0x30 << 0x0A0B << false;
        QTest::newRow("dcs above 511") << "-DCS 800" << 0x70 << 0x0200 << false;
        for (const char* text : {"", "CTC 88.6", "CTC 88.5x", "-CTC 88.5", "DCS 028", "DCS 23",
                                 "DCS 0234", "DCS023", "--DCS 023"})
            QTest::addRow("refused \"%s\"", text) << text << -1 << 0 << false;
    }

    void table() {
        QFETCH(QString, text);
        QFETCH(int, flags);
        QFETCH(int, value);
        QFETCH(bool, parses);
        const Tone tone = decodeTone(quint8(flags), quint8(value & 0xFF), quint8(value >> 8));
        if (flags >= 0)
            QCOMPARE(qs(toneText(tone)), text);
        QCOMPARE(parseToneText(text.toStdString()), parses ? std::optional(tone) : std::nullopt);
    }

    // Only bits 4-6 of the flags byte name the tone type; 0x30, 0x50, 0x70 or off.
    void decodeTypes() {
        const char* texts[] = {"OFF", "OFF", "OFF", "CTC 8.5", "OFF", "DCS 205", "OFF", "-DCS 205"};
        for (int flags = 0; flags < 256; ++flags)
            QCOMPARE(qs(toneText(decodeTone(quint8(flags), 0x85, 0x00))),
                     QString(texts[(flags >> 4) & 7]));
    }
};

QTEST_APPLESS_MAIN(TestTones)
#include "tst_tones.moc"
