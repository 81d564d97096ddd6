// Channels to and from CSV files.
#include "common/message_box.h"
#include "common/texts.h"
#include "csv_channels.h"
#include "main_form.h"

#include <QDir>
#include <QFileDialog>
#include <QFileInfo>

namespace zr310::ui {

namespace {

std::filesystem::path toPath(const QString& name) {
    return std::filesystem::path(name.toStdU16String());
}

QString fileErrorText(const QString& path, const std::string& detail) {
    return QDir::toNativeSeparators(path) + QLatin1Char('\n') + QString::fromStdString(detail);
}

} // namespace

// The rows go onto a copy of the image in one undo step; a refused file
// changes nothing and its box names the line.
void MainForm::fileImportCsv() {
    QFileDialog dialog(this, res(txt::ImportCsvCaption), initialFolder(), res(txt::CsvFileFilter));
    dialog.setObjectName(QStringLiteral("dlgCsv"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    const QString path = dialog.selectedFiles().constFirst();
    const ReadResult read = readWholeFile(toPath(path), kMaxCsvBytes);
    if (read.status != ReadStatus::Ok) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       fileErrorText(path, read.detail));
        return;
    }
    const std::string text(read.bytes.begin(), read.bytes.end());
    try {
        edit([&text](RadioImage& image) { importChannelsCsv(image, text); });
    } catch (const CsvError& error) {
        showMessageBox(this, QMessageBox::Warning, res(txt::Warning),
                       res(txt::CsvNotImported) + QLatin1Char('\n') + qs(error.what()));
        return;
    }
    ReFlashData();
}

// Beside the current data file, with its name.
void MainForm::fileExportCsv() {
    const QFileInfo current(m_fileName);
    const QString folder = current.isAbsolute() ? current.absolutePath() : initialFolder();
    const QString start = QDir(folder).filePath(current.completeBaseName() + ".csv");
    QFileDialog dialog(this, res(txt::ExportCsvCaption), start, res(txt::CsvFileFilter));
    dialog.setObjectName(QStringLiteral("dlgCsv"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("csv"));
    dialog.selectFile(start);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    const QString path = dialog.selectedFiles().constFirst();
    const WriteResult result = saveChannelsCsv(toPath(path), m_image);
    if (!result.ok) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       fileErrorText(path, result.detail));
    }
}

} // namespace zr310::ui
