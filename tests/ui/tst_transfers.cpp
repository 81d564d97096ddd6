// Read and Write from the main window against emulated radios served on
// pseudo-terminals: the progress window, every message box of the outcome,
// the refresh and the version-1.0 warning.
#include "channel.h"
#include "main_form.h"
#include "modal_answerer.h"
#include "ports.h"
#include "simulated_radio.h"
#include "string_table.h"
#include "ui_test_support.h"

#include <QCheckBox>
#include <QComboBox>
#include <QElapsedTimer>

#include <memory>

using namespace zr310;
using namespace std::chrono_literals;

namespace {

QString text(int id) {
    QString s = QString::fromUtf8(ResString(id));
    s.replace("\r\r\n", "\n");
    return s;
}

// Channel 5 receives on 438.0125 MHz with DCS 023, channel 6 is blank.
RadioImage radioContents() {
    RadioImage image = makeStartImage();
    image[0x15A] = 0x20; // 430 - 450MHz
    auto channel = ChannelRecord::channel(image, 5);
    channel.setOpen(true);
    channel.setTxAllowed(true);
    channel.setFrequency(Side::Receive, 438.0125);
    channel.setFrequency(Side::Transmit, 438.0125);
    channel.setTone(Side::Receive, Tone{ToneKind::Dcs, 0x13});
    channel.setLowPower(true);
    return image;
}

std::unique_ptr<SimulatedRadio> startRadio(EmulatedRadioOptions options = {}) {
    auto radio = std::make_unique<SimulatedRadio>(radioContents().toRadioOrder(), options);
    std::string error;
    if (!radio->start(error)) {
        qWarning("emulated radio: %s", error.c_str());
        return nullptr;
    }
    return radio;
}

QString portOf(const SimulatedRadio& radio) {
    return QString::fromStdString(radio.devicePath());
}

} // namespace

class TestTransfers : public QObject {
    Q_OBJECT
private slots:
    void readRefreshesTheWindow_data();
    void readRefreshesTheWindow();
    void failedTransfer_data();
    void failedTransfer();
    void testModeAndBack();
    void version10Radio();
    void version10WarningCancelled();
};

void TestTransfers::readRefreshesTheWindow_data() {
    QTest::addColumn<QString>("locale");
    QTest::newRow("English") << "en_US";
    QTest::newRow("Chinese") << "zh_CN";
}

void TestTransfers::readRefreshesTheWindow() {
    QFETCH(QString, locale);
    auto radio = startRadio();
    QVERIFY(radio);
    auto window = startWindow(locale, portOf(*radio));

    // The window keeps handling events while the radio is read.
    int ticks = 0;
    QTimer ticker;
    connect(&ticker, &QTimer::timeout, [&ticks] { ++ticks; });
    ticker.start(20ms);

    ModalAnswerer answers;
    answers.answerBox(QMessageBox::Ok);
    QElapsedTimer clock;
    clock.start();
    action(window.get(), "Toolbar1_6")->trigger();
    const auto elapsed = clock.elapsed();

    QCOMPARE(answers.seenNames(), (QStringList{"frmConnect", "msgBox"}));
    QCOMPARE(answers.seen()[0].title, text(1520));
    QCOMPARE(answers.seen()[1].title, text(1528));
    QCOMPARE(answers.seen()[1].text, text(1530));
    QVERIFY2(ticks > elapsed / 20 / 2,
             qPrintable(QString("%1 ticks in %2 ms").arg(ticks).arg(elapsed)));

    QCOMPARE(window->windowTitle(), text(1406) + " - " + text(1528));
    QCOMPARE(cell(window.get(), 5, 1), QString("438.01250"));
    QCOMPARE(cell(window.get(), 5, 2), QString("DCS 023"));
    QCOMPARE(cell(window.get(), 5, 7), text(1213));
    QVERIFY(child<QCheckBox>(window.get(), "chkClose_5")->isChecked());
    QCOMPARE(child<QComboBox>(window.get(), "CboBand")->currentText(), QString("430 - 450MHz"));
    QVERIFY(!window->isModified());
    // The last block is fetched but not kept, as the radio's software does.
    const RadioImage expected = radioContents();
    for (int address = 0; address < 0x3F8; ++address) {
        QCOMPARE(window->image().atAddress(address), expected.atAddress(address));
    }
}

void TestTransfers::failedTransfer_data() {
    QTest::addColumn<QString>("menu");
    QTest::addColumn<QString>("fault");
    QTest::addColumn<int>("titleId");
    QTest::addColumn<int>("textId"); // 0: the no-response text after the port name
    QTest::newRow("silent radio, read") << "menuProgRead"
                                        << "silent" << 1533 << 0;
    QTest::newRow("silent radio, write") << "menuProgWrite"
                                         << "silent" << 1533 << 0;
    QTest::newRow("short identification") << "menuProgRead"
                                          << "short-ident" << 1104 << 1534;
    QTest::newRow("read stops at block 5") << "menuProgRead"
                                           << "drop:5" << 1104 << 1534;
    QTest::newRow("bad block reply") << "menuProgRead"
                                     << "bad-lead:3" << 1104 << 1534;
    QTest::newRow("write stops at block 5") << "menuProgWrite"
                                            << "drop:5" << 1104 << 1535;
}

void TestTransfers::failedTransfer() {
    QFETCH(QString, menu);
    QFETCH(QString, fault);
    QFETCH(int, titleId);
    QFETCH(int, textId);
    EmulatedRadioOptions options;
    options.fault = RadioFault::parse(fault.toStdString()).value_or(RadioFault{});
    auto radio = startRadio(options);
    QVERIFY(radio);
    const QString port = fault == "no-port" ? QString("/nonexistent/ttyZR") : portOf(*radio);
    auto window = startWindow("en_US", port);
    const QString title = window->windowTitle();
    const QString shown = cell(window.get(), 5, 1);

    ModalAnswerer answers;
    answers.answerBox(QMessageBox::Ok);
    action(window.get(), menu)->trigger();

    // One box, and no completion box after it.
    QCOMPARE(answers.seenNames(), (QStringList{"frmConnect", "msgBox"}));
    QCOMPARE(answers.seen()[1].title, text(titleId));
    QCOMPARE(answers.seen()[1].text, textId == 0 ? port + text(1537) : text(textId));
    QCOMPARE(answers.seen()[1].icon, QMessageBox::Warning);
    // The window is not refreshed, even where blocks already arrived.
    QCOMPARE(window->windowTitle(), title);
    QCOMPARE(cell(window.get(), 5, 1), shown);
}

void TestTransfers::testModeAndBack() {
    auto radio = startRadio();
    QVERIFY(radio);
    auto window = startWindow("en_US", portOf(*radio));
    auto* channels = child<QWidget>(window.get(), "FraCHSet");
    auto* testChannels = child<QWidget>(window.get(), "FraTestCH");
    {
        ModalAnswerer answers;
        action(window.get(), "MenuProgTest")->trigger();
        QCOMPARE(answers.seenNames(), QStringList{"frmConnect"});
        QCOMPARE(answers.seen()[0].title, text(1522));
    }
    QVERIFY(!window->normalMode());
    QVERIFY(testChannels->isVisible());
    QVERIFY(!channels->isVisible());
    QVERIFY(action(window.get(), "MenuProgTest")->isChecked());
    QVERIFY(!action(window.get(), "MenuCHfrm")->isChecked());

    auto radioMode = [&radio] {
        EmulatedRadio::Mode mode{};
        radio->withRadio([&mode](EmulatedRadio& r) { mode = r.mode(); });
        return mode;
    };
    QCOMPARE(radioMode(), EmulatedRadio::Mode::Tuning);

    window->setWindowTitle("tuning");
    action(window.get(), "MenuCHfrm")->trigger();
    QTRY_VERIFY_WITH_TIMEOUT(radioMode() != EmulatedRadio::Mode::Tuning, 30000);
    QVERIFY(window->normalMode());
    QVERIFY(channels->isVisible());
    QVERIFY(!testChannels->isVisible());
    QVERIFY(!action(window.get(), "MenuProgTest")->isChecked());
    QVERIFY(action(window.get(), "MenuCHfrm")->isChecked());
    QCOMPARE(window->windowTitle(), text(1406));
}

void TestTransfers::version10Radio() {
    EmulatedRadioOptions options;
    options.version10 = true;
    auto radio = startRadio(options);
    QVERIFY(radio);
    auto window = startWindow("en_US", portOf(*radio));

    {
        ModalAnswerer answers;
        answers.answerBox(QMessageBox::Ok);
        answers.answerBox(QMessageBox::Ok);
        action(window.get(), "menuProgRead")->trigger();
        QCOMPARE(answers.seenNames(), (QStringList{"frmConnect", "msgBox", "msgBox"}));
        QCOMPARE(answers.seen()[1].text, text(1538));
        QCOMPARE(answers.seen()[1].title, text(1520));
        QCOMPARE(answers.seen()[2].text, text(1530));
    }
    QVERIFY(window->linkFlags().radioIsVersion10);
    QCOMPARE(cell(window.get(), 5, 7), text(1214)); // no low power on such a radio

    // The first write asks; OK with "don't show" ticked goes on.
    auto writeAnswersOwner = std::make_unique<ModalAnswerer>();
    ModalAnswerer& writeAnswers = *writeAnswersOwner;
    writeAnswers.answer([](QWidget* warning) {
        warning->findChild<QCheckBox*>("ChkNext")->setChecked(true);
        warning->findChild<QAbstractButton*>("CmdOK")->click();
    });
    writeAnswers.answerBox(QMessageBox::Ok);
    action(window.get(), "menuProgWrite")->trigger();
    QCOMPARE(writeAnswers.seenNames(), (QStringList{"frmConnect", "frmWarning", "msgBox"}));
    QCOMPARE(writeAnswers.seen()[1].title, text(1121));
    QCOMPARE(writeAnswers.seen()[2].text, text(1531));
    QCOMPARE(writeAnswers.seen()[2].title, text(1529));
    QVERIFY(!window->linkFlags().skipVersion10Check);
    QVERIFY(window->linkFlags().version10DontShow);
    int written = 0;
    radio->withRadio([&written](EmulatedRadio& r) { written = r.blocksWritten(); });
    QCOMPARE(written, 38);

    // The second write in the same run goes on without asking.
    writeAnswersOwner.reset();
    ModalAnswerer again;
    again.answerBox(QMessageBox::Ok);
    action(window.get(), "menuProgWrite")->trigger();
    QCOMPARE(again.seenNames(), (QStringList{"frmConnect", "msgBox"}));
}

void TestTransfers::version10WarningCancelled() {
    EmulatedRadioOptions options;
    options.version10 = true;
    auto radio = startRadio(options);
    QVERIFY(radio);
    auto window = startWindow("zh_CN", portOf(*radio));
    window->linkFlags().radioIsVersion10 = true;

    ModalAnswerer answers;
    answers.answer([](QWidget* warning) {
        warning->findChild<QCheckBox*>("ChkNext")->setChecked(true);
        warning->findChild<QAbstractButton*>("CmdCancel")->click();
    });
    action(window.get(), "menuProgWrite")->trigger();
    // Declined: no completion box, no interruption box, nothing written.
    QCOMPARE(answers.seenNames(), (QStringList{"frmConnect", "frmWarning"}));
    QCOMPARE(answers.seen()[1].title, text(1121));
    const LinkFlags& flags = window->linkFlags();
    QVERIFY(!flags.version10Continue && !flags.version10DontShow && !flags.skipVersion10Check);
    int written = -1;
    radio->withRadio([&written](EmulatedRadio& r) { written = r.blocksWritten(); });
    QCOMPARE(written, 0);
}

QTEST_MAIN(TestTransfers)
#include "tst_transfers.moc"
