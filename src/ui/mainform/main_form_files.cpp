// Open, Save and Save As of data files.
#include "channel_panel.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "k720_file.h"
#include "main_form.h"
#include "radio_info.h"

#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QMimeData>
#include <QTimer>
#include <QUrl>

#include <utility>

namespace zr310::ui {

namespace {

// The one local .k720 or .bin file being dragged, or an empty string.
QString droppedDataFile(const QMimeData* data) {
    if (data == nullptr || data->urls().size() != 1 || !data->urls().constFirst().isLocalFile()) {
        return {};
    }
    const QString path = data->urls().constFirst().toLocalFile();
    const QString suffix = QFileInfo(path).suffix().toLower();
    return suffix == QStringLiteral("k720") || suffix == QStringLiteral("bin") ? path : QString();
}

std::filesystem::path toPath(const QString& name) {
    return std::filesystem::path(name.toStdU16String());
}

// The local clock, for the save stamp.
DateTime now() {
    const QDateTime t = QDateTime::currentDateTime();
    return {t.date().year(), t.date().month(),  t.date().day(),
            t.time().hour(), t.time().minute(), t.time().second()};
}

} // namespace

// "Data Files (*.k720)|*.k720" as a Qt name filter: the text before the bar
// already names the pattern.
QString MainForm::fileFilter() const {
    const QString filter = res(txt::DataFileFilter);
    const qsizetype bar = filter.indexOf(QLatin1Char('|'));
    if (bar < 0) {
        return filter;
    }
    const QString description = filter.left(bar).trimmed();
    const QString pattern = filter.mid(bar + 1).trimmed();
    return description.contains(pattern) ? description
                                         : description + QStringLiteral(" (") + pattern + ')';
}

// The folder of the last opened file, or the program's own folder.
QString MainForm::initialFolder() const {
    if (!m_lastOpenFolder.isEmpty()) {
        return m_lastOpenFolder;
    }
    return QCoreApplication::applicationDirPath();
}

void MainForm::fileOpen() {
    QFileDialog dialog(this, res(txt::ToolOpen), initialFolder(), fileFilter());
    dialog.setObjectName(QStringLiteral("dlgOpen"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    openFile(dialog.selectedFiles().constFirst());
}

bool MainForm::openFile(const QString& path) {
    RadioImage loaded = m_image;
    FileExtras extras;
    const FileResult result = openImageFile(toPath(path), loaded, &extras);
    if (result.error == FileError::IncorrectFileType) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error), res(txt::IncorrectFileType));
        return false;
    }
    if (!result.ok()) {
        // Unreadable files: the system's reason under the title "Error".
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       QDir::toNativeSeparators(path) + QLatin1Char('\n') +
                           QString::fromStdString(result.detail));
        return false;
    }
    m_image = loaded;
    m_fileExtras = extras;
    m_fileName = QFileInfo(path).absoluteFilePath();
    m_lastOpenFolder = QFileInfo(path).absolutePath();
    ReFlashData();
    takeReferenceCopy();
    startFreshHistory();
    m_fraChSet->focusFirstCell();
    return true;
}

void MainForm::showAndOpen() {
    show();
    if (!m_fileToOpen.isEmpty()) {
        openFile(std::exchange(m_fileToOpen, QString()));
    }
}

void MainForm::dragEnterEvent(QDragEnterEvent* event) {
    if (!droppedDataFile(event->mimeData()).isEmpty()) {
        event->acceptProposedAction();
    }
}

void MainForm::dropEvent(QDropEvent* event) {
    const QString path = droppedDataFile(event->mimeData());
    if (path.isEmpty()) {
        return;
    }
    event->acceptProposedAction();
    commitEdits();
    // The question waits until the drop is over, so the other program is
    // not left hanging in its drag.
    QTimer::singleShot(0, this, [this, path] {
        if (mayDiscardEdits()) {
            openFile(path);
        }
    });
}

// A name chosen by Open or Save As is saved to directly; the start name has
// no folder yet, so the first save asks where to put it.
bool MainForm::fileSave() {
    if (!QFileInfo(m_fileName).isAbsolute()) {
        return fileSaveAs();
    }
    return saveFile(m_fileName);
}

bool MainForm::fileSaveAs() {
    // Beside the current file, or where the open dialog would start.
    const QFileInfo current(m_fileName);
    const QString folder = current.isAbsolute() ? current.absolutePath() : initialFolder();
    const QString start = QDir(folder).filePath(current.fileName());
    QFileDialog dialog(this, res(txt::SaveFileName), start, fileFilter());
    dialog.setObjectName(QStringLiteral("dlgSave"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDefaultSuffix(QStringLiteral("k720"));
    dialog.selectFile(start);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return false;
    }
    return saveFile(dialog.selectedFiles().constFirst());
}

bool MainForm::saveFile(const QString& path) {
    const FileResult result = saveImageFile(toPath(path), m_image, now(), m_fileExtras);
    if (!result.ok()) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       QDir::toNativeSeparators(path) + QLatin1Char('\n') +
                           QString::fromStdString(result.detail));
        return false;
    }
    m_fileName = QFileInfo(path).absoluteFilePath();
    takeReferenceCopy();
    return true;
}

} // namespace zr310::ui
