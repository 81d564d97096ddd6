#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli new OUT [--force]
int runNewCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

// zr310-cli set FILE KEY=VALUE... [-o OUT] [--lang en|zh]; set --help lists
// every key with its values.
int runSetCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

} // namespace zr310
