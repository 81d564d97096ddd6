#include "model_test_util.h"
#include "tones.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

Q_DECLARE_METATYPE(zr310::ToneKind)

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
        QCOMPARE(kCtcss.size(), 50);
        QCOMPARE(kDcs.size(), 83);
        QCOMPARE(qsl(SetQtcodeArray()), kCtcss);
        QCOMPARE(qsl(SetDQtcodeArray()), kDcs);
    }

    // Every listed tone and code: its stored value, its text, and back.
    void table_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("flags");
        QTest::addColumn<int>("value");
        for (const QString& tone : kCtcss) // four BCD digits of the tenths of a hertz
            QTest::newRow(qPrintable(tone))
                << "CTC " + tone << 0x30 << QString(tone).remove('.').toInt(nullptr, 16);
        for (const QString& code : kDcs) { // the binary value of the octal code
            QTest::newRow(qPrintable(code)) << "DCS " + code << 0x50 << code.toInt(nullptr, 8);
            QTest::newRow(qPrintable("-" + code))
                << "-DCS " + code << 0x70 << code.toInt(nullptr, 8);
        }
    }

    void table() {
        QFETCH(QString, text);
        QFETCH(int, flags);
        QFETCH(int, value);
        const std::string bare = text.section(' ', 1).toStdString();
        QCOMPARE(int(flags == 0x30 ? ctcssValue(bare) : dcsValue(bare)), value);
        const Tone tone = decodeTone(quint8(flags), quint8(value & 0xFF), quint8(value >> 8));
        QCOMPARE(int(toneTypeBits(tone.kind)), flags);
        QCOMPARE(int(tone.value), value);
        QCOMPARE(qs(toneText(tone)), text);
        QCOMPARE(parseToneText(text.toStdString()), std::optional<Tone>(tone));
    }

    // Only bits 4-6 of the flags byte name the tone type; 0x30, 0x50, 0x70 or off.
    void decodeTypes() {
        for (int flags = 0; flags < 256; ++flags) {
            const Tone tone = decodeTone(quint8(flags), 0x85, 0x00);
            const int type = flags & 0x70;
            const bool on = type == 0x30 || type == 0x50 || type == 0x70;
            QCOMPARE(int(toneTypeBits(tone.kind)), on ? type : 0);
            QCOMPARE(qs(toneText(tone)), type == 0x30   ? "CTC 8.5"
                                         : type == 0x50 ? "DCS 205"
                                         : type == 0x70 ? "-DCS 205"
                                                        : "OFF");
        }
        QCOMPARE(int(toneTypeBits(ToneKind::Off)), 0);
    }

    // Values off the lists still decode arithmetically.
    void displayForms_data() {
        QTest::addColumn<ToneKind>("kind");
        QTest::addColumn<int>("value");
        QTest::addColumn<QString>("text");
        QTest::newRow("off with a value") << ToneKind::Off << 0x0885 << "OFF";
        QTest::newRow("ctcss not listed") << ToneKind::Ctcss << 0x0600 << "CTC 60.0";
        QTest::newRow("ctcss nibbles above 9") << ToneKind::Ctcss << 0x0A0B << "CTC 101.1";
        QTest::newRow("ctcss all F") << ToneKind::Ctcss << 0xFFFF << "CTC 1666.5";
        QTest::newRow("ctcss zero") << ToneKind::Ctcss << 0x0000 << "CTC 0.0";
        QTest::newRow("dcs zero") << ToneKind::Dcs << 0x0000 << "DCS 000";
        QTest::newRow("dcs not listed") << ToneKind::Dcs << 0x01FF << "DCS 777";
        QTest::newRow("dcs above 511") << ToneKind::DcsInverted << 0x0200 << "-DCS 800";
    }

    void displayForms() {
        QFETCH(ToneKind, kind);
        QFETCH(int, value);
        QFETCH(QString, text);
        QCOMPARE(qs(toneText(Tone{kind, quint16(value)})), text);
    }

    // Texts outside the lists: any octal DCS code parses, other texts do not.
    void parsing_data() {
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("kind"); // -1: refused
        QTest::addColumn<int>("value");
        const int dcs = int(ToneKind::Dcs), refused = -1;
        QTest::newRow("OFF") << "OFF" << int(ToneKind::Off) << 0;
        QTest::newRow("any octal DCS") << "DCS 777" << dcs << 0777;
        QTest::newRow("DCS 000") << "DCS 000" << dcs << 0;
        QTest::newRow("-DCS not listed") << "-DCS 017" << int(ToneKind::DcsInverted) << 017;
        const char* bad[] = {"",         "tone",      "CTC 88.6", "CTC 88",  "CTC 88.5x",
                             "88.5",     "-CTC 88.5", "CTC ",     "DCS 028", "DCS 091",
                             "DCS 23",   "DCS 0234",  "DCS 0x1",  "DCS023",  "023",
                             "-DCS 128", "--DCS 023", "DCS 02 3"};
        for (const char* text : bad)
            QTest::addRow("refused \"%s\"", text) << text << refused << 0;
    }

    void parsing() {
        QFETCH(QString, text);
        QFETCH(int, kind);
        QFETCH(int, value);
        const std::optional<Tone> expected =
            kind < 0 ? std::nullopt : std::optional(Tone{ToneKind(kind), quint16(value)});
        QCOMPARE(parseToneText(text.toStdString()), expected);
    }
};

QTEST_APPLESS_MAIN(TestTones)
#include "tst_tones.moc"
