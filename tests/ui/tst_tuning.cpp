// Tuning mode from the main window against an emulated radio on a
// pseudo-terminal: the test channels, items adjusted live with the bar, OK
// and Cancel, switching items, Write Test Frequency and leaving.
#include "editing_support.h"
#include "frmQTDQT/frm_qtdqt.h"
#include "tuning.h"

#include <QScrollBar>
#include <QTreeWidget>

using namespace zr310;

namespace {

// Test channels 1..11 receive on 450, 452 ... MHz; the 9th squelch level is
// stored as 0x20 and the CTCSS deviation as 0x40.
RadioImage radioContents() {
    RadioImage image = makeStartImage();
    image[kBandCodeOffset] = 0x06; // 450 - 470MHz
    for (int t = 1; t <= kTestChannelCount; ++t) {
        auto channel = ChannelRecord::testChannel(image, t);
        channel.setOpen(true);
        channel.setTxAllowed(true);
        channel.setFrequency(Side::Receive, 448 + 2 * t);
        channel.setFrequency(Side::Transmit, 448 + 2 * t);
    }
    setTuningValue(image, TuningItem::Squelch9, 0x20);
    setTuningValue(image, TuningItem::CtcssDeviation, 0x40);
    return image;
}

// The radio above and a window in tuning mode on it.
struct Bench : RadioBench {
    Bench() : RadioBench(radioContents()) {
        if (!window) {
            return;
        }
        // The band comes with a read or a file, not with the tuning area.
        window->image()[kBandCodeOffset] = 0x06;
        window->ReFlashData();
        ModalAnswerer answers;
        trigger(window.get(), "MenuProgTest");
        QTRY_VERIFY_WITH_TIMEOUT(child(window.get(), "FraTestCH")->isVisible(), 20000);
        QCOMPARE(answers.log(), QStringList{seen("frmConnect", txt::ReadWriteRadio)});
    }

    EmulatedRadio::Memory memory() const { return radio->memory(); }
    std::optional<std::uint8_t> activeItem() const { return ask(&EmulatedRadio::activeTuningItem); }
    std::uint8_t liveValue() const { return ask(&EmulatedRadio::liveTuningValue); }
    QScrollBar* bar() const { return child<QScrollBar>(window.get(), "HscTuneValue"); }
    void clickNode(int textId) const {
        auto* tree = child<QTreeWidget>(window.get(), "TreeViewTune");
        const auto found = tree->findItems(text(textId), Qt::MatchExactly | Qt::MatchRecursive);
        QVERIFY(!found.isEmpty());
        emit tree->itemClicked(found.front(), 0);
    }
};

} // namespace

class TestTuning : public QObject {
    Q_OBJECT
private slots:
    // The test channels as the radio holds them, edited in the grid and
    // written with Write Test Frequency; then Channel Window leaves tuning.
    void testChannels() {
        Bench bench;
        QVERIFY(bench.window && child(bench.window.get(), "FraTestCH")->isVisible());
        QWidget* w = bench.window.get();
        QVERIFY(!child(w, "FraCHSet")->isVisible());
        QCOMPARE(bench.ask(&EmulatedRadio::mode), EmulatedRadio::Mode::Tuning);
        auto* grid = child<QTableWidget>(w, "TestChannelGrid");
        QCOMPARE(grid->item(2, 1)->text(), QString("452.00000"));
        QCOMPARE(grid->item(2, 2)->text(), QString("6.25"));
        QCOMPARE(grid->item(1, 1)->background().color(), QColor(Qt::red));

        // Closing test channel 3 (record columns 0x24, 0x25) clears one bit.
        const RadioImage before = bench.window->image();
        QTest::mouseClick(child(w, "TestChkClose_2"), Qt::LeftButton);
        QCOMPARE(changedBytes(before, bench.window->image()),
                 QString("124=05")); // 454 MHz: bit 16 and the 6.25 kHz step stay
        QVERIFY(!child(w, "TestChkForbidTX_2")->isEnabled());
        QVERIFY(!child(w, "OptAddjust_2")->isEnabled());
        QTest::mouseClick(child(w, "TestChkClose_2"), Qt::LeftButton);
        QTest::mouseClick(child(w, "OptAddjust_3"), Qt::LeftButton);
        QCOMPARE(grid->item(4, 1)->background().color(), QColor(Qt::red));
        QVERIFY(grid->item(1, 1)->background().style() == Qt::NoBrush);

        // A frequency by the box, a tone by the dialog (test receive side).
        const QRect cell = grid->visualItemRect(grid->item(5, 1));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, cell.center());
        QTest::keyClicks(child(w, "TxtInputTest"), "455.005");
        QTest::keyClick(child(w, "TxtInputTest"), Qt::Key_Return);
        QCOMPARE(grid->item(5, 1)->text(), QString("455.00500"));
        QCOMPARE(grid->item(5, 2)->text(), QString("5.00"));
        ModalAnswerer answers;
        int marker = 0;
        answers.answer([&](QWidget* dialog) {
            marker = qobject_cast<ui::FrmQTDQT*>(dialog)->sideMarker();
            child<QAbstractButton>(dialog, "OptDCS")->click();
            ModalAnswerer::click(dialog, child<QAbstractButton>(dialog, "CmdOK"));
        });
        const QRect tone = grid->visualItemRect(grid->item(5, 3));
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, tone.center());
        QCOMPARE(grid->item(5, 3)->text(), QString("DCS 023"));
        QCOMPARE(marker, ui::kSideTestRx);

        // Write Test Frequency puts the test channel area into the radio.
        QTest::mouseClick(child(w, "CmdWriteTFreq"), Qt::LeftButton);
        QTRY_VERIFY_WITH_TIMEOUT(bench.memory()[0x140] == bench.window->image().atAddress(0x140),
                                 20000);
        for (int address = 0x100; address < 0x1B0; ++address) {
            QCOMPARE(bench.memory()[std::size_t(address)],
                     bench.window->image().atAddress(address));
        }

        w->setWindowTitle("tuning");
        trigger(w, "MenuCHfrm");
        QTRY_VERIFY_WITH_TIMEOUT(bench.ask(&EmulatedRadio::mode) != EmulatedRadio::Mode::Tuning,
                                 30000);
        QVERIFY(child(w, "FraCHSet")->isVisible() && !child(w, "FraTestCH")->isVisible());
        QVERIFY(child<QAction>(w, "MenuCHfrm")->isChecked());
        QVERIFY(!child<QAction>(w, "MenuProgTest")->isChecked());
        QCOMPARE(w->windowTitle(), text(txt::ProgramTitle));
    }

    // Items adjusted live: the radio follows every value, OK keeps it in the
    // radio and the image, Cancel drops it, an item chosen while another is
    // active takes over at once, and "Exit tuning" leaves tuning mode.
    void adjustItems() {
        Bench bench;
        QVERIFY(bench.window && child(bench.window.get(), "FraTestCH")->isVisible());
        bench.clickNode(txt::TuningSquelch9); // 9th squelch level
        QTRY_COMPARE(bench.bar()->value(), 0x20);
        QVERIFY(child(bench.window.get(), "FraTune")->isVisible());
        for (int value = 0x21; value <= 0x38; ++value) {
            bench.bar()->setValue(value); // a fast drag
        }
        QTRY_COMPARE(bench.liveValue(), std::uint8_t(0x38));
        QTest::mouseClick(child(bench.window.get(), "CmdTuneOK"), Qt::LeftButton);
        QTRY_COMPARE(bench.memory()[0x2F1], std::uint8_t(0x38));
        QCOMPARE(tuningValue(bench.window->image(), TuningItem::Squelch9), std::uint8_t(0x38));

        bench.clickNode(txt::TuningLowBattery); // low battery, then straight to CTCSS deviation
        QTRY_COMPARE(bench.activeItem(), std::optional<std::uint8_t>(0x11));
        bench.bar()->setValue(5);
        QTRY_COMPARE(bench.liveValue(), std::uint8_t(5));
        bench.clickNode(txt::TuningCtcssDeviation);
        QTRY_COMPARE(bench.activeItem(), std::optional<std::uint8_t>(0x77));
        QTRY_COMPARE(bench.bar()->value(), 0x40);
        bench.bar()->setValue(0x41);
        QTRY_COMPARE(bench.liveValue(), std::uint8_t(0x41));
        QTest::mouseClick(child(bench.window.get(), "CmdTuneCancel"), Qt::LeftButton);
        QTRY_VERIFY(!bench.activeItem());
        QCOMPARE(bench.memory()[0x2F0], std::uint8_t(0));    // low battery kept
        QCOMPARE(bench.memory()[0x2F3], std::uint8_t(0x40)); // CTCSS deviation kept
        QVERIFY(child(bench.window.get(), "FraTestCH")->isVisible());

        bench.clickNode(txt::TuningExit); // exit tuning
        QTRY_VERIFY(child(bench.window.get(), "FraCHSet")->isVisible());
        QTRY_COMPARE(bench.ask(&EmulatedRadio::mode), EmulatedRadio::Mode::Idle);
    }
};

QTEST_MAIN(TestTuning)
#include "tst_tuning.moc"
