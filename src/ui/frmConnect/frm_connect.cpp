#include "frm_connect.h"

#include "common/message_box.h"
#include "common/texts.h"
#include "frmWarning/frm_warning.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace zr310::ui {

namespace {

struct KindTexts {
    int title;
    int message;
};

KindTexts textsOf(TransferKind kind) {
    switch (kind) {
    case TransferKind::Read:
        return {txt::Read, txt::ReadingData};
    case TransferKind::Write:
        return {txt::Write, txt::WritingData};
    case TransferKind::EnterTuning:
        return {txt::ReadWriteRadio, txt::EnteringTuningMode};
    case TransferKind::WriteTuning:
        return {txt::Write, txt::WritingTuningData};
    }
    return {txt::Read, txt::ReadingData};
}

} // namespace

FrmConnect::FrmConnect(TransferKind kind, const QString& portName, RadioImage& image,
                       LinkFlags& flags, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmConnect"));
    const KindTexts texts = textsOf(kind);
    setWindowTitle(res(texts.title));
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    setModal(true);

    m_message = new QLabel(res(texts.message), this);
    m_message->setObjectName(QStringLiteral("LblMessage"));
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("PrgValue"));
    m_progress->setRange(0, 1);
    m_progress->setValue(0);
    m_progress->setTextVisible(false);
    m_progress->setMinimumWidth(300);

    m_cancel = new QPushButton(res(txt::CancelButton), this); // "&Cancel"
    m_cancel->setObjectName(QStringLiteral("CmdCancel"));
    m_cancel->setAutoDefault(false);
    connect(m_cancel, &QPushButton::clicked, this, &FrmConnect::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_message);
    layout->addWidget(m_progress);
    layout->addWidget(m_cancel, 0, Qt::AlignRight);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    m_transfer = new SerialTransfer(kind, portName, image, flags, this);
    m_transfer->setVersion10Warning([this](LinkFlags& linkFlags) {
        FrmWarning warning(linkFlags, this);
        warning.exec();
    });
    connect(m_transfer, &SerialTransfer::progress, this, [this](int value, int maximum) {
        m_progress->setRange(0, std::max(1, maximum));
        m_progress->setValue(value);
    });
    connect(m_transfer, &SerialTransfer::finished, this, &FrmConnect::onFinished);
}

void FrmConnect::showEvent(QShowEvent* event) {
    QDialog::showEvent(event);
    if (!m_started) {
        m_started = true;
        // Started from the event loop, once the window is on the screen.
        QTimer::singleShot(0, m_transfer, &SerialTransfer::start);
    }
}

void FrmConnect::onFinished(const TransferResult& result) {
    m_result = result;
    const QString note = result.outcome != TransferOutcome::Completed && m_onFailure
                             ? m_onFailure(result)
                             : QString();
    if (result.outcome == TransferOutcome::Cancelled) {
        showMessageBox(this, QMessageBox::Information, windowTitle(), resDisplay(result.messageId));
    } else if (result.outcome == TransferOutcome::Interrupted && result.messageId != 0) {
        QString text = resDisplay(result.messageId);
        if (!note.isEmpty()) {
            text += QLatin1Char('\n') + note;
        }
        showMessageBox(this, QMessageBox::Warning, res(txt::Error), text);
    }
    done(result.outcome == TransferOutcome::Completed ? QDialog::Accepted : QDialog::Rejected);
}

void FrmConnect::reject() {
    // The window closes itself once the transfer has stopped.
    if (m_transfer->isRunning()) {
        m_transfer->cancel();
        m_cancel->setEnabled(false);
    }
}

} // namespace zr310::ui
