#pragma once

#include "link_types.h"
#include "radio_image.h"
#include "serial_transfer.h"

#include <QDialog>

#include <functional>

class QLabel;
class QProgressBar;
class QPushButton;

namespace zr310::ui {

// `frmConnect`: the small modal window that runs one programming transfer
// with the radio, shows its progress in `PrgValue` and closes itself when
// the exchange is over. Its `CmdCancel` button and Esc stop the transfer at
// the next packet boundary. An interrupted or cancelled transfer is
// reported here; every other outcome is left to the caller through result().
class FrmConnect : public QDialog {
    Q_OBJECT
public:
    FrmConnect(TransferKind kind, const QString& portName, RadioImage& image, LinkFlags& flags,
               QWidget* parent = nullptr);

    TransferResult result() const { return m_result; }
    // A write: the bytes of its blocks as they were sent.
    const RadioImage& sentBlocks() const { return m_transfer->sentBlocks(); }

    // Runs when the transfer has ended without completing, before the
    // interruption box is shown; a text it returns is added to that box.
    using OnFailure = std::function<QString(const TransferResult&)>;
    void setOnFailure(OnFailure onFailure) { m_onFailure = std::move(onFailure); }

    // Esc cancels the transfer (the window closes when it has stopped).
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;

private:
    void onFinished(const TransferResult& result);

    SerialTransfer* m_transfer = nullptr;
    QLabel* m_message = nullptr;
    QProgressBar* m_progress = nullptr;
    QPushButton* m_cancel = nullptr;
    TransferResult m_result;
    OnFailure m_onFailure;
    bool m_started = false;
};

} // namespace zr310::ui
