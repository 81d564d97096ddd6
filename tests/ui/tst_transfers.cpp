// Read and Write from the main window against emulated radios
// served on pseudo-terminals: the progress window, the message boxes of the
// outcome, the refresh, the backup of every read and the version-1.0 warning.
#include "backup.h"
#include "channel.h"
#include "k720_file.h"
#include "serial_transfer.h"
#include "sizes.h"
#include "ui_test_support.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QProgressBar>
#include <QSerialPort>
#include <QTemporaryDir>

using namespace zr310;

namespace {

// Channel 2 (read as the 3rd and 4th blocks) receives on 438.0125 MHz with
// DCS 023 at low power on a narrow band; power selection is Long-hit [Moni].
RadioImage radioContents() {
    RadioImage image = makeStartImage();
    auto channel = ChannelRecord::channel(image, 2);
    channel.setOpen(true);
    channel.setTxAllowed(true);
    channel.setFrequency(Side::Receive, 438.0125);
    channel.setTone(Side::Receive, Tone{ToneKind::Dcs, 0x13});
    channel.setLowPower(true);
    channel.setNarrow(true);
    image[0x256] = 0x02;
    return image;
}

// The radio above, as a version-1.0 one, with a fault, or strict, and a
// window on it.
RadioBench startBench(bool version10, const QString& fault = {}, bool strict = false) {
    EmulatedRadioOptions options;
    options.version10 = version10;
    options.fault = RadioFault::parse(fault.toStdString()).value_or(RadioFault{});
    options.strict = strict;
    return RadioBench(radioContents(), options);
}

// The names in the backups folder that are not in `before`.
QStringList newBackups(const QStringList& before) {
    QStringList names = QDir(QString::fromStdU16String(backupFolder().u16string()))
                            .entryList(QDir::Files, QDir::Name);
    for (const QString& name : before) {
        names.removeOne(name);
    }
    return names;
}

QStringList backups() {
    return newBackups({});
}

} // namespace

class TestTransfers : public QObject {
    Q_OBJECT
    QTemporaryDir m_dataHome; // XDG_DATA_HOME: every read leaves a backup there

private slots:
    void initTestCase() {
        QVERIFY(m_dataHome.isValid());
        qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8()); // never the real home
    }

    // A read of a current and of a version-1.0 radio: `boxes` after the
    // progress window; `power`, `bandwidth` the words channel 2 shows, and
    // `moniItems` the monitor list's length. Such a radio has no low power, no
    // narrow band and no power selection: the refresh takes them out.
    void read() {
        const auto row = [](bool version10, const QStringList& boxes, int power, int bandwidth,
                            int moniItems) {
            const RadioBench bench = startBench(version10);
            QVERIFY(bench.window);
            const auto& window = bench.window;
            // The window keeps handling events during the read: a timer sees
            // the progress bar part-way.
            bool partWay = false;
            QTimer ticker;
            QObject::connect(&ticker, &QTimer::timeout, [&] {
                auto* bar = window->findChild<QProgressBar*>("PrgValue");
                partWay = partWay ||
                          (bar != nullptr && bar->value() > 0 && bar->value() < bar->maximum());
            });
            ticker.start(1);

            const QStringList before = backups();
            ModalAnswerer answers;
            trigger(window.get(), "Toolbar1_6");
            QCOMPARE(answers.log(), QStringList{seen("frmConnect", txt::Read)} + boxes);
            QVERIFY(partWay);
            QCOMPARE(window->windowTitle(),
                     text(txt::ProgramTitle) + " - " + text(txt::ReadFinished));
            QCOMPARE(cell(window.get(), 2, 1)->text(), QString("438.01250"));
            QCOMPARE(cell(window.get(), 2, 2)->text(), QString("DCS 023"));
            QCOMPARE(cell(window.get(), 2, 7)->text(), text(power));
            QCOMPARE(cell(window.get(), 2, 8)->text(), text(bandwidth));
            QCOMPARE(child<QComboBox>(window.get(), "CboMoni")->count(), moniItems);
            QVERIFY(!window->isModified());

            // The backup holds the image as read, before the refresh took low
            // power out for a version-1.0 radio: the radio's bytes, and the last
            // block (fetched but not kept) from the image before the read.
            const QStringList added = newBackups(before);
            QCOMPARE(added.size(), 1);
            RadioImage backedUp;
            QVERIFY(openDataFile(backupFolder() / added.front().toStdString(), backedUp).ok());
            const auto radioBytes = radioContents().toRadioOrder();
            const RadioImage start = makeStartImage();
            for (int a = 0; a < 1024; ++a) {
                QCOMPARE(backedUp.atAddress(a),
                         a < 0x3F8 ? radioBytes[toIndex(a)] : start.atAddress(a));
            }
            QCOMPARE(backedUp == window->image(), !version10);
        };
        const QString done = seen("msgBox", txt::ReadFinished, text(txt::ReadCompleted));
        row(false, {done}, 1213, 1215, 2);
        row(true, {seen("msgBox", txt::Read, text(txt::ReadVersion10)), done}, 1214, 1216, 4);
    }

    // A read that fails: one box, and no completion box after it. `textId` 0:
    // the no-response text after the port name.
    void failedRead() {
        const auto row = [](const QString& fault, int titleId, int textId) {
            const RadioBench bench = startBench(false, fault);
            QVERIFY(bench.window);
            const auto& window = bench.window;
            const QString title = window->windowTitle();
            const QString shown = cell(window.get(), 2, 1)->text();
            const RadioImage image = window->image();
            const QStringList before = backups();

            ModalAnswerer answers;
            trigger(window.get(), "menuProgRead");
            // An interrupted read also says that the data before it is back.
            const QString body = textId == 0 ? window->selectedPort() + text(txt::PortHasNoResponse)
                                             : text(textId) + "\n" + text(txt::ReadPutBack);
            QCOMPARE(answers.log(),
                     (QStringList{seen("frmConnect", txt::Read), seen("msgBox", titleId, body)}));
            // Not refreshed, even where blocks already arrived: the blocks that
            // arrived (channel 2 among them) were not kept, the image is the
            // one before the read, as the grid shows it, and nothing was
            // backed up.
            QCOMPARE(window->windowTitle(), title);
            QCOMPARE(cell(window.get(), 2, 1)->text(), shown);
            QVERIFY(window->image() == image);
            QVERIFY(!window->isModified());
            QCOMPARE(newBackups(before), QStringList());
        };
        row("silent", txt::CommunicationError, 0);
        row("drop:5", txt::Error, txt::ReadInterrupted);
    }

    // A port that cannot be opened says why, in place of "no response". The
    // port "held" is the radio's, kept open by the test as another program
    // would: in use, and no word of permissions.
    void unreachablePort() {
        const auto row = [](QString port) {
            const RadioBench bench = startBench(false);
            QVERIFY(bench.window);
            QTemporaryDir folder;
            QSerialPort holder(QString::fromStdString(bench.radio->devicePath()));
            QString body = text(txt::NoSuchPort).arg(port);
            if (port == "held") {
                QVERIFY(holder.open(QIODevice::ReadWrite));
                port = holder.portName();
                body = text(txt::PortInUse).arg(port);
            } else if (port == "folder") {
                port = folder.path();
                body = text(txt::NotSerialPort).arg(port);
            }
            auto window = startWindow("en_US", port);
            ModalAnswerer answers;
            trigger(window.get(), "menuProgRead");
            QCOMPARE(answers.log(), (QStringList{seen("frmConnect", txt::Read),
                                                 seen("msgBox", txt::CommunicationError, body)}));
        };
        row("/dev/zr310-NOPE0");
        row("held");
        row("folder");
    }

    // Two writes to a version-1.0 radio, every warning answered with the
    // button after a while, "don't show again" as ticked: the windows of
    // both, and the blocks the radio took. The radio is strict, or gives up
    // a session after 300 ms of silence. The link suite has the other answers.
    void version10Write() {
        const auto row = [](const QString& radio, int answerAfterMs, const QString& button,
                            bool dontShow, const QStringList& windows, int blocks) {
            const RadioBench bench = startBench(true, radio, radio == "strict");
            QVERIFY(bench.window);
            const auto& window = bench.window;
            ModalAnswerer answers;
            answers.otherwise = [&](QWidget* modal) {
                if (modal->objectName() == "frmWarning") {
                    modal->findChild<QCheckBox*>("ChkNext")->setChecked(dontShow);
                }
                QTimer::singleShot(answerAfterMs, modal, [modal, button] {
                    ModalAnswerer::click(modal, modal->findChild<QAbstractButton*>(button));
                });
            };
            trigger(window.get(), "menuProgWrite");
            trigger(window.get(), "menuProgWrite");
            QCOMPARE(answers.log(), windows);
            QCOMPARE(bench.ask(&EmulatedRadio::blocksWritten), blocks);
        };
        const QString c = seen("frmConnect", txt::Write), w = seen("frmWarning", txt::Warning);
        const QString d = seen("msgBox", txt::WriteFinished, text(txt::WriteCompleted));
        row("strict", 0, "CmdOK", true, {c, w, d, c, d}, 76);
        row("strict", 1000, "CmdOK", false, {c, w, d, c, w, d}, 76);
        row("drop-after:300", 1000, "CmdOK", false, {c, w, d, c, w, d}, 76);
        // Declined, the write sends nothing more, END neither: a strict radio
        // would wait in its session, this one hears the next wake-up.
        row("", 0, "CmdCancel", true, {c, w, c, w}, 0);
    }

    // Esc or Cancel on the transfer window in the middle of a read or a write:
    // the box says what became of the radio, the window's data is as before,
    // and the strict radio, its session ended, answers the next read.
    void cancelTransfer() {
        const auto row = [](const QString& action, bool escape, int titleId, int messageId) {
            const RadioBench bench = startBench(false, {}, true);
            QVERIFY(bench.window);
            const auto& window = bench.window;
            const RadioImage before = window->image();
            ModalAnswerer answers;
            QTimer cancel;
            QObject::connect(&cancel, &QTimer::timeout, [&] {
                auto* progress =
                    QApplication::activeModalWidget()
                        ? QApplication::activeModalWidget()->findChild<QProgressBar*>("PrgValue")
                        : nullptr;
                if (progress == nullptr || progress->value() < 10)
                    return;
                cancel.stop();
                QWidget* connect = progress->window();
                if (escape)
                    QTest::keyClick(connect, Qt::Key_Escape);
                else
                    child<QAbstractButton>(connect, "CmdCancel")->click();
            });
            cancel.start(5);
            trigger(window.get(), action);
            QCOMPARE(answers.log(), (QStringList{seen("frmConnect", titleId),
                                                 seen("msgBox", titleId, text(messageId))}));
            QVERIFY(window->image() == before);
            QVERIFY(bench.ask(&EmulatedRadio::mode) == EmulatedRadio::Mode::Idle);
            trigger(window.get(), "menuProgRead");
            QCOMPARE(answers.log().size(), 4);
            QCOMPARE(answers.log().last(),
                     seen("msgBox", txt::ReadFinished, text(txt::ReadCompleted)));
        };
        row("menuProgRead", true, txt::Read, txt::ReadCancelled);
        row("menuProgWrite", false, txt::Write, txt::WriteCancelled);
    }

    // With Verify After Write ticked the radio is read back after the write
    // and a difference is reported (a write that reads back right: the
    // command-line write table).
    void verifyAfterWrite() {
        const RadioBench bench = startBench(false, "corrupt:7");
        QVERIFY(bench.window);
        const auto& window = bench.window;
        child<QAction>(window.get(), "menuProgVerify")->setChecked(true);
        ModalAnswerer answers;
        trigger(window.get(), "menuProgWrite");
        const WriteCheck block7{1, 0x30};
        QCOMPARE(
            answers.log(),
            (QStringList{seen("frmConnect", txt::Write), seen("frmConnect", txt::Read),
                         seen("msgBox", txt::Error, verifyFailedText(block7, Language::English))}));
    }

    // Setup > Serial Trace: the transfers write into the chosen file until unticked.
    void serialTrace() {
        const RadioBench bench = startBench(false);
        QVERIFY(bench.window);
        const auto& window = bench.window;
        QTemporaryDir dir;
        const QString file = dir.filePath("trace.txt");
        ModalAnswerer answers;
        answers.answerFileDialog(file);
        trigger(window.get(), "menuSetupTrace");
        trigger(window.get(), "Toolbar1_6");
        trigger(window.get(), "menuSetupTrace"); // unticked: the next read is not traced
        trigger(window.get(), "Toolbar1_6");
        QFile trace(file);
        QVERIFY(trace.open(QIODevice::ReadOnly));
        const QList<QByteArray> lines = trace.readAll().split('\n');
        const auto wakeUp = [](const QByteArray& line) {
            return line.endsWith(" > 02 50 52 4F 47 52 41 4D");
        };
        QVERIFY(lines[0].startsWith("# ")); // the heading
        QVERIFY(wakeUp(lines[1]));
        QCOMPARE(std::count_if(lines.begin(), lines.end(), wakeUp), 1); // the first read only
        QVERIFY(lines[lines.size() - 2].endsWith(" > 45 4E 44"));
    }
};

QTEST_MAIN(TestTransfers)
#include "tst_transfers.moc"
