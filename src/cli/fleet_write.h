#pragma once

// Programming several radios from one data file at once: one write engine
// per port, all on one event loop, so a fleet takes about as long as one
// radio. A radio that does not answer or fails never stops the others.

#include "radio_image.h"
#include "string_table.h"

#include <ostream>
#include <string>
#include <vector>

namespace zr310 {

struct FleetOptions {
    Language language = Language::English;
    bool yes = false;    // write version-1.0 radios without asking
    bool verify = false; // read each radio back and compare
};

// Writes image into the radio on every port. Prints one line per port, in
// the order given ("PORT: what happened"), and returns the highest exit
// status of any port: 0 when every radio was written.
int writeFleet(const std::vector<std::string>& ports, const RadioImage& image,
               const FleetOptions& options, std::ostream& out);

} // namespace zr310
