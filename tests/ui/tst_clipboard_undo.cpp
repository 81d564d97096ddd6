// Whole channels through the clipboard, in the program's own form and as a
// spreadsheet's text, and undo and redo across every kind of edit.
#include "editing_support.h"
#include "k720_file.h"

#include <QClipboard>
#include <QTemporaryDir>

using namespace zr310;

namespace {

void selectChannels(QWidget* window, int first, int last) {
    clickCell(window, first, 1);
    QTest::keyClick(inputBox(window), Qt::Key_Escape);
    if (last != first) {
        clickCell(window, last, 2, Qt::ShiftModifier);
    }
}

QString rowText(QWidget* window, int row) {
    QStringList texts;
    for (int column = 1; column <= 8; ++column) {
        texts << cell(window, row, column)->text();
    }
    return texts.join('|');
}

} // namespace

class TestClipboardUndo : public QObject {
    Q_OBJECT
private slots:
    // Channels 2 and 3 copied onto 10 and 11: every byte of their columns,
    // and a text a spreadsheet takes.
    void copyAndPasteChannels() {
        auto window = editingWindow();
        RadioImage& image = window->image();
        image[0x105] = 0xA5; // odd-column bits no editor shows travel too
        ChannelRecord::channel(image, 3).setTone(Side::Transmit, {ToneKind::DcsInverted, 0x13});
        window->ReFlashData();
        selectChannels(window.get(), 2, 3);
        trigger(window.get(), "MenuEditCopy");
        QCOMPARE(
            QApplication::clipboard()->text(),
            QString("CH 2\t145.51250\tOFF\t146.00000\tOFF\tAdd\tOff\tHigh\tWide\t\t\r\n"
                    "CH 3\t145.51250\tOFF\t146.00000\t-DCS 023\tAdd\tOn\tLow\tNarrow\t\t\r\n"));

        selectChannels(window.get(), 10, 10);
        trigger(window.get(), "menuEditPaste");
        for (int k = 0; k < 2; ++k) {
            for (int block = 0; block < 8; ++block) {
                for (int side = 0; side < 2; ++side) {
                    QCOMPARE(image.at(18 + 2 * k + side, block), image.at(2 + 2 * k + side, block));
                }
            }
            QCOMPARE(rowText(window.get(), 10 + k), rowText(window.get(), 2 + k));
        }
        QVERIFY(!channelBox(window.get(), "chkClose", 11)->isChecked());
    }

    // Text from a spreadsheet pasted onto channel 4 (and 5): what the row
    // then shows, or the message that refuses the paste. The model suite
    // reads every field's words.
    void pasteText() {
        const auto row = [](const QString& clipboard, const QString& row4, const QString& message) {
            auto window = editingWindow();
            const RadioImage before = window->image();
            QApplication::clipboard()->setText(clipboard);
            selectChannels(window.get(), 4, 4);
            ModalAnswerer answers;
            trigger(window.get(), "menuEditPaste");
            QCOMPARE(rowText(window.get(), 4), row4);
            if (message.isEmpty()) {
                QCOMPARE(answers.log(), QStringList());
                QVERIFY(window->image() != before);
            } else {
                QCOMPARE(answers.log(), QStringList{seen("msgBox", txt::Warning, message)});
                QCOMPARE(changedBytes(before, window->image()), QString());
            }
        };
        const QString values = "145.5\tCTC 88.5\t146.005\tdcs 754\tDel\tOn\tLow\tNarrow";
        const QString shown = "145.50000|CTC 88.5|146.00500|DCS 754|Del|On|Low|Narrow";
        const QString unchanged = "145.51250|OFF|146.00000|OFF|Add|Off|High|Wide";
        row(values, shown, "");
        row("CH\tRX Freq (MHz)\tRX CTC/DCS\tTX Freq (MHz)\tTX CTC/DCS\tScan Del/Add\t"
            "Busy Lock\tTX Power\tW/N\tClose\tNo TX\n" +
                values + "\t\t\n",
            shown, "");
        row(values + "\n" + QString(values).replace("CTC 88.5", "CTC 88.4"), unchanged,
            "Row 2 cannot be pasted onto CH 5: \"CTC 88.4\" is not a valid RX CTC/DCS.");
        row("hello", unchanged, "Line 1 of the pasted text is not a channel row.");
    }

    // Three channels do not fit from CH 15: nothing is pasted.
    void pastePastTheLastChannel() {
        auto window = editingWindow();
        selectChannels(window.get(), 1, 3);
        trigger(window.get(), "MenuEditCopy");
        selectChannels(window.get(), 15, 15);
        const RadioImage before = window->image();
        ModalAnswerer answers;
        trigger(window.get(), "menuEditPaste");
        QCOMPARE(answers.log(),
                 QStringList{seen("msgBox", txt::Warning,
                                  "The clipboard holds 3 channels: from CH 15 only 2 fit.")});
        QCOMPARE(window->image(), before);
    }

    // One step per action, walked back to the start and forward again; the
    // unsaved-data question follows the bytes, not the history.
    void undoRedoEveryKind() {
        auto window = editingWindow();
        QTemporaryDir dir;
        QVERIFY(window->saveFile(dir.filePath("start.k720")));
        const RadioImage start = window->image();
        QVERIFY(!child<QAction>(window.get(), "MenuEditUndo")->isEnabled());

        std::vector<RadioImage> steps{start};
        const auto stepDone = [&] { steps.push_back(window->image()); };
        clickCell(window.get(), 1, 5); // a toggle
        stepDone();
        typeFrequency(window.get(), 2, 1, "150"); // the frequency box
        stepDone();
        QTest::mouseClick(channelBox(window.get(), "chkForbidTx", 3), Qt::LeftButton);
        stepDone();
        auto* squelch = child<QComboBox>(window.get(), "CboSQ");
        squelch->setFocus();
        QTest::keyClick(squelch, Qt::Key_Down);
        QTest::keyClick(squelch, Qt::Key_Return);
        stepDone();
        auto* band = child<QComboBox>(window.get(), "CboBand");
        band->setFocus();
        QTest::keyClick(band, Qt::Key_Up);
        stepDone();
        selectChannels(window.get(), 1, 1);
        trigger(window.get(), "MenuEditCopy");
        selectChannels(window.get(), 5, 6);
        trigger(window.get(), "menuEditPaste");
        stepDone();
        // A click that changes nothing adds no step.
        clickCell(window.get(), 9, 5);
        QCOMPARE(window->image(), steps.back());

        // By the keys, as a user would.
        QTableWidget* grid = channelGrid(window.get());
        grid->setFocus();
        for (int k = int(steps.size()) - 2; k >= 0; --k) {
            QTest::keyClick(grid, Qt::Key_Z, Qt::ControlModifier);
            QCOMPARE(changedBytes(steps[std::size_t(k)], window->image()), QString());
        }
        QVERIFY(!child<QAction>(window.get(), "MenuEditUndo")->isEnabled());
        QCOMPARE(cell(window.get(), 2, 1)->text(), QString("145.51250"));
        QCOMPARE(child<QComboBox>(window.get(), "CboSQ")->currentIndex(), 0);
        QVERIFY(!window->isModified());
        for (std::size_t k = 1; k < steps.size(); ++k) {
            if (k % 2 == 1) {
                QTest::keyClick(grid, Qt::Key_Y, Qt::ControlModifier);
            } else {
                QTest::keyClick(grid, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
            }
            QCOMPARE(changedBytes(steps[k], window->image()), QString());
        }
        QVERIFY(!child<QAction>(window.get(), "MenuEditRedo")->isEnabled());
        QCOMPARE(rowColours(window.get(), 3).at(2), QChar('g'));

        // Opening a file starts a fresh history.
        QVERIFY(window->openFile(dir.filePath("start.k720")));
        QVERIFY(!child<QAction>(window.get(), "MenuEditUndo")->isEnabled());
    }
};

QTEST_MAIN(TestClipboardUndo)
#include "tst_clipboard_undo.moc"
