#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli export-csv FILE -o OUT.csv [--force]
// One row for each open channel of FILE (docs/csv.md).
int runExportCsvCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

// zr310-cli import-csv FILE IN.csv [-o OUT [--force]]
// Sets the channels IN.csv names and saves FILE (or OUT), holding the lock of
// the file it saves throughout (lockForEditing). A refused CSV file changes
// nothing and its message names the line.
int runImportCsvCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

} // namespace zr310
