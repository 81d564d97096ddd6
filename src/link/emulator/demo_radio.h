#pragma once

#include "radio_image.h"

namespace zr310 {

// The memory of the radio that answers on the port named "sim": a 450-470 MHz
// radio with six channels programmed, a radio ID, a user text and a write
// date, so that a first read shows something.
RadioImage makeDemoRadioImage();

} // namespace zr310
