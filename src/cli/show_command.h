#pragma once

#include "image_summary.h"

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli show FILE [--json] [--lang en|zh]
int runShowCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

std::string summaryAsJson(const ImageSummary& summary);
std::string summaryAsTable(const ImageSummary& summary, Language language);

} // namespace zr310
