#pragma once

#include <QDialog>

namespace zr310::ui {

// The about box `frmAbout`: the program's title, year and version, and who
// made it.
class FrmAbout : public QDialog {
    Q_OBJECT
public:
    explicit FrmAbout(QWidget* parent = nullptr);

    static QString makerName();
};

} // namespace zr310::ui
