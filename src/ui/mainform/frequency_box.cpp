#include "frequency_box.h"

#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>

#include <algorithm>
#include <cmath>

namespace zr310::ui {

namespace {

// Frequencies in whole units of 10 Hz, the resolution of the display.
constexpr long long kUnitsPerMHz = 100000;
constexpr long long kStepUnits = 625; // 6.25 kHz

bool isAccepted(QChar c) {
    return (c >= QLatin1Char('0') && c <= QLatin1Char('9')) || c == QLatin1Char('.');
}

} // namespace

FrequencyBox::FrequencyBox(QWidget* parent) : QLineEdit(parent) {
    setObjectName(QStringLiteral("txtInputBox"));
    setContextMenuPolicy(Qt::NoContextMenu);
    setAcceptDrops(false);
    setDragEnabled(false);
    setAlignment(Qt::AlignCenter);
    setFrame(false);
    hide();
}

void FrequencyBox::open(const QRect& cell, const QString& cellText, BandLimits limits,
                        const QString& typed) {
    m_savedText = cellText;
    m_limits = limits;
    m_open = true;
    setGeometry(cell);
    setEnabled(true);
    if (typed.isEmpty()) {
        setText(cellText);
        selectAll();
    } else {
        setText(typed);
        end(false);
    }
    show();
    setFocus(Qt::OtherFocusReason);
}

void FrequencyBox::finish() {
    if (m_open) {
        close(true, false);
    }
}

std::optional<std::string> FrequencyBox::frequencyToStore(bool accepted) const {
    if (!accepted || text() == m_savedText) {
        return std::nullopt;
    }
    return validateFrequencyText(text().toStdString(), m_limits);
}

QString FrequencyBox::stepped(const QString& text, BandLimits limits, bool up) {
    const auto units = std::llround(leadingNumber(text.toStdString()) * kUnitsPerMHz);
    const long long lower = limits.lowerMHz * kUnitsPerMHz;
    const long long upper = limits.upperMHz * kUnitsPerMHz;
    long long next = units;
    if (up && units < upper) {
        next = std::min(units + kStepUnits, upper);
    } else if (!up && units > lower) {
        next = std::max(units - kStepUnits, lower);
    }
    if (next == units) {
        return text;
    }
    return QString::fromStdString(formatFrequency(static_cast<double>(next) / kUnitsPerMHz));
}

void FrequencyBox::close(bool accepted, bool moveRight) {
    // Hiding the box takes its focus away; the edit must end only once.
    m_open = false;
    setEnabled(false);
    hide();
    emit closed(accepted, moveRight);
}

bool FrequencyBox::event(QEvent* event) {
    // Copy and Paste belong to the Edit menu, which pastes the clipboard in
    // place of the whole text; the box's own shortcuts must not take them.
    if (event->type() == QEvent::ShortcutOverride) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->matches(QKeySequence::Copy) || key->matches(QKeySequence::Paste)) {
            event->ignore();
            return false;
        }
    }
    return QLineEdit::event(event);
}

void FrequencyBox::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        close(true, true);
        return;
    case Qt::Key_Escape:
        setText(m_savedText);
        close(false, true);
        return;
    case Qt::Key_Up:
    case Qt::Key_Down:
        setText(stepped(text(), m_limits, event->key() == Qt::Key_Up));
        return;
    case Qt::Key_Backspace:
        QLineEdit::keyPressEvent(event);
        return;
    default:
        break;
    }
    if (event->matches(QKeySequence::Paste)) {
        return; // only through the Edit menu
    }
    const QString typed = event->text();
    const bool printable = !typed.isEmpty() && typed.at(0).isPrint() &&
                           !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (printable && !std::all_of(typed.begin(), typed.end(), isAccepted)) {
        return; // letters, signs and blanks are dropped
    }
    QLineEdit::keyPressEvent(event);
}

void FrequencyBox::focusOutEvent(QFocusEvent* event) {
    QLineEdit::focusOutEvent(event);
    // A menu or a list popping up is not leaving the box.
    if (m_open && event->reason() != Qt::PopupFocusReason) {
        close(true, false);
    }
}

void FrequencyBox::mousePressEvent(QMouseEvent* event) {
    // The middle button would paste the selection of X11 unchecked.
    if (event->button() == Qt::MiddleButton) {
        return;
    }
    QLineEdit::mousePressEvent(event);
}

} // namespace zr310::ui
