#pragma once

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

// zr310-cli ports [--probe] [--json] [--port PORT]... [--lang en|zh]
// Lists the serial ports the system reports, then each --port that is none
// of them (a pseudo-terminal, a device path, "sim"), with what the system
// knows of each: description, manufacturer, USB VID:PID, serial number.
// --probe asks on every port at once whether a radio answers (RadioSearch:
// wake-up, identify, confirm, "END"; nothing is read or written) and which
// version it is, or why nothing answered. Exit status 0, or 3 with --probe
// when no radio answered on any port.
int runPortsCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace zr310
