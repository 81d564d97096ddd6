// Editing the image from texts: each accepted text changes exactly the bits of
// its field, in either language; a refused text changes nothing. Then the undo
// history of whole images.

#include "bands.h"
#include "edit_history.h"
#include "image_edit.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

// Applies "CC.B=VV" (the byte of column CC, block B becomes VV) or "CC.B&MM=VV"
// (only the bits MM change), all in hex and separated by blanks.
RadioImage withChanges(RadioImage image, const QString& changes) {
    for (const QString& change : changes.split(' ', Qt::SkipEmptyParts)) {
        const int column = change.left(2).toInt(nullptr, 16);
        const int block = change.mid(3, 1).toInt();
        const int mask = change[4] == '&' ? change.mid(5, 2).toInt(nullptr, 16) : 0xFF;
        const int value = change.section('=', 1).toInt(nullptr, 16);
        image.set(column, block, quint8((image.at(column, block) & ~mask) | value));
    }
    return image;
}

// A noise image on the band 136 - 174MHz.
RadioImage vhfNoise(quint32 seed) {
    RadioImage image = noiseImage(seed);
    image[kBandCodeOffset] = 0x52;
    return image;
}

} // namespace

class TestImageEdit : public QObject {
    Q_OBJECT

private slots:
    // CH 3 (columns 04 and 05) unless the row names test channel 2 (column 22).
    // Refused texts have no changes.
    void channelField_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("field");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("changes");
        const auto row = [](const char* name, ChannelField field, const QString& text,
                            const char* changes, int column = 0x04) {
            QTest::newRow(name) << column << int(field) << text << changes;
        };
        using F = ChannelField;
        // 145.5125 MHz = 0x5AF2 steps of 6.25 kHz; 145.505 MHz = 0x71AD of 5 kHz; 174 = 0x6CC0.
        row("rx 6.25 kHz", F::RxFreq, "145.5125", "04.0=F2 04.1=5A 04.2&04=04");
        row("tx 5 kHz, blanks", F::TxFreq, " 145.505\t", "04.5=AD 04.6=71 04.7&04=00");
        row("clamped to the band", F::RxFreq, "999", "04.0=C0 04.1=6C 04.2&04=04");
        row("ctc, lower case", F::RxTone, "ctc 88.5", "04.3=85 04.4=08 04.2&70=30");
        row("-dcs tx", F::TxTone, "-Dcs 754", "05.0=EC 05.1=01 04.7&70=70");
        row("dcs on test channel", F::TxTone, " DCS 023 ", "23.0=13 23.1=00 22.7&70=50", 0x22);
        row("Del", F::Scan, "del", "05.2&10=10");
        row("添加", F::Scan, "添加", "05.2&10=00");
        row("busy On", F::BusyLock, "ON", "05.2&04=04");
        row("Low", F::Power, "Low", "05.2&20=20");
        row("Narrow", F::Bandwidth, "narrow", "05.2&01=01");
        row("宽带", F::Bandwidth, "宽带", "05.2&01=00");
        row("Close", F::Close, "Close", "04.2&08=00");
        row("关闭 closes", F::Close, "关闭", "04.2&08=00");
        row("empty opens", F::Close, "", "04.2&08=08");
        row("No TX", F::NoTx, "no tx", "04.7&08=00");
        row("禁发", F::NoTx, "禁发", "04.7&08=00");
        row("letters as frequency", F::RxFreq, "abc", "");
        row("decimal comma", F::RxFreq, "145,5", "");
        row("tone off the list", F::RxTone, "CTC 88.6", "");
        row("dcs with a digit 8", F::TxTone, "DCS 028", "");
        row("On for scan", F::Scan, "On", "");
        row("Off for close", F::Close, "Off", "");
        row("打开 for no tx", F::NoTx, "打开", "");
    }

    void channelField() {
        QFETCH(int, column);
        QFETCH(int, field);
        QFETCH(QString, text);
        QFETCH(QString, changes);
        for (quint32 seed = 1; seed <= 3; ++seed) {
            const RadioImage before = vhfNoise(seed);
            RadioImage after = before;
            try {
                setChannelField(after, column, ChannelField(field), text.toStdString());
                QVERIFY2(!changes.isEmpty(), "a refused text was taken");
            } catch (const EditError& e) {
                QVERIFY2(changes.isEmpty(), e.what());
                QCOMPARE(qs(e.value()), text);
                QCOMPARE(qs(e.subject()), qs(channelFieldKey(ChannelField(field))));
            }
            QCOMPARE(changedOffsets(withChanges(before, changes), after), QList<int>{});
        }
    }

    // Option lists by text in either language and by index, both ways.
    void options_data() {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("text");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("changes");
        const auto row = [](const char* name, int id, const QString& text, int index,
                            const QString& changes) {
            QTest::newRow(name) << id << text << index << changes;
        };
        row("300SEC", int(OptionId::CboTXLimit), "300SEC", 10, "56.7=30");
        row("300秒", int(OptionId::CboTXLimit), "300秒", 10, "56.7=30");
        row("squelch, blanks", int(OptionId::CboSQ), " 7 ", 7, "57.3=07");
        row("载波", int(OptionId::CboScan), "载波", 1, "56.0&18=08");
        row("CH15", int(OptionId::CboPriorityCH), "ch15", 15, "56.2=15");
        row("wide leaves channels", int(OptionId::CboBandSel), "宽带", 0, "57.4&02=00");
        QString narrow = "57.4&02=02";
        for (int n = 0; n < 16; ++n)
            narrow += QString(" %1.2&01=01").arg(2 * n + 1, 2, 16, QChar('0'));
        row("narrow marks every channel", int(OptionId::CboBandSel), "Narrow", 1, narrow);
    }

    void options() {
        QFETCH(int, id);
        QFETCH(QString, text);
        QFETCH(int, index);
        QFETCH(QString, changes);
        const RadioImage before = noiseImage(7);
        RadioImage byText = before;
        RadioImage byIndex = before;
        setOptionText(byText, OptionId(id), text.toStdString());
        setOptionIndex(byIndex, OptionId(id), index);
        QCOMPARE(changedOffsets(withChanges(before, changes), byText), QList<int>{});
        QVERIFY(byIndex == byText);
        QCOMPARE(decodeOption(OptionId(id), byText), index);
    }

    // A script of records ("+n" records the current image -> image n), undos
    // ("<") and redos (">"), clear ("C"); the images undo and redo gave back
    // ("-" for none).
    void history_data() {
        QTest::addColumn<QString>("script");
        QTest::addColumn<QString>("given");
        const auto row = [](const char* name, const QString& script, const QString& given) {
            QTest::newRow(name) << script << given;
        };
        row("walk", "+1 +2 < < < > > >", "1 0 - 1 2 -");
        row("no change is no step", "+0 +1 +1 < <", "0 -");
        row("a new step drops redo", "+1 +2 < +3 > < <", "1 - 1 0");
        row("clear", "+1 +2 C < >", "- -");
    }

    void history() {
        QFETCH(QString, script);
        QFETCH(QString, given);
        auto image = [](int n) {
            RadioImage i;
            i[500] = quint8(n);
            return i;
        };
        EditHistory history;
        int current = 0;
        QStringList results;
        for (const QString& step : script.split(' ')) {
            if (step[0] == '+') {
                history.record(image(current), image(step.mid(1).toInt()));
                current = step.mid(1).toInt();
            } else if (step == "C") {
                history.clear();
            } else {
                const RadioImage* back = step == "<" ? history.undo() : history.redo();
                if (back)
                    current = (*back)[500];
                results << (back ? QString::number(current) : "-");
            }
        }
        QCOMPARE(results.join(' '), given);
    }
};

QTEST_APPLESS_MAIN(TestImageEdit)
#include "tst_image_edit.moc"
