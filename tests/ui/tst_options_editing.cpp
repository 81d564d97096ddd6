// The option lists, the band list and the radio-wide W/N as editors: what
// each writes into the image and when.
#include "editing_support.h"

#include <QLabel>
#include <QWheelEvent>

using namespace zr310;

class TestOptionsEditing : public QObject {
    Q_OBJECT
private slots:
    // Down `presses` times on the list, then Enter. Down alone must not
    // reach the image; Enter moves on, and leaving the list writes it.
    void listBytes_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("list");
        QTest::addColumn<int>("presses");
        QTest::addColumn<QString>("changes");
        const auto row = [](const char* name, const QString& locale, const QString& list,
                            int presses, const QString& changes) {
            QTest::newRow(name) << locale << list << presses << changes;
        };
        row("time-out 90sec", "en_US", "CboTXLimit", 2, "3D6=09");
        row("pre-alert 5sec", "en_US", "CboPreAlert", 5, "2D7=05");
        row("rekey 12sec", "en_US", "CboTOTAgain", 12, "357=12");
        row("reset 15sec", "zh_CN", "CboTOTReset", 15, "3D7=15");
        row("beep", "zh_CN", "CboRing", 1, "257=20");
        row("squelch 9", "en_US", "CboSQ", 9, "1D7=09");
        row("manual", "en_US", "CboHandModel", 1, "257=01");
        row("battery save", "en_US", "CboBatFunction", 1, "257=08");
        row("scan Time", "en_US", "CboScan", 2, "056=10");
        row("priority CH15", "en_US", "CboPriorityCH", 15, "156=15");
        row("look-back 1.0sec", "en_US", "CboBakScan", 7, "1D6=10");
        row("revert Priority Ch", "zh_CN", "CboBakCH", 3, "0D6=04");
        row("scan delay 1.5sec", "en_US", "CboScanHold", 3, "356=15");
        row("Squelch Momentary", "en_US", "CboMoni", 3, "056=60");
    }

    void listBytes() {
        QFETCH(QString, locale);
        QFETCH(QString, list);
        QFETCH(int, presses);
        QFETCH(QString, changes);
        auto window = editingWindow(locale);
        const RadioImage before = window->image();
        auto* box = child<QComboBox>(window.get(), list);
        box->setFocus();
        const int index = box->currentIndex() + presses;
        for (int i = 0; i < presses; ++i) {
            QTest::keyClick(box, Qt::Key_Down);
        }
        QCOMPARE(box->currentIndex(), index);
        QCOMPARE(changedBytes(before, window->image()), QString());
        QTest::keyClick(box, Qt::Key_Return);
        QVERIFY(!box->hasFocus());
        QCOMPARE(changedBytes(before, window->image()), changes);
        // And back: the image selects the same item.
        window->ReFlashData();
        QCOMPARE(box->currentIndex(), index);
    }

    // A list not yet left is written before a command uses the image.
    void saveTakesTheOpenList() {
        auto window = editingWindow();
        auto* box = child<QComboBox>(window.get(), "CboSQ");
        box->setFocus();
        QTest::keyClick(box, Qt::Key_Down);
        QTest::keyClick(box, Qt::Key_Down);
        QVERIFY(box->hasFocus());
        window->commitEdits();
        QCOMPARE(window->image()[0x1D7], std::uint8_t(2));
    }

    // The mouse wheel over a list without the focus writes at once.
    void wheelWithoutFocus() {
        auto window = editingWindow();
        auto* box = child<QComboBox>(window.get(), "CboSQ");
        QVERIFY(!box->hasFocus());
        QWheelEvent wheel(QPointF(5, 5), box->mapToGlobal(QPointF(5, 5)), {}, {0, -120},
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(box, &wheel);
        QCOMPARE(box->currentIndex(), 1);
        QCOMPARE(window->image()[0x1D7], std::uint8_t(1));
    }

    // Narrow for the whole radio narrows every channel at once; back to
    // Wide the channels stay narrow, shown dark red where open.
    void radioWideBandwidth() {
        auto window = editingWindow();
        auto* list = child<QComboBox>(window.get(), "CboBandSel");
        list->setFocus();
        QTest::keyClick(list, Qt::Key_Down);
        const RadioImage& image = window->image();
        QCOMPARE(image[0x257], std::uint8_t(0x02));
        for (int n = 1; n <= 16; ++n) {
            QCOMPARE(image[0x100 + 2 * (n - 1) + 1] & 0x01, 1);
            QCOMPARE(cell(window.get(), n, 8)->text(), QString("Narrow"));
            QCOMPARE(rowColours(window.get(), n).at(7), QChar(n <= 4 ? 'M' : 'g'));
        }
        QTest::keyClick(list, Qt::Key_Up);
        QCOMPARE(image[0x257], std::uint8_t(0x00));
        QCOMPARE(image[0x101] & 0x01, 1);
        QCOMPARE(rowColours(window.get(), 1), QString("NNNNGRGR"));
        QCOMPARE(rowColours(window.get(), 9), QString("gggggggg"));
    }

    // Long-hit on the Moni key leaves the monitor list Off and Unmute
    // Toggle; a momentary function in the image becomes Off with it.
    void powerSelectionShortensMoni_data() {
        QTest::addColumn<int>("monitor"); // bits 5-6 of 0x056
        QTest::addColumn<QString>("changes");
        QTest::addColumn<int>("shortIndex");
        const auto row = [](const char* name, int monitor, const QString& changes, int shortIndex) {
            QTest::newRow(name) << monitor << changes << shortIndex;
        };
        row("Unmute Momentary", 0x20, "056=00 256=02", 0);
        row("Unmute Toggle", 0x40, "256=02", 1);
    }

    void powerSelectionShortensMoni() {
        QFETCH(int, monitor);
        QFETCH(QString, changes);
        QFETCH(int, shortIndex);
        auto window = editingWindow();
        window->image()[0x056] = std::uint8_t(monitor);
        window->ReFlashData();
        const RadioImage before = window->image();
        auto* powSel = child<QComboBox>(window.get(), "CboPowSel");
        auto* moni = child<QComboBox>(window.get(), "CboMoni");
        powSel->setFocus();
        QTest::keyClick(powSel, Qt::Key_Down);
        QTest::keyClick(powSel, Qt::Key_Down);
        QCOMPARE(changedBytes(before, window->image()), changes);
        QCOMPARE(moni->count(), 2);
        QCOMPARE(moni->currentIndex(), shortIndex);
        QTest::keyClick(powSel, Qt::Key_Up);
        QCOMPARE(moni->count(), 4);
        QCOMPARE(window->image()[0x256], std::uint8_t(0x01));
    }

    // The band list writes the band code at once, with the limits, the
    // range label and a grid drawn again.
    void band() {
        auto window = editingWindow();
        auto* list = child<QComboBox>(window.get(), "CboBand");
        list->setFocus();
        for (int i = 0; i < 7; ++i) {
            QTest::keyClick(list, Qt::Key_Down);
        }
        QCOMPARE(window->image()[0x15A], std::uint8_t(0x59));
        QCOMPARE(child<QLabel>(window.get(), "lblBandRange")->text(), "465.00000～520.00000 MHz");
        QCOMPARE(window->bandLimits(), (BandLimits{465, 520}));
        clickCell(window.get(), 1, 1);
        QTest::keyClicks(inputBox(window.get()), "145");
        QTest::keyClick(inputBox(window.get()), Qt::Key_Return);
        QCOMPARE(cell(window.get(), 1, 1)->text(), QString("465.00000"));
    }
};

QTEST_MAIN(TestOptionsEditing)
#include "tst_options_editing.moc"
