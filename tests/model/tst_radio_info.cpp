#include "model_test_util.h"
#include "radio_info.h"

#include <QtTest>

#include <algorithm>

using namespace zr310;
using namespace zr310::test;
using namespace Qt::StringLiterals;

namespace {

// Radio address -> linear offset, read independently of the image class.
int linearOf(int address) {
    return (address % 8) * 128 + address / 8;
}

// Puts UTF-16 units into the user text slots, low byte first.
void putSlots(RadioImage& image, const QList<int>& units) {
    for (int i = 0; i < units.size(); ++i) {
        image[std::size_t(linearOf(0x300 + 2 * i))] = quint8(units[i] & 0xFF);
        image[std::size_t(linearOf(0x301 + 2 * i))] = quint8(units[i] >> 8);
    }
}

} // namespace

class TestRadioInfo : public QObject {
    Q_OBJECT

private slots:
    // Bytes from a pattern: '_' stands for 0x00, '#' for 0xFF, other characters for
    // their Latin-1 code.
    void radioId_data() {
        QTest::addColumn<QString>("bytes"); // radio addresses 0x3E0..0x3EF
        QTest::addColumn<QString>("text");
        QTest::newRow("16 characters") << "ZR310-0123456789" << u"ZR310-0123456789"_s;
        QTest::newRow("erased") << "################" << u""_s;
        QTest::newRow("zeroed") << "________________" << u""_s;
        QTest::newRow("0x00 at 0x3E3 hides 0x3E4") << "ABC_DEFGHIJKLMNO" << u"ABCEFGHIJKLMNO"_s;
        QTest::newRow("hidden 0xFF is not looked at") << "AB##CDEFGHIJKLMN" << u"ABCDEFGHIJKLMN"_s;
        QTest::newRow("two gaps") << "A_BC_DEFGHIJKLMN" << u"ACEFGHIJKLMN"_s;
        QTest::newRow("gap at the end of a column") << "ABCDEFG_HIJKLMNO" << u"ABCDEFGHIJKLMNO"_s;
        QTest::newRow("gap last") << "ABCDEFGHIJKLMNO#" << u"ABCDEFGHIJKLMNO"_s;
        QTest::newRow("bytes above 0x7F are Latin-1") << "Café §1#ABCDEFGH" << u"Café §1ABCDEFGH"_s;
        QTest::newRow("short id") << "K7______________" << u"K7"_s;
    }

    void radioId() {
        QFETCH(QString, bytes);
        QFETCH(QString, text);
        RadioImage image = noiseImage(4);
        const QByteArray raw = bytes.toLatin1().replace('_', '\0').replace('#', '\xFF');
        for (int i = 0; i < 16; ++i)
            image[std::size_t(linearOf(0x3E0 + i))] = quint8(raw[i]);
        QCOMPARE(qs(decodeRadioId(image)), text);
    }

    void writeDate_data() {
        QTest::addColumn<QString>("bytes"); // radio addresses 0x3C0..0x3CD, as above
        QTest::addColumn<QString>("text");  // empty: absent
        QTest::newRow("stamped") << "20070921153000" << u"2007-09-21, 15:30:00"_s;
        QTest::newRow("end of a year") << "19991231235959" << u"1999-12-31, 23:59:59"_s;
        QTest::newRow("erased") << "##############" << u""_s;
        QTest::newRow("zeroed") << "______________" << u""_s;
        QTest::newRow("first byte 0x00") << "_0070921153000" << u""_s;
        QTest::newRow("first byte 0xFF") << "#0070921153000" << u""_s;
    }

    void writeDate() {
        QFETCH(QString, bytes);
        QFETCH(QString, text);
        RadioImage image = noiseImage(6);
        const QByteArray raw = bytes.toLatin1().replace('_', '\0').replace('#', '\xFF');
        for (int i = 0; i < 14; ++i)
            image[std::size_t(linearOf(0x3C0 + i))] = quint8(raw[i]);
        QCOMPARE(qs(decodeWriteDate(image).value_or("")), text);
    }

    // The stamp: column 0x78 blocks 0-7, then column 0x79 blocks 0-5; nothing else.
    void stamp() {
        const int offsets[] = {0x078, 0x0F8, 0x178, 0x1F8, 0x278, 0x2F8, 0x378,
                               0x3F8, 0x079, 0x0F9, 0x179, 0x1F9, 0x279, 0x2F9};
        for (auto [when, digits] : {std::pair{DateTime{2007, 9, 21, 15, 30, 0}, "20070921153000"},
                                    {DateTime{2001, 2, 3, 4, 5, 6}, "20010203040506"},
                                    {DateTime{2099, 12, 31, 23, 59, 59}, "20991231235959"}}) {
            const RadioImage before = noiseImage(12);
            RadioImage image = before;
            stampWriteDate(image, when);
            for (int i = 0; i < 14; ++i)
                QCOMPARE(char(image[std::size_t(offsets[i])]), digits[i]);
            for (int offset : changedOffsets(before, image))
                QVERIFY(std::find(std::begin(offsets), std::end(offsets), offset) !=
                        std::end(offsets));
            const QString d = QString::fromLatin1(digits);
            QCOMPARE(qs(decodeWriteDate(image).value_or("")),
                     d.left(4) + "-" + d.mid(4, 2) + "-" + d.mid(6, 2) + ", " + d.mid(8, 2) + ":" +
                         d.mid(10, 2) + ":" + d.mid(12, 2));
        }
    }

    // Reading the slots: an empty slot (low byte 0x00 or 0xFF) hides the next one,
    // also across a column; a hidden slot is not looked at.
    void userTextSlots_data() {
        QTest::addColumn<QList<int>>("units"); // slots 0.. ; the rest are 0x0000
        QTest::addColumn<QString>("text");
        QTest::newRow("plain") << QList<int>{'H', 'i'} << "Hi";
        QTest::newRow("chinese") << QList<int>{0x4E2D, 0x6587} << "中文";
        QTest::newRow("gap hides the next slot") << QList<int>{'A', 0, 'B', 'C'} << "AC";
        QTest::newRow("0xFF low byte") << QList<int>{'A', 0x12FF, 'B', 'C'} << "AC";
        QTest::newRow("hidden gap is not a gap") << QList<int>{'A', 0, 0, 'B'} << "AB";
        QTest::newRow("gaps in a row") << QList<int>{'A', 0, 'X', 0, 'Y', 'Z'} << "AZ";
        QTest::newRow("gap at the end of a column")
            << QList<int>{'A', 'B', 'C', 0, 'D', 'E'} << "ABCE";
        QTest::newRow("gap at the start") << QList<int>{0, 'A', 'B'} << "B";
        QTest::newRow("code with low byte 0x00 counts as a gap")
            << QList<int>{0x4E00, 0x4E8C, 'A'} << "A";
        QTest::newRow("high byte alone") << QList<int>{0x0141, 0x0100, 'x', 'y'} << "Ły";
        QTest::newRow("surrogate pair") << QList<int>{0xD83D, 0xDE01} << "😁";
        QTest::newRow("lone surrogate") << QList<int>{0xD83D, 'A'} << "\uFFFDA";
    }

    void userTextSlots() {
        QFETCH(QList<int>, units);
        QFETCH(QString, text);
        RadioImage image = noiseImage(21);
        QList<int> all = units;
        all.resize(96, 0);
        putSlots(image, all);
        QCOMPARE(qs(decodeUserText(image)), text);
    }

    // Encoding: accepted up to 96 UTF-16 units of valid UTF-8, refused otherwise.
    void userTextEncoding_data() {
        QTest::addColumn<QByteArray>("utf8");
        QTest::addColumn<int>("units"); // -1: not UTF-8
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("ascii") << QByteArray("Hello, radio 7") << 14;
        QTest::newRow("chinese") << QString("对讲机 ZR-310 信息").toUtf8() << 13;
        QTest::newRow("latin-1") << QString("Grüße").toUtf8() << 5;
        QTest::newRow("surrogate pair") << QString("a😁b").toUtf8() << 4;
        QTest::newRow("96 units") << QByteArray(96, 'x') << 96;
        QTest::newRow("94 units and a pair") << (QString(94, 'y') + "😁").toUtf8() << 96;
        QTest::newRow("96 chinese") << QString(96, QChar(0x4E2D)).toUtf8() << 96;
        QTest::newRow("97 units") << QByteArray(97, 'x') << 97;
        QTest::newRow("95 units and a pair") << (QString(95, 'y') + "😁").toUtf8() << 97;
        QTest::newRow("97 chinese") << QString(97, QChar(0x6587)).toUtf8() << 97;
        QTest::newRow("lone continuation byte") << QByteArray("ab\x80") << -1;
        QTest::newRow("bad second byte") << QByteArray("\xC3\x28") << -1;
        QTest::newRow("truncated sequence") << QByteArray("\xE4\xB8") << -1;
        QTest::newRow("byte 0xFF") << QByteArray("a\xFF") << -1;
        QTest::newRow("overlong slash") << QByteArray("\xC0\xAF") << -1;
        QTest::newRow("encoded surrogate") << QByteArray("\xED\xA0\x80") << -1;
        QTest::newRow("beyond U+10FFFF") << QByteArray("\xF4\x90\x80\x80") << -1;
    }

    void userTextEncoding() {
        QFETCH(QByteArray, utf8);
        QFETCH(int, units);
        const std::string text = utf8.toStdString();
        QCOMPARE(utf16Length(text), units);
        const RadioImage before = noiseImage(33);
        RadioImage image = before;
        const bool accepted = units >= 0 && units <= 96;
        QCOMPARE(encodeUserText(image, text), accepted);
        if (!accepted) {
            QVERIFY(image == before);
            return;
        }
        // Slot i at radio addresses 0x300 + 2i (low) and 0x301 + 2i (high); zero after the end.
        const QString utf16 = QString::fromUtf8(utf8);
        for (int i = 0; i < 96; ++i) {
            const int unit = i < utf16.size() ? utf16[i].unicode() : 0;
            QCOMPARE(int(image[std::size_t(linearOf(0x300 + 2 * i))]), unit & 0xFF);
            QCOMPARE(int(image[std::size_t(linearOf(0x301 + 2 * i))]), unit >> 8);
        }
        for (int offset : changedOffsets(before, image))
            QVERIFY(offset % 128 >= 0x60 && offset % 128 <= 0x77);
        QCOMPARE(qs(decodeUserText(image)), utf16);
    }
};

QTEST_APPLESS_MAIN(TestRadioInfo)
#include "tst_radio_info.moc"
