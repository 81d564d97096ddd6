#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli report FILE -o OUT.pdf [--force] [--lang en|zh]
// Writes the printed report of FILE as a PDF; --lang chooses the language of
// the values (the captions are the report's fixed Chinese texts). Starts a
// QGuiApplication for the fonts, on the offscreen platform unless
// QT_QPA_PLATFORM names another.
int runReportCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

} // namespace zr310
