// The port dialog, the about box and the help window, opened from the
// main window's menus.
#include "main_form.h"
#include "modal_answerer.h"
#include "string_table.h"
#include "ui_test_support.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QLabel>
#include <QRadioButton>
#include <QRegularExpression>
#include <QTextBrowser>

using namespace zr310;

class TestDialogs : public QObject {
    Q_OBJECT
private slots:
    void portDialog_data();
    void portDialog();
    void aboutBox_data();
    void aboutBox();
    void help_data();
    void help();
    void helpLinksResolve();
};

void TestDialogs::portDialog_data() {
    QTest::addColumn<QString>("start");
    QTest::addColumn<QString>("option");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("expected");
    QTest::newRow("OK takes the simulated radio") << "COM2"
                                                  << "OptPortSim"
                                                  << "CmdOK"
                                                  << "sim";
    QTest::newRow("OK takes COM1") << "sim"
                                   << "OptPort_0"
                                   << "CmdOK"
                                   << "COM1";
    QTest::newRow("Cancel keeps the port") << "COM3"
                                           << "OptPortSim"
                                           << "CmdCancel"
                                           << "COM3";
}

void TestDialogs::portDialog() {
    QFETCH(QString, start);
    QFETCH(QString, option);
    QFETCH(QString, button);
    QFETCH(QString, expected);
    auto window = startWindow("en_US", start);
    ModalAnswerer answers;
    QString checkedAtStart;
    QStringList captions;
    answers.answer([&](QWidget* dialog) {
        for (int k = 0; k < 4; ++k) {
            auto* com = dialog->findChild<QRadioButton*>(QString("OptPort_%1").arg(k));
            captions << com->text();
            if (com->isChecked()) {
                checkedAtStart = com->objectName();
            }
        }
        if (dialog->findChild<QRadioButton*>("OptPortSim")->isChecked()) {
            checkedAtStart = "OptPortSim";
        }
        dialog->findChild<QRadioButton*>(option)->setChecked(true);
        dialog->findChild<QAbstractButton*>(button)->click();
    });
    action(window.get(), "menuSetup_Port")->trigger();
    QCOMPARE(answers.seenNames(), QStringList{"frmPort"});
    QCOMPARE(answers.seen()[0].title, QString::fromUtf8(ResString(1412)));
    QCOMPARE(captions, (QStringList{"COM1", "COM2", "COM3", "COM4"}));
    const QString startOption = start == "sim"
                                    ? QString("OptPortSim")
                                    : QString("OptPort_%1").arg(start.right(1).toInt() - 1);
    QCOMPARE(checkedAtStart, startOption);
    QCOMPARE(window->selectedPort(), expected);
}

void TestDialogs::aboutBox_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("versionLine");
    QTest::newRow("English") << "en_US"
                             << "2006 Version 2.21";
    QTest::newRow("Chinese") << "zh_CN"
                             << "2006 版本 2.21";
}

void TestDialogs::aboutBox() {
    QFETCH(QString, locale);
    QFETCH(QString, versionLine);
    auto window = startWindow(locale);
    ModalAnswerer answers;
    QStringList lines;
    answers.answer([&lines](QWidget* about) {
        lines = about->findChild<QLabel*>("Label1")->text().split('\n');
        about->findChild<QAbstractButton*>("Command1")->click();
    });
    action(window.get(), "menuhelpAbout")->trigger();
    QCOMPARE(answers.seenNames(), QStringList{"frmAbout"});
    QCOMPARE(lines.size(), 4);
    QCOMPARE(lines[0], QString::fromUtf8(ResString(1406)));
    QCOMPARE(lines[1], QString());
    QCOMPARE(lines[2], versionLine);
    QVERIFY(!lines[3].isEmpty());
}

void TestDialogs::help_data() {
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("item");
    QTest::addColumn<QString>("page");
    QTest::newRow("contents, English") << "en_US"
                                       << "menuhelptext"
                                       << "qrc:/help/en/index.html";
    QTest::newRow("index, English") << "en_US"
                                    << "menuHelpID"
                                    << "qrc:/help/en/keywords.html";
    QTest::newRow("contents, Chinese") << "zh_CN"
                                       << "menuhelptext"
                                       << "qrc:/help/zh/index.html";
    QTest::newRow("index, Chinese") << "zh_CN"
                                    << "menuHelpID"
                                    << "qrc:/help/zh/keywords.html";
}

void TestDialogs::help() {
    QFETCH(QString, locale);
    QFETCH(QString, item);
    QFETCH(QString, page);
    auto window = startWindow(locale);
    action(window.get(), item)->trigger();
    auto* browser = child<QTextBrowser>(window.get(), "helpBrowser");
    QVERIFY(browser);
    QVERIFY(browser->window()->isVisible());
    QCOMPARE(browser->source().toString(), page);
    QVERIFY(browser->toPlainText().contains("ZR-310") || page.contains("keywords"));
    QVERIFY(browser->toPlainText().size() > 100);
}

// Every page links only to pages that exist, and both languages have the
// same pages.
void TestDialogs::helpLinksResolve() {
    auto window = startWindow(); // registers the help pages
    action(window.get(), "menuhelptext")->trigger();
    QStringList english, chinese;
    for (auto [folder, list] : {std::pair{QString("en"), &english}, {QString("zh"), &chinese}}) {
        QDirIterator pages(":/help/" + folder);
        while (pages.hasNext()) {
            const QString path = pages.next();
            list->append(QFileInfo(path).fileName());
            QFile file(path);
            QVERIFY(file.open(QIODevice::ReadOnly));
            const QString html = QString::fromUtf8(file.readAll());
            const QRegularExpression href(R"(href="([^"]+)\")");
            for (auto it = href.globalMatch(html); it.hasNext();) {
                const QString target = it.next().captured(1);
                QVERIFY2(QFile::exists(":/help/" + folder + "/" + target),
                         qPrintable(path + " links to " + target));
            }
        }
    }
    english.sort();
    chinese.sort();
    QCOMPARE(chinese, english);
    QVERIFY(english.contains("index.html") && english.contains("keywords.html"));
}

QTEST_MAIN(TestDialogs)
#include "tst_dialogs.moc"
