// The printed report, its preview and its PDF.
#include "common/message_box.h"
#include "common/texts.h"
#include "main_form.h"
#include "report_layout.h"
#include "report_pdf.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QPrinterInfo>

namespace zr310::ui {

// Straight to the system's default printer, without a print dialog.
void MainForm::filePrint() {
    const QPrinterInfo printerInfo = QPrinterInfo::defaultPrinter();
    if (printerInfo.isNull()) {
        showMessageBox(this, QMessageBox::Information, res(txt::ToolPrint),
                       res(txt::NoDefaultPrinter));
        return;
    }
    QPrinter printer(printerInfo, QPrinter::HighResolution);
    if (!printReport(printer, image(), currentLanguage(), QDateTime::currentDateTime())) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       res(txt::ReportNotPrinted) + QLatin1Char('\n') + printerInfo.printerName());
    }
}

void MainForm::filePrintPreview() {
    QPrinter printer(QPrinter::HighResolution);
    QPrintPreviewDialog dialog(&printer, this);
    dialog.setObjectName(QStringLiteral("dlgPrintPreview"));
    const QDateTime printedAt = QDateTime::currentDateTime();
    connect(&dialog, &QPrintPreviewDialog::paintRequested, this,
            [&](QPrinter* target) { printReport(*target, image(), currentLanguage(), printedAt); });
    dialog.exec();
}

void MainForm::fileExportPdf() {
    // Beside the current data file, named after it.
    const QFileInfo current(m_fileName);
    const QString folder = current.isAbsolute() ? current.absolutePath() : initialFolder();
    const QString start = QDir(folder).filePath(current.completeBaseName() + ".pdf");
    QFileDialog dialog(this, res(txt::ExportPdfCaption), start, res(txt::PdfFileFilter));
    dialog.setObjectName(QStringLiteral("dlgPdf"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("pdf"));
    dialog.selectFile(start);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    const QString path = dialog.selectedFiles().constFirst();
    const WriteResult result = writeReportPdf(std::filesystem::path(path.toStdU16String()), image(),
                                              currentLanguage(), QDateTime::currentDateTime());
    if (!result.ok) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       QDir::toNativeSeparators(path) + QLatin1Char('\n') +
                           QString::fromStdString(result.detail));
    }
}

} // namespace zr310::ui
