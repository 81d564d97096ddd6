// The checks before Program > Write: the findings' dialog, the marked cells,
// and a write only after "Write anyway" or for data that passes; and File >
// Compare With.
#include "image_edit.h"
#include "k720_file.h"
#include "ui_test_support.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QTemporaryDir>

using namespace zr310;

class TestChecks : public QObject {
    Q_OBJECT
private slots:
    void writeChecks_data() {
        QTest::addColumn<QString>("band");
        QTest::addColumn<QString>("button"); // in the checks' dialog
        QTest::addColumn<QStringList>("windows");
        const QString checks = seen("dlgWriteChecks", 1146);
        const QStringList write{seen("frmConnect", 1521), seen("msgBox", 1529, text(1531))};
        const auto row = [](const char* name, const char* band, const char* button,
                            const QStringList& windows) {
            QTest::newRow(name) << band << button << windows;
        };
        row("out of band, Cancel", "400 - 470MHz", "CmdCancel", {checks});
        row("out of band, write anyway", "400 - 470MHz", "CmdWriteAnyway",
            QStringList{checks} + write);
        row("clean", "136 - 174MHz", "", write);
    }

    void writeChecks() {
        QFETCH(QString, band);
        QFETCH(QString, button);
        QFETCH(QStringList, windows);
        auto window = startWindow("en_US", "sim");
        window->edit([&](RadioImage& image) {
            for (const auto& [key, value] :
                 {std::pair<std::string, std::string>{"CboBand", "136 - 174MHz"},
                  {"ch3.close", "false"},
                  {"ch3.rx_freq", "145.5"},
                  {"CboBand", band.toStdString()}}) {
                applyImageEdit(image, key, value);
            }
        });
        window->ReFlashData();
        const QBrush plain = cell(window.get(), 3, 1)->background();

        QString listed;
        QBrush marked;
        ModalAnswerer answers;
        answers.answer(button.isEmpty() ? answers.otherwise : [&](QWidget* modal) {
            listed = modal->findChild<QPlainTextEdit*>("txtList")->toPlainText();
            marked = cell(window.get(), 3, 1)->background();
            ModalAnswerer::click(modal, modal->findChild<QAbstractButton*>(button));
        });
        trigger(window.get(), "menuProgWrite");
        QCOMPARE(answers.log(), windows);
        if (button.isEmpty()) {
            return;
        }
        QCOMPARE(listed, QString("error: ch3.rx_freq: 145.50000 MHz is outside the band "
                                 "400 - 470MHz"));
        QVERIFY(marked != plain);
        window->ReFlashData();
        QCOMPARE(cell(window.get(), 3, 1)->background(), plain);
    }

    // The list compares the window's data, edits included, with the file.
    void compareWith_data() {
        QTest::addColumn<QString>("edit"); // key=value applied to the file's copy
        QTest::addColumn<QString>("shown");
        QTest::newRow("equal") << "" << text(1149);
        QTest::newRow("one channel") << "ch2.busy_lock=On"
                                     << "ch2.busy_lock: Off -> On";
    }

    void compareWith() {
        QFETCH(QString, edit);
        QFETCH(QString, shown);
        QTemporaryDir dir;
        auto window = startWindow();
        RadioImage other = window->image();
        if (!edit.isEmpty()) {
            const QStringList pair = edit.split('=');
            applyImageEdit(other, pair[0].toStdString(), pair[1].toStdString());
        }
        const QString path = dir.filePath("other.k720");
        QVERIFY(saveImageFile(path.toStdString(), other, DateTime{2008, 3, 7, 9, 5, 3}).ok());

        QString listed;
        ModalAnswerer answers;
        answers.answerFileDialog(path);
        answers.answer([&](QWidget* modal) {
            const auto* list = modal->findChild<QPlainTextEdit*>("txtList");
            listed = list ? list->toPlainText() : modal->findChild<QLabel*>()->text();
            ModalAnswerer::click(modal);
        });
        trigger(window.get(), "menuFileCompare");
        QCOMPARE(answers.log().size(), 2);
        QCOMPARE(listed, shown);
    }
};

QTEST_MAIN(TestChecks)
#include "tst_checks.moc"
