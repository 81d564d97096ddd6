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
    // CH 3 open on 145.5 MHz, then the 400 - 470MHz band; `button` clicked in
    // the checks' dialog, `windows` the windows of the write. Data that passes
    // is written without the dialog in the transfer tests.
    void writeChecks() {
        const auto row = [](const QString& button, const QStringList& windows) {
            auto window = startWindow("en_US", "sim");
            window->edit([&](RadioImage& image) {
                for (const auto& [key, value] :
                     {std::pair<std::string, std::string>{"CboBand", "136 - 174MHz"},
                      {"ch3.close", "false"},
                      {"ch3.rx_freq", "145.5"},
                      {"CboBand", "400 - 470MHz"}}) {
                    applyImageEdit(image, key, value);
                }
            });
            window->ReFlashData();
            const QBrush plain = cell(window.get(), 3, 1)->background();

            QString listed;
            QBrush marked;
            ModalAnswerer answers;
            answers.answer([&](QWidget* modal) {
                listed = modal->findChild<QPlainTextEdit*>("txtList")->toPlainText();
                marked = cell(window.get(), 3, 1)->background();
                ModalAnswerer::click(modal, modal->findChild<QAbstractButton*>(button));
            });
            trigger(window.get(), "menuProgWrite");
            QCOMPARE(answers.log(), windows);
            QCOMPARE(listed, QString("error: ch3.rx_freq: 145.50000 MHz is outside the band "
                                     "400 - 470MHz"));
            QVERIFY(marked != plain);
            window->ReFlashData();
            QCOMPARE(cell(window.get(), 3, 1)->background(), plain);
        };
        const QString checks = seen("dlgWriteChecks", txt::CheckBeforeWriting);
        const QStringList write{seen("frmConnect", txt::Write),
                                seen("msgBox", txt::WriteFinished, text(txt::WriteCompleted))};
        row("CmdCancel", {checks});
        row("CmdWriteAnyway", QStringList{checks} + write);
    }

    // The list compares the window's data, edits included, with the file;
    // `edit` (key=value) was applied to the file's copy.
    void compareWith() {
        const auto row = [](const QString& edit, const QString& shown) {
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
        };
        row("", text(txt::NoDifferences));
        row("ch2.busy_lock=On", "ch2.busy_lock: Off -> On");
    }
};

QTEST_MAIN(TestChecks)
#include "tst_checks.moc"
