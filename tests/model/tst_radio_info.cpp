#include "model_test_util.h"
#include "radio_info.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;
using namespace Qt::StringLiterals;

class TestRadioInfo : public QObject {
    Q_OBJECT

private slots:
    // Bytes from a pattern: '_' stands for 0x00, '#' for 0xFF, other characters for
    // their Latin-1 code. The identifier: a 0x00 or 0xFF byte hides the next one.
    void fixedFields_data() {
        QTest::addColumn<int>("address"); // 0x3E0: radio identifier, 0x3C0: write date
        QTest::addColumn<QString>("bytes");
        QTest::addColumn<QString>("text"); // "-": no write date
        QTest::newRow("16 characters") << 0x3E0 << "ZR310-0123456789" << u"ZR310-0123456789"_s;
        QTest::newRow("erased") << 0x3E0 << "################" << u""_s;
        QTest::newRow("0x00 hides next") << 0x3E0 << "ABC_DEFGHIJKLMNO" << u"ABCEFGHIJKLMNO"_s;
        QTest::newRow("hidden 0xFF unread") << 0x3E0 << "AB##CDEFGHIJKLMN" << u"ABCDEFGHIJKLMN"_s;
        QTest::newRow("gap ends column") << 0x3E0 << "ABCDEFG_HIJKLMNO" << u"ABCDEFGHIJKLMNO"_s;
        QTest::newRow("Latin-1") << 0x3E0 << "Café §1#ABCDEFGH" << u"Café §1ABCDEFGH"_s;
        QTest::newRow("stamped") << 0x3C0 << "20070921153000" << u"2007-09-21, 15:30:00"_s;
        QTest::newRow("end of a year") << 0x3C0 << "19991231235959" << u"1999-12-31, 23:59:59"_s;
        QTest::newRow("date erased") << 0x3C0 << "#0070921153000" << u"-"_s;
        QTest::newRow("date zeroed") << 0x3C0 << "_0070921153000" << u"-"_s;
    }

    void fixedFields() {
        QFETCH(int, address);
        QFETCH(QString, bytes);
        QFETCH(QString, text);
        RadioImage image = noiseImage(4);
        const QByteArray raw = bytes.toLatin1().replace('_', '\0').replace('#', '\xFF');
        for (int i = 0; i < raw.size(); ++i)
            image[std::size_t(linearOf(address + i))] = quint8(raw[i]);
        QCOMPARE(qs(address == 0x3E0 ? decodeRadioId(image) : decodeWriteDate(image).value_or("-")),
                 text);
        if (bytes[0].isDigit()) { // stamping that date writes these bytes and nothing else
            RadioImage stamped = noiseImage(4);
            auto part = [&](int from, int count) { return bytes.mid(from, count).toInt(); };
            stampWriteDate(stamped, {part(0, 4), part(4, 2), part(6, 2), part(8, 2), part(10, 2),
                                     part(12, 2)});
            QVERIFY(stamped == image);
        }
    }

    // Reading the slots: an empty slot (low byte 0x00 or 0xFF) hides the next one,
    // also across a column; a hidden slot is not looked at.
    void userTextSlots_data() {
        QTest::addColumn<QList<int>>("units"); // slots 0.. ; the rest are 0x0000
        QTest::addColumn<QString>("text");
        QTest::newRow("chinese") << QList<int>{0x4E2D, 0x6587} << "中文";
        QTest::newRow("gap hides the next slot") << QList<int>{'A', 0, 'B', 'C'} << "AC";
        QTest::newRow("0xFF low byte") << QList<int>{'A', 0x12FF, 'B', 'C'} << "AC";
        QTest::newRow("hidden gap is not a gap") << QList<int>{'A', 0, 0, 'B'} << "AB";
        QTest::newRow("gap ends column") << QList<int>{'A', 'B', 'C', 0, 'D', 'E'} << "ABCE";
        QTest::newRow("low byte 0x00 is a gap") << QList<int>{0x4E00, 0x4E8C, 'A'} << "A";
        QTest::newRow("surrogate pair") << QList<int>{0xD83D, 0xDE01} << "😁";
        QTest::newRow("lone surrogate") << QList<int>{0xD83D, 'A'} << "\uFFFDA";
    }

    void userTextSlots() {
        QFETCH(QList<int>, units);
        QFETCH(QString, text);
        RadioImage image = noiseImage(21);
        units.resize(96, 0);
        for (int i = 0; i < 96; ++i) { // slot i: radio addresses 0x300 + 2i (low), 0x301 + 2i
            image[std::size_t(linearOf(0x300 + 2 * i))] = quint8(units[i] & 0xFF);
            image[std::size_t(linearOf(0x301 + 2 * i))] = quint8(units[i] >> 8);
        }
        QCOMPARE(qs(decodeUserText(image)), text);
    }

    // Encoding: accepted up to 96 UTF-16 units of valid UTF-8, refused otherwise.
    void userTextEncoding_data() {
        QTest::addColumn<QByteArray>("utf8");
        QTest::addColumn<int>("units"); // -1: not UTF-8
        QTest::newRow("empty") << QByteArray() << 0;
        QTest::newRow("chinese") << QString("对讲机 ZR-310 信息").toUtf8() << 13;
        QTest::newRow("94 units and a pair") << (QString(94, 'y') + "😁").toUtf8() << 96;
        QTest::newRow("96 chinese") << QString(96, QChar(0x4E2D)).toUtf8() << 96;
        QTest::newRow("97 units") << QByteArray(97, 'x') << 97;
        QTest::newRow("95 units and a pair") << (QString(95, 'y') + "😁").toUtf8() << 97;
        QTest::newRow("lone continuation byte") << QByteArray("ab\x80") << -1;
        QTest::newRow("truncated sequence") << QByteArray("\xE4\xB8") << -1;
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
        QVERIFY(accepted || image == before);
        if (!accepted)
            return;
        // Slot i at radio addresses 0x300 + 2i (low) and 0x301 + 2i (high); zero after the end.
        const QString utf16 = QString::fromUtf8(utf8);
        QList<int> offsets;
        for (int i = 0; i < 96; ++i) {
            const int unit = i < utf16.size() ? utf16[i].unicode() : 0;
            offsets << linearOf(0x300 + 2 * i) << linearOf(0x301 + 2 * i);
            QCOMPARE(int(image[std::size_t(offsets[2 * i])]), unit & 0xFF);
            QCOMPARE(int(image[std::size_t(offsets[2 * i + 1])]), unit >> 8);
        }
        QVERIFY(changedOnlyAt(before, image, offsets));
        QCOMPARE(qs(decodeUserText(image)), utf16);
    }
};

QTEST_APPLESS_MAIN(TestRadioInfo)
#include "tst_radio_info.moc"
