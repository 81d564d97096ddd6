// The frequency box over the RX Freq and TX Freq cells: what it takes, how it
// brings a frequency into the band and onto the channel grids, and its keys.
#include "editing_support.h"

#include <QClipboard>

using namespace zr310;

class TestFrequencyBox : public QObject {
    Q_OBJECT
private slots:
    // Typed into channel 1 on the 136 - 174MHz band, then Enter. The count
    // and step are what the radio stores.
    void validation_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<uint>("steps");
        QTest::addColumn<bool>("step625");
        const auto row = [](const char* name, int column, const QString& typed,
                            const QString& shown, uint steps, bool step625) {
            QTest::newRow(name) << column << typed << shown << steps << step625;
        };
        row("6.25 kHz grid", 1, "145.00625", "145.00625", 23201u, true);
        row("5 kHz grid", 3, "145.005", "145.00500", 29001u, false);
        row("nearer 6.25", 1, "145.0061", "145.00625", 23201u, true);
        row("nearer 5", 3, "145.0049", "145.00500", 29001u, false);
        row("tie goes to 6.25", 1, "145.01125", "145.01250", 23202u, true);
        row("lower edge", 1, "136", "136.00000", 21760u, true);
        row("zero", 3, "0", "136.00000", 21760u, true);
        row("999", 1, "999", "174.00000", 27840u, true);
        row("empty", 1, "", "136.00000", 21760u, true);
        row("letters and signs dropped", 1, "-1x4y5.5 ", "145.50000", 23280u, true);
    }

    void validation() {
        QFETCH(int, column);
        QFETCH(QString, typed);
        QFETCH(QString, shown);
        QFETCH(uint, steps);
        QFETCH(bool, step625);
        auto window = editingWindow();
        clickCell(window.get(), 1, column);
        QLineEdit* box = inputBox(window.get());
        box->clear();
        QTest::keyClicks(box, typed);
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!box->isVisible());
        QCOMPARE(cell(window.get(), 1, column)->text(), shown);
        const Side side = column == 1 ? Side::Receive : Side::Transmit;
        QCOMPARE(ChannelView(window->image(), 0).frequency(side), (FrequencyCode{steps, step625}));
        // Enter moves one column right.
        QCOMPARE(channelGrid(window.get())->currentColumn(), column + 1);
    }

    // Ways of ending the edit: Esc (also after Paste), Enter without a
    // change, leaving the box by a click elsewhere, and a command that
    // needs the image (Save) while the box is open.
    void ending_data() {
        QTest::addColumn<QString>("how");
        QTest::addColumn<QString>("shown");
        QTest::addColumn<QString>("changes");
        const auto row = [](const char* name, const QString& how, const QString& shown,
                            const QString& changes) {
            QTest::newRow(name) << how << shown << changes;
        };
        row("Esc", "esc", "145.51250", "");
        row("Esc after Paste", "paste esc", "145.51250", "");
        row("Paste, Enter", "paste enter", "150.02500", "000=C4 080=5D");
        row("unchanged Enter", "enter", "145.51250", "");
        row("leaving", "leave", "150.02500", "000=C4 080=5D");
        // The open edit is written first, then undone: the earlier toggle stays.
        row("undo while open", "undo", "145.51250", "101=10");
    }

    void ending() {
        QFETCH(QString, how);
        QFETCH(QString, shown);
        QFETCH(QString, changes);
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
    }

    // Up and Down step by 6.25 kHz and stop at the band edge.
    void arrows_data() {
        QTest::addColumn<QString>("start");
        QTest::addColumn<int>("key");
        QTest::addColumn<int>("presses");
        QTest::addColumn<QString>("result");
        const auto row = [](const char* name, const QString& start, int key, int presses,
                            const QString& result) {
            QTest::newRow(name) << start << key << presses << result;
        };
        row("up", "145.5125", int(Qt::Key_Up), 2, "145.52500");
        row("down", "145.5125", int(Qt::Key_Down), 1, "145.50625");
        row("up to the edge", "173.995", int(Qt::Key_Up), 3, "174.00000");
        row("down to the edge", "136.005", int(Qt::Key_Down), 2, "136.00000");
    }

    void arrows() {
        QFETCH(QString, start);
        QFETCH(int, key);
        QFETCH(int, presses);
        QFETCH(QString, result);
        auto window = editingWindow();
        clickCell(window.get(), 2, 1);
        QLineEdit* box = inputBox(window.get());
        QTest::keyClicks(box, start);
        for (int i = 0; i < presses; ++i) {
            QTest::keyClick(box, Qt::Key(key));
        }
        QCOMPARE(box->text(), result);
        QTest::keyClick(box, Qt::Key_Return);
        QCOMPARE(cell(window.get(), 2, 1)->text(), result);
    }

    void noContextMenu() {
        auto window = editingWindow();
        QCOMPARE(inputBox(window.get())->contextMenuPolicy(), Qt::NoContextMenu);
    }
};

QTEST_MAIN(TestFrequencyBox)
#include "tst_frequency_box.moc"
