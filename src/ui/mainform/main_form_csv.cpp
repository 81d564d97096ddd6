// Channels to and from CSV files.
#include "main_form.h"

namespace zr310::ui {

void MainForm::fileImportCsv() {}

void MainForm::fileExportCsv() {}

} // namespace zr310::ui
