#pragma once

#include "atomic_file.h"
#include "radio_image.h"
#include "string_table.h"

#include <QDateTime>

#include <filesystem>

namespace zr310 {

// Writes the report as a PDF on A4 paper with its fonts embedded. The file is
// replaced as a whole or left as it was. Needs a running QGuiApplication (for
// the fonts); without one nothing is written.
WriteResult writeReportPdf(const std::filesystem::path& path, const RadioImage& image,
                           Language language, const QDateTime& printedAt);

} // namespace zr310
