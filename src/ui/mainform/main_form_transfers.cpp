// Read, Write and Test Mode, and the choice of the port they use.
#include "backup.h"
#include "channel_panel.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "frmConnect/frm_connect.h"
#include "frmPort/frm_port.h"
#include "main_form.h"
#include "menus.h"
#include "model_panel.h"
#include "options_panel.h"
#include "ports.h"
#include "sizes.h"
#include "tuning.h"
#include "tuning_panels.h"
#include "tuning_session.h"

#include <QAction>
#include <QDesktopServices>
#include <QDir>
#include <QUrl>

#include <filesystem>
#include <system_error>

namespace zr310::ui {

namespace {

QString folderText(const std::filesystem::path& path) {
    return QDir::toNativeSeparators(QString::fromStdU16String(path.u16string()));
}

} // namespace

void MainForm::showPortDialog() {
    PortChoices choices;
    for (int n = 1; n <= 4; ++n) {
        choices.comUsable[toIndex(n - 1)] = probePort(QStringLiteral("COM%1").arg(n));
    }
    choices.systemPorts = systemPorts();
    FrmPort dialog(m_portName, choices, this);
    if (dialog.exec() == QDialog::Accepted) {
        m_portName = dialog.selectedPort();
    }
}

TransferResult MainForm::runTransfer(TransferKind kind, RadioImage* sent) {
    FrmConnect dialog(kind, m_portName, m_image, m_linkFlags, this);
    // A read stores each block in the image as it arrives. One that does not
    // complete must not leave the data mixed with part of a radio's: the
    // image it started from is put back before the interruption box, which
    // says so. The grid was not refreshed, so it shows that image still. A
    // cancelled transfer of any kind leaves the data as it was, the write's
    // date stamp and version-1.0 conversion included.
    const RadioImage before = m_image;
    dialog.setOnFailure([this, &before, kind](const TransferResult& result) {
        const bool cancelled = result.outcome == TransferOutcome::Cancelled;
        if (kind == TransferKind::Read || cancelled) {
            m_image = before;
        }
        return kind == TransferKind::Read && !cancelled ? res(txt::ReadPutBack) : QString();
    });
    dialog.exec();
    if (sent != nullptr) {
        *sent = dialog.sentBlocks();
    }
    const TransferResult result = dialog.result();
    if (result.outcome == TransferOutcome::NoResponse) {
        showMessageBox(
            this, QMessageBox::Warning, res(txt::CommunicationError),
            displayText(unreachableText(m_portName, result.portProblem, currentLanguage())));
    }
    return result;
}

void MainForm::progRead() {
    m_menus->MenuProgTest->setChecked(false);
    m_menus->MenuCHfrm->setChecked(true);
    if (runTransfer(TransferKind::Read).outcome != TransferOutcome::Completed) {
        return;
    }
    // The image as read, before the refresh changes anything for a
    // version-1.0 radio, goes to the backups folder. A failed backup is
    // reported after the completion box; the read itself is done.
    const BackupResult backup = saveReadBackup(m_image);
    if (m_linkFlags.radioIsVersion10) {
        showMessageBox(this, QMessageBox::NoIcon, res(txt::Read), resDisplay(txt::ReadVersion10));
    }
    showMessageBox(this, QMessageBox::NoIcon, res(txt::ReadFinished),
                   resDisplay(txt::ReadCompleted));
    if (!backup.ok()) {
        showMessageBox(this, QMessageBox::Warning, res(txt::Warning),
                       res(txt::BackupFailed) + QLatin1Char('\n') + qs(backup.error));
    }
    leaveTuningPanels();
    ReFlashData();
    takeReferenceCopy();
    startFreshHistory();
    setWindowTitle(res(txt::ProgramTitle) + QStringLiteral(" - ") + res(txt::ReadFinished));
    m_fraChSet->focusFirstCell();
}

// File > Open Backup Folder: the folder of the backups of every read, made
// when it is not there yet, in the system's file manager.
void MainForm::openBackupFolder() {
    std::string why;
    const std::filesystem::path folder = backupFolder(&why);
    std::error_code error;
    if (!folder.empty()) {
        std::filesystem::create_directories(folder, error);
        if (error) {
            why = error.message();
        }
    }
    if (!folder.empty() && !error &&
        QDesktopServices::openUrl(
            QUrl::fromLocalFile(QString::fromStdU16String(folder.u16string())))) {
        return;
    }
    QString text = res(txt::BackupFolderFailed);
    if (!folder.empty()) {
        text += QLatin1Char('\n') + folderText(folder);
    }
    if (!why.empty()) {
        text += QLatin1Char('\n') + qs(why);
    }
    showMessageBox(this, QMessageBox::Critical, res(txt::Error), text);
}

void MainForm::progWrite() {
    m_menus->MenuProgTest->setChecked(false);
    m_menus->MenuCHfrm->setChecked(true);
    leaveTuningPanels();
    if (!confirmWriteChecks()) {
        return;
    }
    RadioImage sent;
    if (runTransfer(TransferKind::Write, &sent).outcome != TransferOutcome::Completed) {
        return;
    }
    if (m_menus->menuProgVerify->isChecked() && !verifyWrite(sent)) {
        return;
    }
    showMessageBox(this, QMessageBox::NoIcon, res(txt::WriteFinished),
                   resDisplay(txt::WriteCompleted));
}

void MainForm::progTest() {
    m_menus->MenuProgTest->setChecked(true);
    m_menus->MenuCHfrm->setChecked(false);
    if (runTransfer(TransferKind::EnterTuning).outcome != TransferOutcome::Completed) {
        // The radio did not enter tuning mode: the channel view stays.
        m_menus->MenuProgTest->setChecked(!m_normalMode);
        m_menus->MenuCHfrm->setChecked(m_normalMode);
        return;
    }
    m_normalMode = false;
    m_fraModel->hide();
    m_fraFunction->hide();
    m_fraChSet->hide();
    m_tuning->setPortName(m_portName);
    ReFlashTestData();
    m_tuning->setShown(true);
}

void MainForm::ReFlashTestData() {
    m_tuning->refreshTestChannels(m_image, m_fraModel->bandText(), currentLanguage());
}

// Write Test Frequency: the test channel area goes to the radio, which is
// then in tuning mode again.
void MainForm::writeTestFrequency() {
    m_normalMode = false;
    runTransfer(TransferKind::WriteTuning);
}

// Takes the radio out of its tuning state. Nothing waits for the answer: the
// channel view is back at once, and a radio that does not answer is simply
// left as it was.
void MainForm::sendLeaveTuningMode() {
    m_tuning->leaveTuningMode();
}

// Back to the channel view without talking to the radio.
void MainForm::leaveTuningPanels() {
    m_normalMode = true;
    m_tuning->setShown(false);
    m_fraModel->show();
    m_fraFunction->show();
    m_fraChSet->show();
}

} // namespace zr310::ui
