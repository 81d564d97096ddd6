#pragma once

#include "link_types.h"
#include "radio_image.h"

#include <QDialog>
#include <QString>

class QKeyEvent;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace zr310 {
class InfoTransfer;
struct TransferResult;
} // namespace zr310

namespace zr310::ui {

class MainForm;

// The radio information window `frmInfo`: the radio ID (`txtRadioID`), the
// date of the most recent write (`txtWriteData`) and the user-defined text
// (`rtbFont`, at most 96 UTF-16 units) of the main window's image, with
// `CmdRead` and `CmdWrite` for the radio-information exchange on the main
// window's port, `CmdFont` for the display font and `CmdClose`.
//
// Typing changes only the window's own UserTextBuffer; Write stores it in
// the image as one undo step of the main window and then sends it. A read
// takes the radio's information area into the image, also one undo step.
class FrmInfo : public QDialog {
    Q_OBJECT
public:
    explicit FrmInfo(MainForm& owner);

    // Esc and the close box do nothing while the radio is being talked to.
    void reject() override;

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void ShowUserText();
    void ShowRadioInfo();
    void StoreUserText();
    void userTextChanged();
    bool refuseKey(const QKeyEvent* key);
    void chooseFont();
    void startTransfer(TransferKind kind);
    void transferFinished(const TransferResult& result);
    void setBusy(bool busy);

    MainForm& m_owner;
    // The text of rtbFont as Write stores it: at most 96 UTF-16 units, the
    // slots after it stored as 0.
    QString m_userTextBuffer;
    // What the exchange reads into or sends from, kept alive while it runs.
    RadioImage m_transferImage;
    InfoTransfer* m_transfer = nullptr;
    TransferKind m_kind = TransferKind::Read;

    QLineEdit* m_txtRadioId = nullptr;
    QLineEdit* m_txtWriteData = nullptr;
    QPlainTextEdit* m_rtbFont = nullptr;
    QPushButton* m_cmdRead = nullptr;
    QPushButton* m_cmdWrite = nullptr;
    QPushButton* m_cmdClose = nullptr;
    QPushButton* m_cmdFont = nullptr;
};

} // namespace zr310::ui
