// Read, Write and Test Mode from the main window against emulated radios
// served on pseudo-terminals: the progress window, the message boxes of the
// outcome, the refresh and the version-1.0 warning.
#include "channel.h"
#include "simulated_radio.h"
#include "ui_test_support.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QProgressBar>

#include <memory>

using namespace zr310;

namespace {

// Channel 2 (read as the 3rd and 4th blocks) receives on 438.0125 MHz with
// DCS 023 at low power.
RadioImage radioContents() {
    RadioImage image = makeStartImage();
    auto channel = ChannelRecord::channel(image, 2);
    channel.setOpen(true);
    channel.setTxAllowed(true);
    channel.setFrequency(Side::Receive, 438.0125);
    channel.setTone(Side::Receive, Tone{ToneKind::Dcs, 0x13});
    channel.setLowPower(true);
    return image;
}

std::unique_ptr<SimulatedRadio> startRadio(bool version10, const QString& fault = {}) {
    EmulatedRadioOptions options;
    options.version10 = version10;
    options.fault = RadioFault::parse(fault.toStdString()).value_or(RadioFault{});
    auto radio = std::make_unique<SimulatedRadio>(radioContents().toRadioOrder(), options);
    std::string error;
    if (!radio->start(error)) {
        qWarning("emulated radio: %s", error.c_str());
        return nullptr;
    }
    return radio;
}

std::unique_ptr<ui::MainForm> windowFor(SimulatedRadio& radio, const QString& locale = "en_US") {
    return startWindow(locale, QString::fromStdString(radio.devicePath()));
}

template <typename T> T query(SimulatedRadio& radio, T (EmulatedRadio::*get)() const) {
    T value{};
    radio.withRadio([&](EmulatedRadio& r) { value = (r.*get)(); });
    return value;
}

} // namespace

class TestTransfers : public QObject {
    Q_OBJECT
private slots:
    void read_data() {
        QTest::addColumn<bool>("version10");
        QTest::addColumn<QStringList>("boxes");
        QTest::addColumn<int>("power"); // channel 2
        const QString done = seen("msgBox", 1528, text(1530));
        QTest::newRow("current radio") << false << QStringList{done} << 1213;
        QTest::newRow("version-1.0 radio")
            << true << QStringList{seen("msgBox", 1520, text(1538)), done} << 1214;
    }

    void read() {
        QFETCH(bool, version10);
        QFETCH(QStringList, boxes);
        QFETCH(int, power);
        auto radio = startRadio(version10);
        QVERIFY(radio);
        auto window = windowFor(*radio);
        // The window keeps handling events during the read: a timer sees the
        // progress bar part-way.
        bool partWay = false;
        QTimer ticker;
        QObject::connect(&ticker, &QTimer::timeout, [&] {
            auto* bar = window->findChild<QProgressBar*>("PrgValue");
            partWay =
                partWay || (bar != nullptr && bar->value() > 0 && bar->value() < bar->maximum());
        });
        ticker.start(1);

        ModalAnswerer answers;
        trigger(window.get(), "Toolbar1_6");
        QCOMPARE(answers.log(), QStringList{seen("frmConnect", 1520)} + boxes);
        QVERIFY(partWay);
        QCOMPARE(window->windowTitle(), text(1406) + " - " + text(1528));
        QCOMPARE(cell(window.get(), 2, 1)->text(), QString("438.01250"));
        QCOMPARE(cell(window.get(), 2, 2)->text(), QString("DCS 023"));
        QCOMPARE(cell(window.get(), 2, 7)->text(), text(power));
        QVERIFY(!window->isModified());
    }

    void failedTransfer_data() {
        QTest::addColumn<bool>("write");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("titleId");
        QTest::addColumn<int>("textId"); // 0: the no-response text after the port name
        QTest::newRow("silent radio") << false << "silent" << 1533 << 0;
        QTest::newRow("read stops at block 5") << false << "drop:5" << 1104 << 1534;
        QTest::newRow("write stops at block 5") << true << "drop:5" << 1104 << 1535;
    }

    void failedTransfer() {
        QFETCH(bool, write);
        QFETCH(QString, fault);
        QFETCH(int, titleId);
        QFETCH(int, textId);
        auto radio = startRadio(false, fault);
        QVERIFY(radio);
        auto window = windowFor(*radio);
        const QString title = window->windowTitle();
        const QString shown = cell(window.get(), 2, 1)->text();

        ModalAnswerer answers;
        trigger(window.get(), write ? "menuProgWrite" : "menuProgRead");
        // One box, and no completion box after it.
        const QString body = textId == 0 ? window->selectedPort() + text(1537) : text(textId);
        QCOMPARE(answers.log(), (QStringList{seen("frmConnect", write ? 1521 : 1520),
                                             seen("msgBox", titleId, body)}));
        // Not refreshed, even where blocks already arrived.
        QCOMPARE(window->windowTitle(), title);
        QCOMPARE(cell(window.get(), 2, 1)->text(), shown);
    }

    void testModeAndBack() {
        auto radio = startRadio(false);
        QVERIFY(radio);
        auto window = windowFor(*radio);
        auto* channels = child(window.get(), "FraCHSet");
        auto* testChannels = child(window.get(), "FraTestCH");
        ModalAnswerer answers;
        trigger(window.get(), "MenuProgTest");
        QCOMPARE(answers.log(), QStringList{seen("frmConnect", 1522)});
        QVERIFY(testChannels->isVisible() && !channels->isVisible());
        QCOMPARE(query(*radio, &EmulatedRadio::mode), EmulatedRadio::Mode::Tuning);

        window->setWindowTitle("tuning");
        trigger(window.get(), "MenuCHfrm");
        QTRY_VERIFY_WITH_TIMEOUT(query(*radio, &EmulatedRadio::mode) != EmulatedRadio::Mode::Tuning,
                                 30000);
        QVERIFY(channels->isVisible() && !testChannels->isVisible());
        QVERIFY(child<QAction>(window.get(), "MenuCHfrm")->isChecked());
        QVERIFY(!child<QAction>(window.get(), "MenuProgTest")->isChecked());
        QCOMPARE(window->windowTitle(), text(1406));
    }

    // Every warning is answered with the button, "don't show again" as ticked.
    void version10Write_data() {
        QTest::addColumn<int>("language");
        QTest::addColumn<QString>("button");
        QTest::addColumn<bool>("dontShow");
        QTest::addColumn<QStringList>("windows"); // of two writes
        QTest::addColumn<int>("blocks");
        const QString c = seen("frmConnect", 1521), w = seen("frmWarning", 1121);
        const QString d = seen("msgBox", 1529, text(1531));
        QTest::newRow("OK, don't show again")
            << 0 << "CmdOK" << true << QStringList{c, w, d, c, d} << 76;
        QTest::newRow("OK") << 0 << "CmdOK" << false << QStringList{c, w, d, c, w, d} << 76;
        const QString zc = seen("frmConnect", 1521, {}, Language::Chinese);
        const QString zw = seen("frmWarning", 1121, {}, Language::Chinese);
        QTest::newRow("Chinese, Cancel, don't show again")
            << 1 << "CmdCancel" << true << QStringList{zc, zw, zc, zw} << 0;
    }

    void version10Write() {
        QFETCH(int, language);
        QFETCH(QString, button);
        QFETCH(bool, dontShow);
        QFETCH(QStringList, windows);
        QFETCH(int, blocks);
        auto radio = startRadio(true);
        QVERIFY(radio);
        auto window = windowFor(*radio, language == 1 ? "zh_CN" : "en_US");
        ModalAnswerer answers;
        answers.otherwise = [&](QWidget* modal) {
            if (modal->objectName() == "frmWarning") {
                modal->findChild<QCheckBox*>("ChkNext")->setChecked(dontShow);
            }
            ModalAnswerer::click(modal, modal->findChild<QAbstractButton*>(button));
        };
        trigger(window.get(), "menuProgWrite");
        trigger(window.get(), "menuProgWrite");
        QCOMPARE(answers.log(), windows);
        QCOMPARE(query(*radio, &EmulatedRadio::blocksWritten), blocks);
    }
};

QTEST_MAIN(TestTransfers)
#include "tst_transfers.moc"
