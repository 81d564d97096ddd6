#include "model_test_util.h"
#include "radio_info.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;
using namespace Qt::StringLiterals;

class TestRadioInfo : public QObject {
    Q_OBJECT

private slots:
    // Bytes from a pattern at the radio identifier (0x3E0) or the write date
    // (0x3C0): '_' stands for 0x00, '#' for 0xFF, other characters for their
    // Latin-1 code. The identifier: a 0x00 or 0xFF byte hides the next one.
    // The date: "-" for none; stamping it writes these bytes and nothing else.
    void fixedFields() {
        const auto row = [](int address, const QString& bytes, const QString& text) {
            RadioImage image = noiseImage(4);
            const QByteArray raw = bytes.toLatin1().replace('_', '\0').replace('#', '\xFF');
            for (int i = 0; i < raw.size(); ++i)
                image.setAtAddress(address + i, quint8(raw[i]));
            QCOMPARE(
                qs(address == 0x3E0 ? decodeRadioId(image) : decodeWriteDate(image).value_or("-")),
                text);
            if (bytes[0].isDigit()) {
                RadioImage stamped = noiseImage(4);
                auto part = [&](int from, int count) { return bytes.mid(from, count).toInt(); };
                stampWriteDate(stamped, {part(0, 4), part(4, 2), part(6, 2), part(8, 2),
                                         part(10, 2), part(12, 2)});
                QVERIFY(stamped == image);
            }
        };
        row(0x3E0, "ABC_DEFGHIJKLMNO", "ABCEFGHIJKLMNO");
        row(0x3E0, "AB##CDEFGHIJKLMN", "ABCDEFGHIJKLMN");  // a hidden 0xFF is not read
        row(0x3E0, "ABCDEFG_HIJKLMNO", "ABCDEFGHIJKLMNO"); // a gap ends the column
        row(0x3E0, u"Café §1#ABCDEFGH"_s, u"Café §1ABCDEFGH"_s);
        row(0x3C0, "20070921153000", "2007-09-21, 15:30:00");
    }

    // The user text's slot i: radio addresses 0x300 + 2i (low) and 0x301 + 2i
    // (high). An empty slot (low byte 0x00 or 0xFF) hides the next one, also
    // across a column; a hidden slot is not looked at.
    void userTextSlots() {
        const auto row = [](QList<int> units, const QString& text) {
            RadioImage image = noiseImage(21);
            units.resize(96, 0);
            for (int i = 0; i < 96; ++i) {
                image.setAtAddress(0x300 + 2 * i, quint8(units[i] & 0xFF));
                image.setAtAddress(0x301 + 2 * i, quint8(units[i] >> 8));
            }
            QCOMPARE(qs(decodeUserText(image)), text);
        };
        row({'A', 0, 'B', 'C'}, "AC");
        row({'A', 0x12FF, 'B', 'C'}, "AC");
        row({'A', 0, 0, 'B'}, "AB");               // a hidden gap is not a gap
        row({'A', 'B', 'C', 0, 'D', 'E'}, "ABCE"); // a gap ends the column
        row({0x4E00, 0x4E8C, 'A'}, "A");           // low byte 0x00
        row({0xD83D, 0xDE01}, u"😁"_s);
        row({0xD83D, 'A'}, u"\uFFFDA"_s);
    }

    // Encoding: accepted up to 96 UTF-16 units of valid UTF-8 (zero after the
    // end), refused otherwise.
    void userTextEncoding() {
        const auto row = [](const QByteArray& utf8, int units) { // -1: not UTF-8
            const std::string text = utf8.toStdString();
            QCOMPARE(utf16Length(text), units);
            const RadioImage before = noiseImage(33);
            RadioImage image = before;
            const bool accepted = units >= 0 && units <= 96;
            QCOMPARE(encodeUserText(image, text), accepted);
            QVERIFY(accepted || image == before);
            if (!accepted)
                return;
            const QString utf16 = QString::fromUtf8(utf8);
            RadioImage expected = before;
            for (int i = 0; i < 96; ++i) {
                const int unit = i < utf16.size() ? utf16[i].unicode() : 0;
                expected.setAtAddress(0x300 + 2 * i, quint8(unit & 0xFF));
                expected.setAtAddress(0x301 + 2 * i, quint8(unit >> 8));
            }
            QVERIFY(image == expected);
            QCOMPARE(qs(decodeUserText(image)), utf16);
        };
        row(QByteArray(), 0);
        row(u"对讲机 ZR-310 信息"_s.toUtf8(), 13);
        row((QString(94, 'y') + u"😁"_s).toUtf8(), 96);
        row(QString(96, QChar(0x4E2D)).toUtf8(), 96);
        row((QString(95, 'y') + u"😁"_s).toUtf8(), 97);
        row("ab\x80", -1);           // a lone continuation byte
        row("\xE4\xB8", -1);         // a truncated sequence
        row("\xC0\xAF", -1);         // overlong
        row("\xED\xA0\x80", -1);     // an encoded surrogate
        row("\xF4\x90\x80\x80", -1); // beyond U+10FFFF
    }
};

QTEST_APPLESS_MAIN(TestRadioInfo)
#include "tst_radio_info.moc"
