// Start-up language, the language switch and the scroll bars of the main
// window.
#include "channel.h"
#include "layout_rules.h"
#include "ui_test_support.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QScrollBar>

#include <cmath>

using namespace zr310;

namespace {

// One caption from each place the language reaches.
void checkCaptions(QWidget* window, Language language) {
    const auto t = [language](int id) { return text(id, language); };
    QCOMPARE(window->windowTitle(), t(1406));
    QCOMPARE(child<QMenu>(window, "menufile")->title(), t(1000));
    QCOMPARE(child<QAction>(window, "menuProgRead")->text(), t(1010));
    QCOMPARE(child<QAction>(window, "Toolbar1_6")->toolTip(), t(1053));
    QCOMPARE(child<QLabel>(window, "StatusBar1_Panel1")->text(), t(1406));
    QCOMPARE(child<QGroupBox>(window, "fraModel")->title(), t(1300));
    QCOMPARE(child<QLabel>(window, "LblType")->text(), t(1301) + ':');
    QCOMPARE(child<QGroupBox>(window, "fraFunction")->title(), t(1303));
    QCOMPARE(child<QLabel>(window, "LblCboPowSel")->text(), t(1318));
    QCOMPARE(child<QGroupBox>(window, "FraCHSet")->title(), t(1200));
    QCOMPARE(cell(window, 0, 1)->text(), t(1204));
    QCOMPARE(child<QGroupBox>(window, "FraTestCH")->title(), t(txt::AdjustChannel));
    QCOMPARE(child<QComboBox>(window, "CboTXLimit")->itemText(0), t(txt::Off));
}

} // namespace

class TestShell : public QObject {
    Q_OBJECT
private slots:
    // The language a locale starts in, and what a click on a language item
    // (-1: none) changes.
    void language() {
        const auto row = [](const char* locale, int click, int language) {
            gbytLang = 1 - language; // whatever ran before must not matter
            auto window = startWindow(locale);
            const int started = gbytLang;
            // Words in the grid, and a list selection the image does not hold.
            auto ch1 = ChannelRecord::channel(window->image(), 1);
            ch1.setOpen(true);
            ch1.setBusyLock(true);
            ch1.setLowPower(true);
            window->ReFlashData();
            auto* preAlert = child<QComboBox>(window.get(), "CboTOTAgain");
            preAlert->setCurrentIndex(5);
            const RadioImage before = window->image();
            if (click >= 0) {
                window->setWindowTitle("untouched");
                child<QAction>(window.get(), QString("mnuSetup_LangSet_%1").arg(click))->trigger();
            }
            const auto lang = static_cast<Language>(language);
            QCOMPARE(gbytLang, language);
            QVERIFY(child<QAction>(window.get(), QString("mnuSetup_LangSet_%1").arg(language))
                        ->isChecked());
            if (click == started) {
                QCOMPARE(window->windowTitle(), QString("untouched"));
            } else {
                checkCaptions(window.get(), lang);
            }
            QCOMPARE(cell(window.get(), 1, 5)->text(), text(txt::Add, lang));
            QCOMPARE(cell(window.get(), 1, 6)->text(), text(txt::On, lang));
            QCOMPARE(cell(window.get(), 1, 7)->text(), text(txt::Low, lang));
            QCOMPARE(preAlert->currentText(), "5" + text(txt::Seconds, lang));
            QVERIFY(window->image() == before); // re-captioning writes nothing
        };
        row("zh_CN", -1, 1);
        row("zh_TW", -1, 0);
        row("en_CN", -1, 0);
        row("en_US", 1, 1);
        row("zh_CN", 1, 1); // Chinese again changes nothing
    }

    // Rows of whole pixels (15 twips each) are also shown in a window.
    void scrollBars() {
        const auto row = [](double width, double height, bool vertical, bool horizontal) {
            QCOMPARE(ui::scrollBarsFor(width, height), (ui::ScrollBarNeeds{vertical, horizontal}));
            if (std::fmod(width, 15) != 0 || std::fmod(height, 15) != 0) {
                return;
            }
            auto window = startWindow();
            auto* frame1 = child(window.get(), "Frame1");
            auto* vScroll = child<QScrollBar>(window.get(), "VScroll1");
            auto* hScroll = child(window.get(), "HScroll1");
            const QPoint home = frame1->pos();
            const int menu = window->menuBar()->height();

            window->resize(int(width) / 15, int(height) / 15 + menu);
            QTRY_COMPARE(window->insideSizeTwips(), QSizeF(width, height));
            QCOMPARE(vScroll->isVisible(), vertical);
            QCOMPARE(hScroll->isVisible(), horizontal);
            QCOMPARE(child(window.get(), "Picture2")->isVisible(), vertical && horizontal);
            if (vertical && horizontal) { // the panels do not fit: the bar moves them
                vScroll->setValue(vScroll->maximum());
                QVERIFY(frame1->y() < home.y());
            }
            // Large again: bars gone, the frame back home.
            window->resize(900, 700 + menu);
            QTRY_VERIFY(!vScroll->isVisible());
            QCOMPARE(frame1->pos(), home);
        };
        row(12000, 9000, false, false);
        row(12000, 8999, true, false); // a twip too low
        row(11999, 9000, false, true); // a twip too narrow
        row(12000, 8985, true, false); // a pixel too low
        row(7500, 6000, true, true);   // too small for the panels
    }
};

QTEST_MAIN(TestShell)
#include "tst_shell.moc"
