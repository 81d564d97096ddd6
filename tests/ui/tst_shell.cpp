// Start-up language, the language switch and the scroll bars of the main
// window.
#include "channel.h"
#include "layout_rules.h"
#include "main_form.h"
#include "modal_answerer.h"
#include "string_table.h"
#include "ui_test_support.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QMenuBar>
#include <QScrollBar>
#include <QStatusBar>
#include <QToolBar>
#include <QWidget>

using namespace zr310;
using zr310::ui::MainForm;

namespace {

QString text(int id, Language language) {
    return QString::fromUtf8(ResString(id, language));
}

// The captions that every language switch must reach, one from each area.
void checkCaptions(QObject* window, Language language) {
    auto* main = qobject_cast<QWidget*>(window);
    QCOMPARE(main->windowTitle(), text(1406, language));
    QCOMPARE(child<QMenu>(window, "menufile")->title(), text(1000, language));
    QCOMPARE(action(window, "menuProgRead")->text(), text(1010, language));
    QCOMPARE(action(window, "mnuSetup_LangSet_1")->text(), text(1020, language));
    QCOMPARE(action(window, "Toolbar1_6")->toolTip(), text(1053, language));
    QCOMPARE(action(window, "Toolbar1_9")->toolTip(), text(1055, language));
    QCOMPARE(child<QLabel>(window, "StatusBar1_Panel1")->text(), text(1406, language));
    QCOMPARE(child<QGroupBox>(window, "fraModel")->title(), text(1300, language));
    QCOMPARE(child<QLabel>(window, "LblType")->text(), text(1301, language) + ':');
    QCOMPARE(child<QGroupBox>(window, "fraFunction")->title(), text(1303, language));
    QCOMPARE(child<QLabel>(window, "LblCboPowSel")->text(), text(1318, language));
    QCOMPARE(child<QGroupBox>(window, "FraCHSet")->title(), text(1200, language));
    QCOMPARE(cell(window, 0, 1), text(1204, language));
    QCOMPARE(cell(window, 16, 0), text(1203, language) + " 16");
    QCOMPARE(child<QGroupBox>(window, "FraTestCH")->title(), text(1508, language));
    QCOMPARE(child<QComboBox>(window, "CboTXLimit")->itemText(0), text(1101, language));
}

} // namespace

class TestShell : public QObject {
    Q_OBJECT
private slots:
    void startupLanguage_data();
    void startupLanguage();
    void languageSwitch();
    void sameLanguageChangesNothing();
    void scrollRule_data();
    void scrollRule();
    void scrollBarsFollowWindowSize_data();
    void scrollBarsFollowWindowSize();
};

void TestShell::startupLanguage_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<int>("language");
    QTest::newRow("Chinese, PRC") << "zh_CN" << 1;
    QTest::newRow("Chinese, simplified script, PRC") << "zh_Hans_CN" << 1;
    QTest::newRow("Chinese, Taiwan") << "zh_TW" << 0;
    QTest::newRow("Chinese, Hong Kong") << "zh_HK" << 0;
    QTest::newRow("Chinese, Singapore") << "zh_SG" << 0;
    QTest::newRow("English, US") << "en_US" << 0;
    QTest::newRow("German") << "de_DE" << 0;
    QTest::newRow("C") << "C" << 0;
}

void TestShell::startupLanguage() {
    QFETCH(QString, locale);
    QFETCH(int, language);
    gbytLang = 1 - language; // whatever ran before must not matter
    auto window = startWindow(locale);
    QCOMPARE(gbytLang, language);
    QCOMPARE(action(window.get(), "mnuSetup_LangSet_0")->isChecked(), language == 0);
    QCOMPARE(action(window.get(), "mnuSetup_LangSet_1")->isChecked(), language == 1);
    checkCaptions(window.get(), static_cast<Language>(language));
    QCOMPARE(window->currentFileName(), QString("ZR-310.k720"));
}

void TestShell::languageSwitch() {
    auto window = startWindow("en_US");
    // An open channel so that the grid holds translatable words.
    RadioImage& image = window->image();
    auto ch1 = ChannelRecord::channel(image, 1);
    ch1.setOpen(true);
    ch1.setTxAllowed(true);
    ch1.setBusyLock(true);
    ch1.setLowPower(true);
    window->ReFlashData();
    auto* preAlert = child<QComboBox>(window.get(), "CboTOTAgain");
    preAlert->setCurrentIndex(5);
    const QColor busyColour = cellColour(window.get(), 1, 6);
    const RadioImage before = image;

    action(window.get(), "mnuSetup_LangSet_1")->trigger();
    QCOMPARE(gbytLang, 1);
    QVERIFY(action(window.get(), "mnuSetup_LangSet_1")->isChecked());
    QVERIFY(!action(window.get(), "mnuSetup_LangSet_0")->isChecked());
    checkCaptions(window.get(), Language::Chinese);
    QCOMPARE(cell(window.get(), 1, 5), text(1218, Language::Chinese)); // Add
    QCOMPARE(cell(window.get(), 1, 6), text(1100, Language::Chinese)); // On
    QCOMPARE(cell(window.get(), 1, 7), text(1213, Language::Chinese)); // Low
    QCOMPARE(cellColour(window.get(), 1, 6), busyColour);
    QCOMPARE(preAlert->currentIndex(), 5);
    QCOMPARE(preAlert->currentText(), "5" + text(1350, Language::Chinese));
    QVERIFY(image == before); // re-captioning writes nothing

    action(window.get(), "mnuSetup_LangSet_0")->trigger();
    checkCaptions(window.get(), Language::English);
    QCOMPARE(cell(window.get(), 1, 7), text(1213, Language::English));
}

void TestShell::sameLanguageChangesNothing() {
    auto window = startWindow("zh_CN");
    window->setWindowTitle("untouched");
    child<QMenu>(window.get(), "menufile")->setTitle("untouched");
    action(window.get(), "mnuSetup_LangSet_1")->trigger();
    QCOMPARE(window->windowTitle(), QString("untouched"));
    QCOMPARE(child<QMenu>(window.get(), "menufile")->title(), QString("untouched"));
    QVERIFY(action(window.get(), "mnuSetup_LangSet_1")->isChecked());
    QVERIFY(!action(window.get(), "mnuSetup_LangSet_0")->isChecked());
    QCOMPARE(gbytLang, 1);
}

void TestShell::scrollRule_data() {
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<bool>("horizontal");
    QTest::newRow("large enough") << 12000.0 << 9000.0 << false << false;
    QTest::newRow("one twip too low") << 12000.0 << 8999.0 << true << false;
    QTest::newRow("one twip too narrow") << 11999.0 << 9000.0 << false << true;
    QTest::newRow("both too small") << 11999.0 << 8999.0 << true << true;
    QTest::newRow("much larger") << 30000.0 << 20000.0 << false << false;
}

void TestShell::scrollRule() {
    QFETCH(double, width);
    QFETCH(double, height);
    QFETCH(bool, vertical);
    QFETCH(bool, horizontal);
    const auto needs = ui::scrollBarsFor(width, height);
    QCOMPARE(needs.vertical, vertical);
    QCOMPARE(needs.horizontal, horizontal);
    QCOMPARE(needs.corner(), vertical && horizontal);
}

// 9000 twips are 600 pixels; 599 pixels (8985 twips) is the largest height
// below the limit.
void TestShell::scrollBarsFollowWindowSize_data() {
    QTest::addColumn<int>("insideWidth");
    QTest::addColumn<int>("insideHeight");
    QTest::addColumn<bool>("vertical");
    QTest::addColumn<bool>("horizontal");
    QTest::newRow("9000 twips high, 12000 wide") << 800 << 600 << false << false;
    QTest::newRow("below 9000 twips high") << 800 << 599 << true << false;
    QTest::newRow("below 12000 twips wide") << 799 << 600 << false << true;
    QTest::newRow("small") << 500 << 400 << true << true;
}

void TestShell::scrollBarsFollowWindowSize() {
    QFETCH(int, insideWidth);
    QFETCH(int, insideHeight);
    QFETCH(bool, vertical);
    QFETCH(bool, horizontal);
    auto window = startWindow();
    auto* frame1 = child<QWidget>(window.get(), "Frame1");
    const QPoint home = frame1->pos();

    window->resize(insideWidth, insideHeight + window->menuBar()->height());
    QTRY_COMPARE(window->insideSizeTwips(), QSizeF(insideWidth * 15.0, insideHeight * 15.0));
    QCOMPARE(child<QScrollBar>(window.get(), "VScroll1")->isVisible(), vertical);
    QCOMPARE(child<QScrollBar>(window.get(), "HScroll1")->isVisible(), horizontal);
    QCOMPARE(child<QWidget>(window.get(), "Picture2")->isVisible(), vertical && horizontal);

    if (vertical && insideHeight < 500) {
        // Too small for the panels: the bar moves the frame up.
        auto* bar = child<QScrollBar>(window.get(), "VScroll1");
        QVERIFY(bar->maximum() > 0);
        bar->setValue(bar->maximum());
        QVERIFY(frame1->y() < home.y());
    }
    // Large again: bars gone, the frame back home.
    window->resize(900, 700 + window->menuBar()->height());
    QTRY_VERIFY(!child<QScrollBar>(window.get(), "VScroll1")->isVisible());
    QVERIFY(!child<QScrollBar>(window.get(), "HScroll1")->isVisible());
    QCOMPARE(frame1->pos(), home);
}

QTEST_MAIN(TestShell)
#include "tst_shell.moc"
