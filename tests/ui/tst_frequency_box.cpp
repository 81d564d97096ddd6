// The frequency box over the RX Freq and TX Freq cells: what it takes, how it
// brings a frequency into the band and onto the channel grids, and its keys.
#include "editing_support.h"

#include <QClipboard>

using namespace zr310;

class TestFrequencyBox : public QObject {
    Q_OBJECT
private slots:
    // Typed into channel 1 on the 136 - 174MHz band, then Enter. The count
    // and step are what the radio stores; the model suite has the rounding.
    void validation() {
        const auto row = [](int column, const QString& typed, const QString& shown, uint steps,
                            bool step625) {
            auto window = editingWindow();
            clickCell(window.get(), 1, column);
            QLineEdit* box = inputBox(window.get());
            box->clear();
            QTest::keyClicks(box, typed);
            QTest::keyClick(box, Qt::Key_Return);
            QVERIFY(!box->isVisible());
            QCOMPARE(cell(window.get(), 1, column)->text(), shown);
            const Side side = column == 1 ? Side::Receive : Side::Transmit;
            QCOMPARE(ChannelView(window->image(), 0).frequency(side),
                     (FrequencyCode{steps, step625}));
            // Enter moves one column right.
            QCOMPARE(channelGrid(window.get())->currentColumn(), column + 1);
        };
        row(3, "145.0049", "145.00500", 29001u, false);
        row(3, "0", "136.00000", 21760u, true);
        row(1, "999", "174.00000", 27840u, true);
        row(1, "", "136.00000", 21760u, true);
        row(1, "-1x4y5.5 ", "145.50000", 23280u, true); // letters and signs dropped
    }

    // Ways of ending the edit: Esc (also after Paste), Enter without a
    // change, leaving the box by a click elsewhere, and Undo while it is open.
    void ending() {
        const auto row = [](const QString& how, const QString& shown, const QString& changes) {
            auto window = editingWindow();
            const RadioImage before = window->image();
            if (how == "undo") {
                clickCell(window.get(), 1, 5);
            }
            clickCell(window.get(), 1, 1);
            QLineEdit* box = inputBox(window.get());
            if (how.startsWith("paste")) {
                QApplication::clipboard()->setText("150.025");
                trigger(window.get(), "menuEditPaste");
                QCOMPARE(box->text(), QString("150.025"));
            } else if (how != "enter") {
                QTest::keyClicks(box, "150.025");
            }
            if (how.endsWith("esc")) {
                QTest::keyClick(box, Qt::Key_Escape);
            } else if (how.endsWith("enter")) {
                QTest::keyClick(box, Qt::Key_Return);
            } else if (how == "leave") {
                clickCell(window.get(), 5, 2);
            } else if (how == "undo") {
                trigger(window.get(), "MenuEditUndo");
            }
            QVERIFY(!box->isVisible());
            QCOMPARE(cell(window.get(), 1, 1)->text(), shown);
            QCOMPARE(changedBytes(before, window->image()), changes);
        };
        row("esc", "145.51250", "");
        row("paste esc", "145.51250", "");
        row("paste enter", "150.02500", "000=C4 080=5D");
        row("enter", "145.51250", "");
        row("leave", "150.02500", "000=C4 080=5D");
        // The open edit is written first, then undone: the earlier toggle stays.
        row("undo", "145.51250", "101=10");
    }

    // Up and Down step by 6.25 kHz and stop at the band edge.
    void arrows() {
        const auto row = [](const QString& start, Qt::Key key, int presses, const QString& result) {
            auto window = editingWindow();
            clickCell(window.get(), 2, 1);
            QLineEdit* box = inputBox(window.get());
            QTest::keyClicks(box, start);
            for (int i = 0; i < presses; ++i) {
                QTest::keyClick(box, key);
            }
            QCOMPARE(box->text(), result);
            QTest::keyClick(box, Qt::Key_Return);
            QCOMPARE(cell(window.get(), 2, 1)->text(), result);
        };
        row("145.5125", Qt::Key_Up, 2, "145.52500");
        row("173.995", Qt::Key_Up, 3, "174.00000");
        row("136.005", Qt::Key_Down, 2, "136.00000");
    }
};

QTEST_MAIN(TestFrequencyBox)
#include "tst_frequency_box.moc"
