#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// Whole channels moved about in FILE (or written to its copy OUT), each as
// set edits a file (editImageFile): all or nothing, OUT never replaced
// without --force, the file written locked from the read to the save.

// zr310-cli move FILE FROM TO [-o OUT [--force]]: FROM is a channel or a
// range "3-5"; it lands with its first channel on TO.
int runMoveCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

// zr310-cli sort FILE [--by KEY] [-o OUT [--force]]: KEY is a channel field
// key of set (rx_freq when not given).
int runSortCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

// zr310-cli clear FILE CHANNELS [-o OUT [--force]]: CHANNELS such as 3, 3-5
// or 2,7.
int runClearCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

} // namespace zr310
