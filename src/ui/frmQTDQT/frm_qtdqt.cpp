#include "frm_qtdqt.h"

#include "common/texts.h"
#include "tones.h"

#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QRegularExpressionValidator>
#include <QTableWidgetItem>
#include <QVBoxLayout>

#include <cmath>

namespace zr310::ui {

namespace {

constexpr int kCodeDigits = 3;

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

// A typed DCS code as the radio can hold it: the first three digits, 8 and 9
// lowered to 7 (a code is octal), left-padded with zeros ("" -> "000",
// "1" -> "001", "19" -> "017").
QString octalCode(const QString& typed) {
    QString code;
    for (QChar c : typed) {
        if (isDigit(c) && code.size() < kCodeDigits) {
            code += c > QLatin1Char('7') ? QLatin1Char('7') : c;
        }
    }
    return code.rightJustified(kCodeDigits, QLatin1Char('0'));
}

// The list index for a tone text. A tone that is not on the list (a value
// read from an image another program wrote, say "CTC 100.5") selects the
// nearest listed tone, the lower one on a tie: the list cannot be edited and
// only listed tones can be stored, so OK always gives a tone the channel can
// take. Text that is not a number selects the first tone.
int nearestTone(const QComboBox* list, const QString& tone) {
    bool ok = false;
    const double wanted = tone.toDouble(&ok);
    if (!ok) {
        return 0;
    }
    int best = 0;
    double bestDistance = HUGE_VAL;
    for (int i = 0; i < list->count(); ++i) {
        const double distance = std::abs(list->itemText(i).toDouble() - wanted);
        if (distance < bestDistance) {
            best = i;
            bestDistance = distance;
        }
    }
    return best;
}

QStringList toQStringList(const std::vector<std::string>& items) {
    QStringList list;
    for (const std::string& item : items) {
        list << qs(item);
    }
    return list;
}

} // namespace

FrmQTDQT::FrmQTDQT(int sideMarker, int row, const QString& sideText, QWidget* parent)
    : QDialog(parent), m_sideMarker(sideMarker), m_row(row), m_result(sideText) {
    setObjectName(QStringLiteral("frmQTDQT"));
    setWindowTitle(res(txt::SignallingSetting));

    m_frame = new QGroupBox(res(txt::CtcDcsSignalling), this);
    m_frame->setObjectName(QStringLiteral("Frame1"));
    auto option = [this](const char* name, const char* caption) {
        auto* button = new QRadioButton(QString::fromLatin1(caption), m_frame);
        button->setObjectName(QString::fromLatin1(name));
        connect(button, &QRadioButton::toggled, this, &FrmQTDQT::updateEnabled);
        return button;
    };
    m_optOff = option("OptOFF", "OFF");
    m_optCtc = option("OptCTC", "CTC");
    m_cboCtc = new QComboBox(m_frame);
    m_cboCtc->setObjectName(QStringLiteral("CboCTC"));
    m_cboCtc->addItems(toQStringList(SetQtcodeArray()));
    m_cboCtc->setMaxVisibleItems(12);
    m_optDcs = option("OptDCS", "DCS");
    m_cboDcs = new QComboBox(m_frame);
    m_cboDcs->setObjectName(QStringLiteral("CboDCS"));
    m_cboDcs->setEditable(true);
    m_cboDcs->addItems(toQStringList(SetDQtcodeArray()));
    m_cboDcs->setMaxVisibleItems(12);
    // Typed codes are checked by hand, not completed to a listed code or
    // added to the list.
    m_cboDcs->setCompleter(nullptr);
    m_cboDcs->setInsertPolicy(QComboBox::NoInsert);
    // The key filter below keeps typing to three digits; the validator holds
    // the same line for what arrives another way (dropped text, an input
    // method, a middle-button paste).
    m_cboDcs->setValidator(new QRegularExpressionValidator(
        QRegularExpression(QStringLiteral("[0-9]{0,3}")), m_cboDcs));
    m_cboDcs->installEventFilter(this);
    m_cboDcs->lineEdit()->installEventFilter(this);
    m_chkDcs = new QCheckBox(res(txt::DcsInvert), m_frame);
    m_chkDcs->setObjectName(QStringLiteral("ChkDCS"));

    auto* grid = new QGridLayout(m_frame);
    grid->setColumnMinimumWidth(1, fontMetrics().horizontalAdvance(QStringLiteral("0000000000")));
    grid->addWidget(m_optOff, 0, 0);
    grid->addWidget(m_optCtc, 1, 0);
    grid->addWidget(m_cboCtc, 1, 1);
    grid->addWidget(m_optDcs, 2, 0);
    grid->addWidget(m_cboDcs, 2, 1);
    grid->addWidget(m_chkDcs, 3, 1);
    grid->setColumnStretch(1, 1);

    m_cmdOk = new QPushButton(res(txt::OkButton), this);
    m_cmdOk->setObjectName(QStringLiteral("CmdOK"));
    m_cmdOk->setDefault(true);
    m_cmdCancel = new QPushButton(res(txt::CancelButton), this);
    m_cmdCancel->setObjectName(QStringLiteral("CmdCancel"));
    connect(m_cmdOk, &QPushButton::clicked, this, &FrmQTDQT::okClicked);
    connect(m_cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cmdOk);
    buttons->addWidget(m_cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_frame);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    showText(sideText);
}

// "OFF", "CTC <tone>", "DCS <code>" or "-DCS <code>"; anything else shows as
// off. A code that is not on the list stays in the box as typed text.
void FrmQTDQT::showText(const QString& sideText) {
    QRadioButton* checked = m_optOff;
    if (sideText.startsWith(QLatin1String("CTC"))) {
        checked = m_optCtc;
        m_cboCtc->setCurrentIndex(nearestTone(m_cboCtc, sideText.mid(3).trimmed()));
    } else if (sideText.startsWith(QLatin1String("DCS")) ||
               sideText.startsWith(QLatin1String("-DCS"))) {
        checked = m_optDcs;
        m_dcsInvert = sideText.startsWith(QLatin1Char('-'));
        m_chkDcs->setChecked(m_dcsInvert);
        const QString code = octalCode(sideText.mid(m_dcsInvert ? 4 : 3).trimmed());
        const int index = m_cboDcs->findText(code);
        m_cboDcs->setCurrentIndex(index);
        if (index < 0) {
            m_cboDcs->setEditText(code);
        }
    }
    checked->setChecked(true);
    checked->setFocus();
    updateEnabled();
}

// Off: no list and no invert. CTCSS: the tone list only. DCS: the code list
// and the invert box.
void FrmQTDQT::updateEnabled() {
    m_cboCtc->setEnabled(m_optCtc->isChecked());
    m_cboDcs->setEnabled(m_optDcs->isChecked());
    m_chkDcs->setEnabled(m_optDcs->isChecked());
}

// While the code list has the focus, keys go to the list, which hands them to
// its line edit without passing another filter; the line edit is watched too
// for keys sent to it directly.
bool FrmQTDQT::eventFilter(QObject* watched, QEvent* event) {
    if (watched == m_cboDcs || watched == m_cboDcs->lineEdit()) {
        if (event->type() == QEvent::KeyPress) {
            return filterDcsKey(static_cast<QKeyEvent*>(event));
        }
        if (event->type() == QEvent::FocusOut &&
            static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
            validateDcsCode();
        }
    }
    return QDialog::eventFilter(watched, event);
}

// True when the key is used up here. Return and Enter go to OK without
// pressing it, Esc goes to Cancel without closing the dialog; a digit is
// typed while there is room for it (or it replaces a selection); keys with
// no printable character (Backspace, Delete, the cursor keys, Tab, Ctrl+A)
// pass; every other character is dropped.
bool FrmQTDQT::filterDcsKey(QKeyEvent* key) {
    switch (key->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        m_cmdOk->setFocus(Qt::OtherFocusReason);
        validateDcsCode();
        return true;
    case Qt::Key_Escape:
        m_cmdCancel->setFocus(Qt::OtherFocusReason);
        return true;
    default:
        break;
    }
    if (key->matches(QKeySequence::Paste)) {
        pasteDcsCode();
        return true;
    }
    const QString typed = key->text();
    if (typed.isEmpty() || !typed.front().isPrint()) {
        return false;
    }
    if (typed.size() == 1 && isDigit(typed.front())) {
        const QLineEdit* edit = m_cboDcs->lineEdit();
        return edit->text().size() >= kCodeDigits && !edit->hasSelectedText();
    }
    return true;
}

// Pastes the digits of the clipboard text, as many as there is room for.
void FrmQTDQT::pasteDcsCode() {
    QLineEdit* edit = m_cboDcs->lineEdit();
    QString digits;
    for (QChar c : QApplication::clipboard()->text()) {
        if (isDigit(c)) {
            digits += c;
        }
    }
    const qsizetype room = kCodeDigits - (edit->text().size() - edit->selectedText().size());
    if (room > 0 && !digits.isEmpty()) {
        edit->insert(digits.left(room));
    }
}

void FrmQTDQT::validateDcsCode() {
    const QString code = octalCode(m_cboDcs->currentText());
    if (code != m_cboDcs->currentText()) {
        m_cboDcs->setEditText(code);
    }
}

void FrmQTDQT::okClicked() {
    validateDcsCode();
    m_dcsInvert = m_chkDcs->isChecked();
    if (m_optCtc->isChecked()) {
        m_result = QStringLiteral("CTC ") + m_cboCtc->currentText();
    } else if (m_optDcs->isChecked()) {
        m_result = (m_dcsInvert ? QStringLiteral("-DCS ") : QStringLiteral("DCS ")) +
                   m_cboDcs->currentText();
    } else {
        m_result = QStringLiteral("OFF");
    }
    accept();
}

std::optional<QString> FrmQTDQT::chooseFor(QTableWidgetItem* cell, int sideMarker, int row,
                                           QWidget* parent) {
    constexpr QRgb kEditingCell = qRgb(0xFF, 0xFF, 0x00); // yellow, 0x00FFFF
    const QString before = cell->text();
    const QVariant background = cell->data(Qt::BackgroundRole);
    cell->setBackground(QColor(kEditingCell));
    FrmQTDQT dialog(sideMarker, row, before, parent);
    const bool ok = dialog.exec() == QDialog::Accepted;
    cell->setData(Qt::BackgroundRole, background);
    if (!ok || dialog.resultText() == before) {
        return std::nullopt;
    }
    return dialog.resultText();
}

} // namespace zr310::ui
