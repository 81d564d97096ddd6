#pragma once

#include "radio_image.h"

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli diff A B [--json]
// Every difference between two data files or raw images in the keys of
// `set`: exit 0 when they are equal, 1 when they differ, 2 usage, 5 a file
// that cannot be read.
int runDiffCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err);

// The checks made before a write: true when the image passes; otherwise the
// findings go to err, one a line, and the answer is false.
bool passesWriteChecks(const RadioImage& image, std::ostream& err);

} // namespace zr310
