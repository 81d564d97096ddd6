#pragma once

#include "link_types.h"

#include <QDialog>

class QCheckBox;

namespace zr310::ui {

// `frmWarning`: asked before writing to a version-1.0 radio. OK goes on with
// the write, Cancel stops it, `ChkNext` stops the question for the rest of
// the run. The answers go straight into the link's flags; closing the window
// by its close box leaves them as they were.
class FrmWarning : public QDialog {
    Q_OBJECT
public:
    explicit FrmWarning(LinkFlags& flags, QWidget* parent = nullptr);

private:
    LinkFlags& m_flags;
    QCheckBox* m_chkNext = nullptr;
};

} // namespace zr310::ui
