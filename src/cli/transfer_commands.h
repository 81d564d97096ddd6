#pragma once

// The radio transfers of zr310-cli. PORT is COM1..COM4, a port name the
// system reports (/dev/ttyUSB0, COM7) or "sim", the emulated radio inside
// zr310-cli. Exit statuses are those of cli_common.h: 0 done, 2 usage,
// 3 no response, 4 interrupted, 5 file refused, 6 write to a version-1.0
// radio declined, 7 a --verify read back other bytes. A progress bar goes
// to stderr when it is a terminal. Every command takes --trace FILE (TraceScope).

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli read --port PORT -o OUT [--force] [--lang en|zh]
// OUT ends in .k720 (data file) or .bin (raw image); it is checked
// (checkOutputFile) before the port is opened. A read that does not complete
// writes nothing.
int runReadCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// zr310-cli write --port PORT IN [--yes] [--verify] [--lang en|zh]
// --yes answers the version-1.0 warning with "go on"; without it the
// warning is asked on a terminal and declined otherwise. --verify reads the
// radio back after the write and compares the written blocks.
int runWriteCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

// zr310-cli info --port PORT [--json] [--lang en|zh]
// zr310-cli info --port PORT --set-text TEXT [--verify] [--lang en|zh]
// Shows the radio ID, the recent write date and the user text, or sets the
// user text (read, then write back with the new text; --verify reads it back
// and compares the written blocks).
int runInfoCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace zr310
