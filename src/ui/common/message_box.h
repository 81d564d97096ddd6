#pragma once

#include <QMessageBox>
#include <QString>

class QWidget;

namespace zr310::ui {

// Shows a modal message box and returns the button that closed it. Every box
// of the program goes through here, so each carries the object name "msgBox"
// and the same look.
QMessageBox::StandardButton
showMessageBox(QWidget* parent, QMessageBox::Icon icon, const QString& title, const QString& text,
               QMessageBox::StandardButtons buttons = QMessageBox::Ok,
               QMessageBox::StandardButton defaultButton = QMessageBox::NoButton);

} // namespace zr310::ui
