// The printed report, its preview and its PDF.
#include "main_form.h"

namespace zr310::ui {

void MainForm::filePrint() {}

void MainForm::filePrintPreview() {}

void MainForm::fileExportPdf() {}

} // namespace zr310::ui
