// Read, Write and Test Mode, and the choice of the port they use.
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
#include "tuning.h"
#include "tuning_panels.h"
#include "tuning_session.h"

#include <QAction>

namespace zr310::ui {

void MainForm::showPortDialog() {
    PortChoices choices;
    QStringList comDevices;
    for (int n = 1; n <= 4; ++n) {
        const QString name = QStringLiteral("COM%1").arg(n);
        choices.comDevices[n - 1] = name;
        choices.comUsable[n - 1] = probePort(name);
        comDevices << resolvePortName(name);
    }
    for (const QString& port : availablePortNames()) {
        if (!comDevices.contains(resolvePortName(port))) {
            choices.systemPorts << port;
        }
    }
    FrmPort dialog(m_portName, choices, this);
    if (dialog.exec() == QDialog::Accepted) {
        m_portName = dialog.selectedPort();
    }
}

TransferResult MainForm::runTransfer(TransferKind kind) {
    FrmConnect dialog(kind, m_portName, m_image, m_linkFlags, this);
    dialog.exec();
    const TransferResult result = dialog.result();
    if (result.outcome == TransferOutcome::NoResponse) {
        showMessageBox(this, QMessageBox::Warning, res(kMsgCommunicationError),
                       displayText(noResponseText(m_portName, currentLanguage())));
    }
    return result;
}

void MainForm::progRead() {
    m_menus->MenuProgTest->setChecked(false);
    m_menus->MenuCHfrm->setChecked(true);
    if (runTransfer(TransferKind::Read).outcome != TransferOutcome::Completed) {
        return;
    }
    if (m_linkFlags.radioIsVersion10) {
        showMessageBox(this, QMessageBox::NoIcon, res(1520), resDisplay(kMsgReadVersion10));
    }
    showMessageBox(this, QMessageBox::NoIcon, res(1528), resDisplay(kMsgReadCompleted));
    leaveTuningPanels();
    ReFlashData();
    takeReferenceCopy();
    startFreshHistory();
    setWindowTitle(res(1406) + QStringLiteral(" - ") + res(1528));
    m_fraChSet->focusFirstCell();
}

void MainForm::progWrite() {
    m_menus->MenuProgTest->setChecked(false);
    m_menus->MenuCHfrm->setChecked(true);
    leaveTuningPanels();
    if (runTransfer(TransferKind::Write).outcome != TransferOutcome::Completed) {
        return;
    }
    showMessageBox(this, QMessageBox::NoIcon, res(1529), resDisplay(kMsgWriteCompleted));
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
