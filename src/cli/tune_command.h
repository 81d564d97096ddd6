#pragma once

// zr310-cli tune: tuning mode from the command line. PORT is as for the other
// radio commands (COM1..COM4, a device, or "sim").
//
//   tune --port PORT --get [--json]        the five stored tuning values
//   tune --port PORT [--keep] NAME=VALUE...
//                                          for each pair: enter the item, try
//                                          the value, then keep it (--keep)
//                                          or cancel it; prints each item's
//                                          stored value before and after
//   tune --port PORT --write-test FILE     write the test channels of FILE
//
// Every form enters tuning mode first (the "enter tuning mode" transfer, or
// the test channel write, which ends in tuning mode too) and leaves it at
// the end. NAME is low_battery, squelch9, squelch3, ctcss_deviation or
// cdcss_deviation; VALUE 0..255, decimal or 0x hex. Exit statuses as the
// other commands, and kExitRefused (8) when the radio refuses a frame.

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

int runTuneCommand(const std::vector<std::string>& args, std::ostream& out, std::ostream& err);

} // namespace zr310
