#include "message_box.h"

namespace zr310::ui {

QMessageBox::StandardButton showMessageBox(QWidget* parent, QMessageBox::Icon icon,
                                           const QString& title, const QString& text,
                                           QMessageBox::StandardButtons buttons,
                                           QMessageBox::StandardButton defaultButton) {
    QMessageBox box(icon, title, text, buttons, parent);
    box.setObjectName(QStringLiteral("msgBox"));
    box.setTextFormat(Qt::PlainText);
    if (defaultButton != QMessageBox::NoButton) {
        box.setDefaultButton(defaultButton);
    }
    const int answer = box.exec();
    if (box.clickedButton() == nullptr) {
        // Closed with Esc or the close box: the escape button's answer.
        return box.escapeButton() != nullptr ? box.standardButton(box.escapeButton())
                                             : QMessageBox::Cancel;
    }
    return static_cast<QMessageBox::StandardButton>(answer);
}

} // namespace zr310::ui
