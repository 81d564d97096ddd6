// File > Export PDF and File > Print of the main window.

#include "ui_test_support.h"

#include <QPrinterInfo>
#include <QTemporaryDir>
#include <QtTest>

class TestReport : public QObject {
    Q_OBJECT

private slots:
    // A name typed without a suffix gets ".pdf".
    void exportPdfWritesTheReport() {
        QTemporaryDir dir;
        auto window = startWindow();
        ModalAnswerer answers;
        answers.answerFileDialog(dir.filePath("report"));
        trigger(window.get(), "menuFileExportPdf");
        QCOMPARE(answers.log(), QStringList{seen("dlgPdf", zr310::txt::ExportPdfCaption)});
        QFile pdf(dir.filePath("report.pdf"));
        QVERIFY(pdf.open(QIODevice::ReadOnly));
        QVERIFY(pdf.readAll().startsWith("%PDF"));
    }

    void printWithoutPrinterSaysSo() {
        if (!QPrinterInfo::defaultPrinter().isNull()) {
            QSKIP("this machine has a default printer");
        }
        auto window = startWindow();
        ModalAnswerer answers;
        trigger(window.get(), "menuFilePrint");
        QCOMPARE(answers.log(), QStringList{seen("msgBox", zr310::txt::ToolPrint,
                                                 text(zr310::txt::NoDefaultPrinter))});
    }
};

QTEST_MAIN(TestReport)
#include "tst_report.moc"
