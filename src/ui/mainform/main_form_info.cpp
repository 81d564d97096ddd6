// The radio information window.
#include "main_form.h"

namespace zr310::ui {

void MainForm::showRadioInfo() {}

} // namespace zr310::ui
