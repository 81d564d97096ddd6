// Program > Verify After Write and Setup > Serial Trace.
#include "common/message_box.h"
#include "common/texts.h"
#include "frmConnect/frm_connect.h"
#include "main_form.h"
#include "menus.h"
#include "serial_trace.h"
#include "serial_transfer.h"

#include <QAction>
#include <QDir>
#include <QFileDialog>

namespace zr310::ui {

namespace {} // namespace

// Reads the radio back into an image of its own and compares the blocks the
// write sent. A difference, or a read that did not complete, is reported here.
bool MainForm::verifyWrite(const RadioImage& sent) {
    RadioImage readBack = makeStartImage();
    FrmConnect dialog(TransferKind::Read, m_portName, readBack, m_linkFlags, this);
    dialog.exec();
    const TransferResult result = dialog.result();
    if (result.outcome != TransferOutcome::Completed) {
        QString text = resDisplay(txt::VerifyNotRead);
        if (result.portProblem) {
            text += QLatin1Char('\n') +
                    displayText(unreachableText(m_portName, result.portProblem, currentLanguage()));
        }
        showMessageBox(this, QMessageBox::Warning, res(txt::Error), text);
        return false;
    }
    const WriteCheck check = checkWrittenBlocks(sent, readBack);
    if (!check.passed()) {
        showMessageBox(this, QMessageBox::Warning, res(txt::Error),
                       verifyFailedText(check, currentLanguage()));
    }
    return check.passed();
}

// Ticking asks for the file every transfer then traces into, until unticked.
void MainForm::toggleSerialTrace(bool on) {
    m_trace.reset();
    QAction* item = m_menus->menuSetupTrace;
    if (!on) {
        return;
    }
    QFileDialog dialog(this, res(txt::MenuSerialTrace).remove(QLatin1Char('&')), initialFolder());
    dialog.setObjectName(QStringLiteral("dlgTrace"));
    dialog.setAcceptMode(QFileDialog::AcceptSave);
    dialog.setFileMode(QFileDialog::AnyFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        item->setChecked(false);
        return;
    }
    const QString path = dialog.selectedFiles().constFirst();
    auto trace = std::make_shared<SerialTrace>(path);
    if (!trace->isOpen()) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       res(txt::TraceRefused) + QLatin1Char('\n') + QDir::toNativeSeparators(path) +
                           QLatin1Char('\n') + trace->errorString());
        item->setChecked(false);
        return;
    }
    SerialTrace::setActive(trace.get());
    m_trace = std::move(trace);
}

} // namespace zr310::ui
