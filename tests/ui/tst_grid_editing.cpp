// The channel grid as an editor: what a click on each column does and when
// it does nothing, the boxes beside the grid, and the keyboard.
#include "editing_support.h"

using namespace zr310;

class TestGridEditing : public QObject {
    Q_OBJECT
private slots:
    // Channel 4 (columns 6 and 7: receive flags 0x106, transmit flags 0x386,
    // option flags 0x107). `setup`: blank, notx, narrow (the radio-wide W/N),
    // flags (all four option flags set first). `opens`: box, dialog or
    // nothing. Toggles are clicked twice: the second click restores all.
    void clickRules() {
        const auto row = [](int column, const QString& setup, const QString& changes,
                            const QString& word, const QString& colours, const QString& opens) {
            auto window = editingWindow();
            RadioImage& image = window->image();
            auto channel = ChannelRecord::channel(image, 4);
            channel.setOpen(setup != "blank");
            channel.setTxAllowed(setup != "notx");
            if (setup == "flags") {
                image[0x107] = 0x35;
            }
            if (setup == "narrow") {
                image[0x257] |= 0x02;
            }
            window->ReFlashData();
            const RadioImage before = image;

            ModalAnswerer answers;
            clickCell(window.get(), 4, column);
            QCOMPARE(inputBox(window.get())->isVisible(), opens == "box");
            QCOMPARE(answers.log().size(), opens == "dialog" ? 1 : 0);
            QCOMPARE(changedBytes(before, image), changes);
            if (!word.isEmpty()) {
                QCOMPARE(cell(window.get(), 4, column)->text(), word);
            }
            QCOMPARE(rowColours(window.get(), 4), colours);
            if (opens.isEmpty()) {
                clickCell(window.get(), 4, column);
                QCOMPARE(changedBytes(before, image), QString());
            }
        };
        row(5, "", "107=10", "Del", "NNNNRRGG", "");
        row(6, "", "107=04", "On", "NNNNGGGG", "");
        row(6, "notx", "", "Off", "NNggGggG", ""); // busy lock needs TX
        row(7, "", "107=20", "Low", "NNNNGRRG", "");
        row(7, "notx", "107=20", "Low", "NNggGggG", "");
        row(8, "flags", "107=34", "Wide", "NNNNRGRG", "");
        row(8, "narrow", "", "Wide", "NNNNGRGM", "");
        row(5, "blank", "", "Add", "gggggggg", "");
        row(3, "notx", "", "", "NNggGggG", "");
        row(4, "", "", "", "NNNNGRGG", "dialog");
        row(4, "notx", "", "", "NNggGggG", "");
    }

    // Close, No TX and Simplex on channel 2 (receive flags 0x102, transmit
    // flags 0x382). Simplex copies the receive frequency, step and tone.
    void channelBoxes() {
        const auto row = [](const char* box, bool startBlank, const QString& changes,
                            const QString& colours, bool noTxEnabled) {
            auto window = editingWindow();
            auto channel = ChannelRecord::channel(window->image(), 2);
            channel.setTone(Side::Receive, {ToneKind::Ctcss, 0x0885});
            channel.setOpen(!startBlank);
            window->ReFlashData();
            const RadioImage before = window->image();

            QCheckBox* target = channelBox(window.get(), box, 2);
            if (target->isEnabled()) {
                QTest::mouseClick(target, Qt::LeftButton);
            }
            QCOMPARE(changedBytes(before, window->image()), changes);
            QCOMPARE(rowColours(window.get(), 2), colours);
            QCOMPARE(channelBox(window.get(), "chkForbidTx", 2)->isEnabled(), noTxEnabled);
            if (QString(box) == "chkSameFreq") {
                QCOMPARE(cell(window.get(), 2, 3)->text(), QString("145.51250"));
                QCOMPARE(cell(window.get(), 2, 4)->text(), QString("CTC 88.5"));
                // Both sides alike: a refresh finds the channel simplex.
                window->ReFlashData();
                QVERIFY(target->isChecked());
                // Unticked, the cells keep their texts.
                QTest::mouseClick(target, Qt::LeftButton);
                QVERIFY(!target->isChecked());
                QCOMPARE(cell(window.get(), 2, 3)->text(), QString("145.51250"));
            }
        };
        row("chkClose", false, "102=34", "gggggggg", false);
        row("chkClose", true, "102=3C", "NNNNGRGG", true);
        row("chkForbidTx", false, "382=04", "NNggGggG", true);
        row("chkForbidTx", true, "", "gggggggg", false);
        // 145.5125 MHz = 23282 steps (0x5AF2) of 6.25 kHz; CTC 88.5 = 0x0885.
        row("chkSameFreq", false, "003=85 083=08 282=F2 302=5A 382=3C", "NNNNGRGG", true);
    }

    // While Simplex is ticked, the transmit side follows receive edits; an
    // edit of the transmit side ends it.
    void simplexFollowsReceive() {
        auto window = editingWindow();
        QTest::mouseClick(channelBox(window.get(), "chkSameFreq", 3), Qt::LeftButton);
        typeFrequency(window.get(), 3, 1, "150.025");
        QCOMPARE(cell(window.get(), 3, 3)->text(), QString("150.02500"));
        const auto tx = ChannelView(window->image(), channelColumn(3)).frequency(Side::Transmit);
        QCOMPARE(tx, (FrequencyCode{24004, true}));
        typeFrequency(window.get(), 3, 3, "151");
        QVERIFY(!channelBox(window.get(), "chkSameFreq", 3)->isChecked());
        typeFrequency(window.get(), 3, 1, "152");
        QCOMPARE(cell(window.get(), 3, 3)->text(), QString("151.00000"));
    }

    // The signalling dialog from the grid: OK writes the cell and the image
    // (the transmit side too while Simplex is ticked), Cancel leaves both; the
    // cell is yellow while the dialog is open. Channel 2: receive flags 0x102
    // (0x0C before), receive tone value 0x182/0x202.
    void signallingFromGrid() {
        const auto row = [](bool simplex, bool ok, const QString& changes) {
            auto window = editingWindow();
            if (simplex) {
                QTest::mouseClick(channelBox(window.get(), "chkSameFreq", 2), Qt::LeftButton);
            }
            const RadioImage before = window->image();
            QColor background;
            ModalAnswerer answers;
            answers.answer([&](QWidget* dialog) {
                background = cell(window.get(), 2, 2)->background().color();
                child<QAbstractButton>(dialog, "OptDCS")->click();
                child<QComboBox>(dialog, "CboDCS")->setEditText("023");
                child<QAbstractButton>(dialog, "ChkDCS")->click();
                ModalAnswerer::click(dialog,
                                     child<QAbstractButton>(dialog, ok ? "CmdOK" : "CmdCancel"));
            });
            clickCell(window.get(), 2, 2);
            QCOMPARE(background, QColor(Qt::yellow));
            QVERIFY(!cell(window.get(), 2, 2)->data(Qt::BackgroundRole).isValid());
            QCOMPARE(changedBytes(before, window->image()), changes);
            QCOMPARE(cell(window.get(), 2, 2)->text(), QString(ok ? "-DCS 023" : "OFF"));
            QCOMPARE(cell(window.get(), 2, 4)->text(), QString(ok && simplex ? "-DCS 023" : "OFF"));
        };
        row(false, true, "102=7C 182=13");
        row(false, false, "");
        row(true, true, "003=13 102=7C 182=13 382=7C");
    }

    // The keys of a spreadsheet on channel 1, Qt's own moves aside. `result`:
    // box:TEXT, dialog, bytes:CHANGES or move:ROW,COLUMN.
    void keyboard() {
        const auto row = [](int column, int key, const QString& typed, const QString& result) {
            auto window = editingWindow();
            const RadioImage before = window->image();
            focusCell(window.get(), 1, column);
            ModalAnswerer answers;
            QTableWidget* grid = channelGrid(window.get());
            if (key != 0) {
                QTest::keyClick(grid, Qt::Key(key));
            } else {
                QTest::keyClicks(grid, typed);
            }
            const QString kind = result.section(':', 0, 0);
            const QString value = result.section(':', 1);
            QCOMPARE(inputBox(window.get())->isVisible(), kind == "box");
            QCOMPARE(answers.log().size(), kind == "dialog" ? 1 : 0);
            if (kind == "box") {
                QCOMPARE(inputBox(window.get())->text(), value);
            } else if (kind == "bytes") {
                QCOMPARE(changedBytes(before, window->image()), value);
            } else if (kind == "move") {
                QCOMPARE(QString("%1,%2").arg(grid->currentRow()).arg(grid->currentColumn()),
                         value);
            }
        };
        row(1, Qt::Key_Return, "", "box:145.51250");
        row(3, Qt::Key_F2, "", "box:146.00000");
        row(1, 0, "4", "box:4");
        row(2, 0, "4", "move:1,2"); // a digit on a tone
        row(2, Qt::Key_Return, "", "dialog");
        row(6, Qt::Key_Space, "", "bytes:101=04");
        row(1, Qt::Key_Left, "", "move:1,1"); // not onto the CH column
        row(8, Qt::Key_Tab, "", "move:2,1");
    }

    // Right from W/N reaches the boxes beside the row; Space ticks them and
    // Left leads back into the grid.
    void boxesByKeyboard() {
        auto window = editingWindow();
        const RadioImage before = window->image();
        focusCell(window.get(), 2, 8);
        QTest::keyClick(channelGrid(window.get()), Qt::Key_Right);
        QCheckBox* close = channelBox(window.get(), "chkClose", 2);
        QVERIFY(close->hasFocus());
        QTest::keyClick(close, Qt::Key_Right);
        QCheckBox* noTx = channelBox(window.get(), "chkForbidTx", 2);
        QVERIFY(noTx->hasFocus());
        QTest::keyClick(noTx, Qt::Key_Space);
        QCOMPARE(changedBytes(before, window->image()), QString("382=04"));
        QTest::keyClick(noTx, Qt::Key_Down);
        QVERIFY(channelBox(window.get(), "chkForbidTx", 3)->hasFocus());
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Left);
        QCOMPARE(QApplication::focusWidget(), channelGrid(window.get()));
        QCOMPARE(channelGrid(window.get())->currentRow(), 3);
        // Ctrl+Tab leaves the grid: forward to the boxes, back to the lists.
        QTest::keyClick(channelGrid(window.get()), Qt::Key_Tab, Qt::ControlModifier);
        QCOMPARE(QApplication::focusWidget(), channelBox(window.get(), "chkClose", 1));
        focusCell(window.get(), 1, 1);
        QTest::keyClick(channelGrid(window.get()), Qt::Key_Backtab,
                        Qt::ControlModifier | Qt::ShiftModifier);
        QCOMPARE(QApplication::focusWidget()->objectName(), QString("CboPowSel"));
    }

    // An edit still open in the frequency box or a list: closing the window
    // writes it and so asks whether to save (Cancel stays); destroying the
    // window, as the program's end does after the close, must not write
    // into a window half gone (focus leaving as the window goes).
    void endWhileEditing() {
        const auto row = [](const char* editor, bool close) {
            auto window = editingWindow();
            const RadioImage before = window->image();
            QWidget* focused = nullptr;
            if (QString(editor) == "box") {
                clickCell(window.get(), 2, 1);
                focused = inputBox(window.get());
                QTest::keyClicks(focused, "150");
            } else {
                focused = child<QComboBox>(window.get(), editor);
                focused->setFocus();
                QTest::keyClick(focused, Qt::Key_Down);
            }
            QVERIFY(focused->hasFocus());
            QCOMPARE(changedBytes(before, window->image()), QString());
            if (close) {
                ModalAnswerer answers;
                answers.answerBox(QMessageBox::Cancel);
                QVERIFY(!window->close());
                QCOMPARE(answers.log(), QStringList{seen("msgBox", txt::ReadButton,
                                                         text(txt::SaveChangesQuestion))});
                QVERIFY(window->isModified());
            }
            window.reset();
        };
        row("box", false);
        row("CboSQ", false);
        row("box", true);
        row("CboSQ", true);
    }

    // Start-up puts the keyboard on CH 1 / RX Freq.
    void focusAfterStart() {
        auto window = startWindow();
        QVERIFY(QTest::qWaitForWindowActive(window.get()));
        QTableWidget* grid = channelGrid(window.get());
        QCOMPARE(QApplication::focusWidget(), grid);
        QCOMPARE(grid->currentRow(), 1);
        QCOMPARE(grid->currentColumn(), 1);
    }
};

QTEST_MAIN(TestGridEditing)
#include "tst_grid_editing.moc"
