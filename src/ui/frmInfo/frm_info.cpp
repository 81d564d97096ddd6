#include "frm_info.h"

#include "common/message_box.h"
#include "common/texts.h"
#include "main_form.h"
#include "packets.h"
#include "ports.h"
#include "radio_info.h"
#include "serial_transfer.h"

#include <QDateTime>
#include <QFontDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTextCursor>
#include <QTimer>

namespace zr310::ui {

namespace {

// The box shown when the text is full. Its line is shown as it stands, in
// both languages (texts 1404 and 1406 are not what it shows).
const QString kTextFullMessage = QStringLiteral(
    "LoadResString(1404 + gbytLang * 1000), vbOKOnly, LoadResString(1406 + gbytLang * 1000) "
    "'超出文本最大输入限度!\"ZR-310 PC编程软件");

const QString kUserTextHint = QStringLiteral("User-Defined Informations");

// The read keeps the user text, the write date and the radio ID.
constexpr int kInfoEndAddress = kRadioIdAddress + 16;

// A key that types into the box: a character, a line break, a paste, and
// Backspace, which is refused at the limit with the others.
bool addsText(const QKeyEvent* key) {
    if (key->matches(QKeySequence::Paste)) {
        return true;
    }
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Backspace:
        return true;
    default:
        break;
    }
    const QString typed = key->text();
    return !typed.isEmpty() && typed.front().isPrint();
}

// The PC's date and time in the system's short formats.
QString currentDateTimeText() {
    const QLocale locale = QLocale::system();
    const QDateTime now = QDateTime::currentDateTime();
    return locale.toString(now.date(), QLocale::ShortFormat) + QStringLiteral(", ") +
           locale.toString(now.time(), QLocale::ShortFormat);
}

} // namespace

FrmInfo::FrmInfo(MainForm& owner) : QDialog(&owner), m_owner(owner) {
    setObjectName(QStringLiteral("frmInfo"));
    setWindowTitle(res(txt::RadioInformation));

    auto* label1 = new QLabel(res(txt::RadioId) + QLatin1Char(':'), this);
    label1->setObjectName(QStringLiteral("Label1"));
    auto* label2 = new QLabel(res(txt::RecentWriteDate) + QLatin1Char(':'), this);
    label2->setObjectName(QStringLiteral("Label2"));
    auto readOnlyBox = [this](const char* name) {
        auto* box = new QLineEdit(this);
        box->setObjectName(QString::fromLatin1(name));
        box->setReadOnly(true);
        return box;
    };
    m_txtRadioId = readOnlyBox("txtRadioID");
    m_txtWriteData = readOnlyBox("txtWriteData");

    m_rtbFont = new QPlainTextEdit(this);
    m_rtbFont->setObjectName(QStringLiteral("rtbFont"));
    m_rtbFont->setPlaceholderText(kUserTextHint);
    m_rtbFont->setToolTip(kUserTextHint);
    m_rtbFont->setTabChangesFocus(true);
    m_rtbFont->setMinimumSize(fontMetrics().horizontalAdvance(QString(40, QLatin1Char('M'))),
                              fontMetrics().lineSpacing() * 5);
    m_rtbFont->installEventFilter(this);
    connect(m_rtbFont, &QPlainTextEdit::textChanged, this, &FrmInfo::userTextChanged);

    auto button = [this](const char* name, int textId) {
        auto* b = new QPushButton(res(textId), this);
        b->setObjectName(QString::fromLatin1(name));
        b->setAutoDefault(false);
        return b;
    };
    m_cmdRead = button("CmdRead", txt::ReadButton);
    m_cmdWrite = button("CmdWrite", txt::WriteButton);
    m_cmdFont = button("CmdFont", txt::FontButton);
    m_cmdClose = button("CmdClose", txt::CloseButton);
    connect(m_cmdRead, &QPushButton::clicked, this, [this] { startTransfer(TransferKind::Read); });
    connect(m_cmdWrite, &QPushButton::clicked, this, [this] {
        StoreUserText();
        startTransfer(TransferKind::Write);
    });
    connect(m_cmdFont, &QPushButton::clicked, this, &FrmInfo::chooseFont);
    connect(m_cmdClose, &QPushButton::clicked, this, &FrmInfo::reject);

    auto* fields = new QGridLayout;
    fields->addWidget(label1, 0, 0);
    fields->addWidget(m_txtRadioId, 0, 1);
    fields->addWidget(label2, 1, 0);
    fields->addWidget(m_txtWriteData, 1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(m_cmdRead);
    buttons->addWidget(m_cmdWrite);
    buttons->addStretch();
    buttons->addWidget(m_cmdFont);
    buttons->addWidget(m_cmdClose);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(fields);
    layout->addWidget(m_rtbFont, 1);
    layout->addLayout(buttons);
    resize(minimumSizeHint());
    m_rtbFont->setFocus();

    ShowUserText();
    ShowRadioInfo();
}

void FrmInfo::ShowUserText() {
    m_rtbFont->setPlainText(qs(decodeUserText(m_owner.image())));
}

// A radio never written shows the PC's date and time instead.
void FrmInfo::ShowRadioInfo() {
    const RadioImage& image = m_owner.image();
    m_txtRadioId->setText(qs(decodeRadioId(image)));
    const auto date = decodeWriteDate(image);
    m_txtWriteData->setText(date ? qs(*date) : currentDateTimeText());
}

// One undo step of the main window, and none when the text is unchanged.
void FrmInfo::StoreUserText() {
    const std::string text = m_userTextBuffer.toStdString();
    m_owner.edit([&text](RadioImage& image) { encodeUserText(image, text); });
}

// Keeps the box within 96 UTF-16 units however text arrives (typing over a
// selection, a paste, a drop, an input method): what does not fit is taken
// off the end of what was just put in, before the cursor, in the same undo
// step of the box. Then the buffer follows the box.
void FrmInfo::userTextChanged() {
    QString text = m_rtbFont->toPlainText();
    const qsizetype excess = text.size() - kUserTextLength;
    if (excess > 0) {
        QTextCursor cursor = m_rtbFont->textCursor();
        qsizetype end = cursor.position();
        if (end < excess || end > text.size()) {
            end = text.size();
        }
        qsizetype start = end - excess;
        if (start > 0 && text[start].isLowSurrogate() && text[start - 1].isHighSurrogate()) {
            --start; // a character is kept or dropped whole
        }
        cursor.joinPreviousEditBlock();
        cursor.setPosition(static_cast<int>(start));
        cursor.setPosition(static_cast<int>(end), QTextCursor::KeepAnchor);
        cursor.removeSelectedText(); // comes back here once, within the limit
        cursor.endEditBlock();
        return;
    }
    m_userTextBuffer = text;
}

bool FrmInfo::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_rtbFont && event->type() == QEvent::KeyPress &&
        refuseKey(static_cast<QKeyEvent*>(event))) {
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

// With the text full, a key that would add to it is dropped with a message;
// so is Backspace, deliberately. Delete, cutting, and typing or pasting over
// a selection still work.
bool FrmInfo::refuseKey(const QKeyEvent* key) {
    if (m_rtbFont->isReadOnly() || m_rtbFont->toPlainText().size() < kUserTextLength ||
        !addsText(key)) {
        return false;
    }
    if (m_rtbFont->textCursor().hasSelection() && key->key() != Qt::Key_Backspace) {
        return false;
    }
    showMessageBox(this, QMessageBox::NoIcon, res(txt::ProgramTitle), kTextFullMessage);
    return true;
}

// The font is only how the box shows the text: the radio gets character
// codes. The family and size the dialog holds are taken also when it is
// cancelled.
void FrmInfo::chooseFont() {
    QFontDialog dialog(m_rtbFont->font(), this);
    dialog.setObjectName(QStringLiteral("dlgFont"));
    dialog.setOption(QFontDialog::DontUseNativeDialog);
    dialog.exec();
    const QFont chosen = dialog.currentFont();
    QFont font = m_rtbFont->font();
    font.setFamilies(chosen.families());
    if (chosen.pointSizeF() > 0) {
        font.setPointSizeF(chosen.pointSizeF());
    }
    m_rtbFont->setFont(font);
}

void FrmInfo::startTransfer(TransferKind kind) {
    if (m_transfer != nullptr) {
        return;
    }
    m_kind = kind;
    m_transferImage = m_owner.image();
    m_transfer =
        new InfoTransfer(kind, m_owner.selectedPort(), m_transferImage, m_owner.linkFlags(), this);
    // Handled from the event loop, once the exchange has let go of the port.
    connect(m_transfer, &InfoTransfer::finished, this, [this](const TransferResult& result) {
        QTimer::singleShot(0, this, [this, result] { transferFinished(result); });
    });
    setBusy(true);
    m_transfer->start();
}

// Every exchange that got an answer ends with the completion message of its
// operation, also one that stopped early; a read then shows what the image
// holds, with the old bytes where blocks did not arrive.
void FrmInfo::transferFinished(const TransferResult& result) {
    m_transfer->deleteLater();
    m_transfer = nullptr;
    setBusy(false);
    if (result.messageId == 0) {
        showMessageBox(this, QMessageBox::Warning, res(txt::CommunicationError),
                       displayText(unreachableText(m_owner.selectedPort(), result.portProblem,
                                                   currentLanguage())));
        return;
    }
    const bool read = m_kind == TransferKind::Read;
    showMessageBox(this, QMessageBox::NoIcon, res(read ? txt::ReadFinished : txt::WriteFinished),
                   resDisplay(result.messageId));
    if (!read) {
        return;
    }
    const bool changed = m_owner.edit([this](RadioImage& image) {
        for (int address = kInfoFirstAddress; address < kInfoEndAddress; ++address) {
            image.setAtAddress(address, m_transferImage.atAddress(address));
        }
    });
    if (changed) {
        m_owner.ReFlashData();
    }
    ShowUserText();
    ShowRadioInfo();
}

void FrmInfo::setBusy(bool busy) {
    for (QPushButton* b : {m_cmdRead, m_cmdWrite, m_cmdFont, m_cmdClose}) {
        b->setEnabled(!busy);
    }
    m_rtbFont->setReadOnly(busy);
}

void FrmInfo::reject() {
    if (m_transfer != nullptr) {
        return;
    }
    QDialog::reject();
}

} // namespace zr310::ui
