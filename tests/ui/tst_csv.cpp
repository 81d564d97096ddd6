// File > Import CSV: the rows become one undo step; a refused file names
// its line and changes nothing.
#include "editing_support.h"

#include <QFile>
#include <QTemporaryDir>

using namespace zr310;

class TestCsv : public QObject {
    Q_OBJECT
private slots:
    // `shown`: CH 2's RX Freq after the import.
    void importAndUndo() {
        const auto row = [](const QByteArray& csv, const QString& shown, const QString& refusal) {
            QTemporaryDir dir;
            QFile file(dir.filePath("channels.csv"));
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write(csv) == csv.size());
            file.close();
            auto window = editingWindow();
            const RadioImage before = window->image();

            ModalAnswerer answers;
            answers.answerFileDialog(file.fileName());
            trigger(window.get(), "menuFileImportCsv");
            QStringList log{seen("dlgCsv", txt::ImportCsvCaption)};
            if (!refusal.isEmpty()) {
                log << seen("msgBox", txt::Warning, text(txt::CsvNotImported) + '\n' + refusal);
            }
            QCOMPARE(answers.log(), log);
            QCOMPARE(cell(window.get(), 2, 1)->text(), shown);

            QCOMPARE(child<QAction>(window.get(), "MenuEditUndo")->isEnabled(), refusal.isEmpty());
            trigger(window.get(), "MenuEditUndo");
            QVERIFY(window->image() == before);
            QCOMPARE(cell(window.get(), 2, 1)->text(), QString("145.51250"));
        };
        row("Location,Frequency,Tone\r\n2,146.52,TSQL\r\n", "146.52000", "");
        row("Location,Frequency\n2,146.52\n3,440\n", "145.51250",
            "line 3: 440.000000 MHz is outside the band 136 - 174MHz");
    }
};

QTEST_MAIN(TestCsv)
#include "tst_csv.moc"
