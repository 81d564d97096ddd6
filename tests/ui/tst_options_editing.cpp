// The option lists, the band list and the radio-wide W/N as editors: what
// each writes into the image and when.
#include "editing_support.h"

#include "image_edit.h"
#include "sizes.h"

#include <QAbstractItemView>
#include <QLabel>
#include <QTemporaryDir>
#include <QWheelEvent>

using namespace zr310;

namespace {

// Picks `item` as a user does: opens the list, moves to the item (the one
// shown, too) and takes it with Enter; then Enter leaves the list.
void pick(QComboBox* box, const QString& item) {
    box->setFocus();
    box->showPopup();
    box->view()->setCurrentIndex(box->model()->index(box->findText(item), 0));
    QTest::keyClick(box->view(), Qt::Key_Return);
    QVERIFY(!box->view()->isVisible());
    QCOMPARE(box->currentText(), item);
    QTest::keyClick(box, Qt::Key_Return);
}

} // namespace

class TestOptionsEditing : public QObject {
    Q_OBJECT
private slots:
    // Down `presses` times on the list, then Enter. Down alone must not
    // reach the image; Enter moves on, and leaving the list writes it. The
    // lists share this; the model suite has every item's bits.
    void listBytes() {
        const auto row = [](const char* locale, const char* list, int presses,
                            const QString& changes) {
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
        };
        row("en_US", "CboTXLimit", 2, "3D6=09");
        row("zh_CN", "CboTOTReset", 15, "3D7=15");
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
            QCOMPARE(image[toIndex(0x100 + 2 * (n - 1) + 1)] & 0x01, 1);
            QCOMPARE(cell(window.get(), n, 8)->text(), QString("Narrow"));
            QCOMPARE(rowColours(window.get(), n).at(7), QChar(n <= 4 ? 'M' : 'g'));
        }
        QTest::keyClick(list, Qt::Key_Up);
        QCOMPARE(image[0x257], std::uint8_t(0x00));
        QCOMPARE(image[0x101] & 0x01, 1);
        QCOMPARE(rowColours(window.get(), 1), QString("NNNNGRGR"));
        QCOMPARE(rowColours(window.get(), 9), QString("gggggggg"));
    }

    // Power Sel only changes which monitor items the list offers; the
    // monitor bits (5-6 of 0x056) change only when the user picks in the
    // Moni list. Each row's picks, made in the window and then saved, give
    // the bytes `zr310-cli set` writes for the same KEY=VALUE steps.
    void monitorAsTheCommandLine() {
        const auto row = [](std::uint8_t stored, const QStringList& steps, int monitorBits) {
            QTemporaryDir dir;
            auto window = editingWindow();
            window->image()[0x056] = stored;
            window->ReFlashData();
            RadioImage typed = window->image();
            for (const QString& step : steps) {
                const QStringList pair = step.split('=');
                applyImageEdit(typed, pair[0].toStdString(), pair[1].toStdString());
                pick(child<QComboBox>(window.get(), pair[0]), pair[1]);
            }
            ModalAnswerer answers;
            answers.answerFileDialog(dir.filePath("edited.k720"));
            trigger(window.get(), "menuFilesave");
            QVERIFY(!window->isModified());
            QCOMPARE(changedBytes(typed, window->image()), QString());
            QCOMPARE(window->image()[0x056] & 0x60, monitorBits);
        };
        const QString longHit = "CboPowSel=Long-hit [Moni]";
        const QString none = "CboPowSel=None";
        row(0x20, {longHit, none}, 0x20); // Unmute Momentary survives
        row(0x68, {longHit, none}, 0x60); // Squelch Momentary, scan bits kept
        row(0x40, {longHit, none}, 0x40); // Unmute Toggle
        row(0x00, {longHit, none}, 0x00);
        row(0x60, {longHit}, 0x60); // the short list shows Off, and writes nothing
        row(0x60, {longHit, "CboMoni=Off", none}, 0x00);
        row(0x20, {longHit, "CboMoni=Unmute Toggle"}, 0x40);
        row(0x40, {"CboMoni=Squelch Momentary", longHit}, 0x60);
    }

    // The band list writes the band code at once, with the limits, the
    // range label and a grid drawn again; the image shows it back.
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
        typeFrequency(window.get(), 1, 1, "145");
        QCOMPARE(cell(window.get(), 1, 1)->text(), QString("465.00000"));
        list->setCurrentIndex(0);
        window->ReFlashData();
        QCOMPARE(list->currentText(), QString("465 - 520MHz"));
    }
};

QTEST_MAIN(TestOptionsEditing)
#include "tst_options_editing.moc"
