// The port dialog, the about box and the help window, opened from the
// main window's menus.
#include "frmPort/frm_port.h"
#include "ui_test_support.h"

#include <QDir>
#include <QLabel>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTextBrowser>

using namespace zr310;

class TestDialogs : public QObject {
    Q_OBJECT
private slots:
    // The port in use is checked when the dialog opens (`checked`: COM port
    // index); the simulated radio is chosen, then OK or Cancel clicked.
    void portDialog() {
        const auto row = [](const char* start, int checked, bool ok, const QString& expected) {
            auto window = startWindow("en_US", start);
            ModalAnswerer answers;
            bool checkedAtStart = false;
            answers.answer([&](QWidget* dialog) {
                checkedAtStart =
                    child<QRadioButton>(dialog, QString("OptPort_%1").arg(checked))->isChecked();
                dialog->findChild<QRadioButton*>("OptPortSim")->setChecked(true);
                ModalAnswerer::click(dialog,
                                     child<QAbstractButton>(dialog, ok ? "CmdOK" : "CmdCancel"));
            });
            trigger(window.get(), "menuSetup_Port");
            QCOMPARE(answers.log(), QStringList{seen("frmPort", txt::CommunicationPort)});
            QVERIFY(checkedAtStart);
            QCOMPARE(window->selectedPort(), expected);
        };
        row("COM2", 1, true, "sim");
        row("COM3", 2, false, "COM3");
        row("", 0, false, "COM1"); // the program starts on COM1
    }

    // The port in use is checked, whatever its name; OK with it untouched
    // keeps that name, and a port the system reports is listed once.
    // `systemPorts` as the system names them ("NAME=DESCRIPTION" where the
    // system describes it); "LINK" is a link to /dev/null; `added` the
    // captions after COM1..COM4.
    void portChoices() {
        const auto row = [](const QStringList& systemPorts, QString current, const char* checked,
                            const QStringList& added) {
            QTemporaryDir dir;
            if (current == "LINK") {
                current = dir.filePath("port");
                QVERIFY(QFile::link("/dev/null", current));
            }
            ui::PortChoices choices;
            for (const QString& port : systemPorts) {
                const QString name = port.section('=', 0, 0);
                choices.systemPorts.append(
                    {name, portFilePath(name), port.section('=', 1), {}, {}, {}});
            }
            ui::FrmPort dialog(current, choices);
            auto* start = child<QRadioButton>(&dialog, checked);
            QVERIFY(start && start->isChecked());
            QStringList captions;
            for (auto* option : dialog.findChildren<QRadioButton*>()) {
                if (!option->objectName().startsWith("OptPort_")) {
                    captions << option->text();
                }
            }
            QCOMPARE(captions, added);
            QCOMPARE(dialog.selectedPort(), current);
        };
        const QString sim = ui::FrmPort::simulatedRadioCaption();
#ifdef Q_OS_LINUX
        row({}, "/dev/ttyS2", "OptPort_2", {sim});                         // COM3's device
        row({"ttyS0", "ttyUSB0"}, "ttyS0", "OptPort_0", {"ttyUSB0", sim}); // COM1, once
        row({"ttyUSB0=FT232R USB UART"}, "/dev/ttyUSB0", "OptPortSystem_0",
            {"ttyUSB0  (FT232R USB UART)", sim}); // by its path
        row({"null"}, "LINK", "OptPortSystem_0", {"null", sim});
#endif
        row({"ttyUSB0"}, "/dev/pts/77", "OptPortCurrent", {"ttyUSB0", "/dev/pts/77", sim});
        row({"ttyUSB0"}, "sim", "OptPortSim", {"ttyUSB0", sim});
    }

    // Find Radio asks every listed port but the simulated radio, all at once,
    // and checks the first where a radio answered. `radios` are served as
    // the system's ports, in order: "current", "v10" or "silent"; COM1..COM4
    // cannot be opened and are not asked. `said` is the label (%1 and %2:
    // the ports that answered, `answered` their indexes), or the box when
    // none did.
    void findRadio() {
        const auto row = [](const QStringList& radios, const char* checked, int said,
                            const QList<int>& answered) {
            std::vector<std::unique_ptr<SimulatedRadio>> served;
            ui::PortChoices choices;
            QStringList ports;
            for (const QString& kind : radios) {
                const auto fault = RadioFault::parse(kind == "silent" ? "silent" : "none");
                served.push_back(std::make_unique<SimulatedRadio>(
                    EmulatedRadio::Memory{}, EmulatedRadioOptions{kind == "v10", *fault}));
                std::string error;
                QVERIFY2(served.back()->start(error), error.c_str());
                ports << QString::fromStdString(served.back()->devicePath());
                choices.systemPorts.append({ports.back(), ports.back(), {}, {}, {}, {}});
            }
            ui::FrmPort dialog({}, choices);
            dialog.show();
            ModalAnswerer answers;
            auto* find = child<QAbstractButton>(&dialog, "CmdFindRadio");
            find->click();
            QVERIFY(!find->isEnabled());
            QTRY_VERIFY_WITH_TIMEOUT(find->isEnabled(), 60'000);

            QVERIFY(child<QRadioButton>(&dialog, checked)->isChecked());
            QString label = said == txt::NoRadioFound ? QString() : text(said);
            QStringList names;
            for (int i : answered) {
                names << ports[i];
            }
            if (said == txt::RadioFound) {
                label = label.arg(names.first());
            } else if (said == txt::RadiosFound) {
                label = label.arg(names.join(", "), names.first());
            }
            QCOMPARE(child<QLabel>(&dialog, "LblFindRadio")->text(), label);
            const QStringList box{seen("msgBox", txt::FindRadio, text(txt::NoRadioFound))};
            QCOMPARE(answers.log(), said == txt::NoRadioFound ? box : QStringList());
        };
        row({"silent", "current"}, "OptPortSystem_1", txt::RadioFound, {1});
        row({"v10", "silent", "current"}, "OptPortSystem_0", txt::RadiosFound, {0, 2});
        row({"silent"}, "OptPort_0", txt::NoRadioFound, {});
    }

    void aboutBox() {
        auto window = startWindow("zh_CN");
        ModalAnswerer answers;
        QString about;
        answers.answer([&about](QWidget* dialog) {
            about = child<QLabel>(dialog, "Label1")->text();
            ModalAnswerer::click(dialog);
        });
        trigger(window.get(), "menuhelpAbout");
        QCOMPARE(answers.log().size(), 1);
        QVERIFY(about.startsWith(text(txt::ProgramTitle, Language::Chinese) + "\n"));
        QVERIFY(about.contains(text(txt::Version, Language::Chinese)));
    }

    void help() {
        const auto row = [](const char* locale, const char* action, const QString& page) {
            auto window = startWindow(locale);
            trigger(window.get(), action);
            auto* browser = child<QTextBrowser>(window.get(), "helpBrowser");
            QVERIFY(browser && browser->window()->isVisible());
            QCOMPARE(browser->source().toString(), page);
            QVERIFY(browser->toPlainText().size() > 100);
        };
        row("en_US", "menuhelptext", "qrc:/help/en/index.html");  // contents
        row("zh_CN", "menuHelpID", "qrc:/help/zh/keywords.html"); // index
    }

    // Every page links only to pages that exist, and both languages have the
    // same pages.
    void helpLinksResolve() {
        auto window = startWindow();
        trigger(window.get(), "menuhelptext"); // registers the help pages
        const QRegularExpression href("href=\"([^\"]+)\"");
        QStringList pages[2];
        for (int k = 0; k < 2; ++k) {
            const QString folder = k == 0 ? ":/help/en/" : ":/help/zh/";
            pages[k] = QDir(folder).entryList();
            for (const QString& page : pages[k]) {
                QFile file(folder + page);
                QVERIFY(file.open(QIODevice::ReadOnly));
                const QString html = QString::fromUtf8(file.readAll());
                for (auto link = href.globalMatch(html); link.hasNext();) {
                    const QString target = link.next().captured(1);
                    QVERIFY2(QFile::exists(folder + target), qPrintable(page + " -> " + target));
                }
            }
        }
        QCOMPARE(pages[1], pages[0]);
        QVERIFY(pages[0].contains("index.html") && pages[0].contains("keywords.html"));
    }
};

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
