// The checks before Program > Write: the findings' dialog, the marked cells,
// and a write only after "Write anyway" or for data that passes.
#include "image_edit.h"
#include "ui_test_support.h"

#include <QPlainTextEdit>

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
        auto window = startWindow();
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
};

QTEST_MAIN(TestChecks)
#include "tst_checks.moc"
