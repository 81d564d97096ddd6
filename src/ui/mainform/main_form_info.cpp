// The radio information window.
#include "frmInfo/frm_info.h"
#include "main_form.h"

namespace zr310::ui {

void MainForm::showRadioInfo() {
    FrmInfo window(*this);
    window.exec();
}

} // namespace zr310::ui
