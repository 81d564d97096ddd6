// Editing the image from texts: each accepted text changes exactly the bits of
// its field, in either language; a refused text changes nothing. Then the undo
// history of whole images; the window's undoRedoEveryKind walks the rest of it.

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
        row(F::TxTone, " DCS 023 ", "23.0=13 23.1=00 22.7&70=50", 0x22);
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

    // A new step after an undo drops what redo would have given back.
    void newStepDropsRedo() {
        const auto image = [](int n) {
            RadioImage i;
            i[500] = quint8(n);
            return i;
        };
        const auto number = [](const RadioImage* i) { return i ? int((*i)[500]) : -1; };
        EditHistory history;
        history.record(image(0), image(1));
        history.record(image(1), image(2));
        QCOMPARE(number(history.undo()), 1);
        history.record(image(1), image(3));
        QCOMPARE(number(history.redo()), -1);
        QCOMPARE(number(history.undo()), 1);
        QCOMPARE(number(history.undo()), 0);
    }
};

QTEST_APPLESS_MAIN(TestImageEdit)
#include "tst_image_edit.moc"
