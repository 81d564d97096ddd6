#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli new OUT [--force]
int runNewCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

// zr310-cli set FILE KEY=VALUE... [-o OUT [--force]] [--lang en|zh]; set
// --help lists every key with its values. Holds the lock of the file it saves
// from the read to the save (lockForEditing).
int runSetCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

} // namespace zr310
