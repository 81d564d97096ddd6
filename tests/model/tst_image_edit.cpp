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

} // namespace

class TestImageEdit : public QObject {
    Q_OBJECT

private slots:
    // Accepted texts with their changes on CH 3 (columns 04 and 05), or on test
    // channel 2 (column 22); refused texts have none.
    void channelField() {
        const auto row = [](ChannelField field, const QString& text, const QString& changes,
                            int column = 0x04) {
            for (quint32 seed = 1; seed <= 3; ++seed) {
                RadioImage before = noiseImage(seed);
                before[kBandCodeOffset] = 0x52; // 136 - 174MHz
                RadioImage after = before;
                try {
                    setChannelField(after, column, field, text.toStdString());
                    QVERIFY2(!changes.isEmpty(), qPrintable(text + " was taken"));
                } catch (const EditError& e) {
                    QVERIFY2(changes.isEmpty(), e.what());
                    QCOMPARE(qs(e.value()), text);
                    QCOMPARE(qs(e.subject()), qs(channelFieldKey(field)));
                }
                QCOMPARE(changedOffsets(withChanges(before, changes), after), QList<int>{});
            }
        };
        using F = ChannelField;
        // 145.505 MHz = 0x71AD steps of 5 kHz.
        row(F::TxFreq, " 145.505\t", "04.5=AD 04.6=71 04.7&04=00");
        row(F::RxTone, "ctc 88.5", "04.3=85 04.4=08 04.2&70=30");
        row(F::TxTone, " DCS 023 ", "23.0=13 23.1=00 22.7&70=50", 0x22);
        row(F::Scan, "添加", "05.2&10=00");
        row(F::BusyLock, "ON", "05.2&04=04");
        row(F::Bandwidth, "narrow", "05.2&01=01");
        row(F::Close, "关闭", "04.2&08=00"); // also the Chinese "Off"
        row(F::Close, "", "04.2&08=08");
        row(F::NoTx, "no tx", "04.7&08=00");
        row(F::RxFreq, "145,5", "");
        row(F::TxTone, "DCS 028", "");
        row(F::Scan, "On", "");
        row(F::Close, "Off", "");
    }

    // Option lists by text in either language and by index, both ways.
    void options() {
        const auto row = [](OptionId id, const char* text, int index, const QString& changes) {
            const RadioImage before = noiseImage(7);
            RadioImage byText = before;
            RadioImage byIndex = before;
            setOptionText(byText, id, text);
            setOptionIndex(byIndex, id, index);
            QCOMPARE(changedOffsets(withChanges(before, changes), byText), QList<int>{});
            QVERIFY(byIndex == byText);
            QCOMPARE(decodeOption(id, byText), index);
        };
        row(OptionId::CboTXLimit, "300秒", 10, "56.7=30");
        row(OptionId::CboSQ, " 7 ", 7, "57.3=07");
        row(OptionId::CboScan, "载波", 1, "56.0&18=08");
        row(OptionId::CboPriorityCH, "ch15", 15, "56.2=15");
    }

    // A script of records ("+n" records the current image -> image n), undos
    // ("<") and redos (">"), clear ("C"); the images undo and redo gave back
    // ("-" for none).
    void history() {
        const auto row = [](const QString& script, const QString& given) {
            const auto image = [](int n) {
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
        };
        row("+0 +1 +1 < <", "0 -"); // no change is no step
        row("+1 +2 < < < > > >", "1 0 - 1 2 -");
        row("+1 +2 < +3 > < <", "1 - 1 0"); // a new step drops redo
        row("+1 +2 C < >", "- -");
    }
};

QTEST_APPLESS_MAIN(TestImageEdit)
#include "tst_image_edit.moc"
