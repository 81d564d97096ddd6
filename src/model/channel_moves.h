#pragma once

#include "channel_rows.h"
#include "image_edit.h"
#include "radio_image.h"

#include <span>

namespace zr310 {

// Whole channels moved about among the 16: each operation takes a channel's
// record as it stands, every byte of its even and odd column (both
// frequencies with their step and bit-16 flags, both tones, scan, busy lock,
// power, bandwidth, Close and No TX), and changes nothing outside the 16
// records. channelBytes / setChannelBytes (channel_rows.h) read and write one
// record. A channel number outside 1..16 throws std::out_of_range and the
// image is left as it was.

// Exchanges the records of channels a and b.
void swapChannels(RadioImage& image, int a, int b);

// Moves channels first..last so that `first` lands on `to`; the channels
// between the old and the new place shift up or down to fill the gap. The
// moved block must fit: to + (last - first) <= 16.
void moveChannels(RadioImage& image, int first, int last, int to);

// Sorts the 16 channels by one field, stably (channels that compare equal
// keep their order), with every closed channel after the open ones in the
// order they had. Frequencies compare as frequencies, tones by kind (OFF,
// CTC, DCS, -DCS) and then by tone or code, the other fields by their
// English text ("Add" before "Del", "High" before "Low").
void sortChannels(RadioImage& image, ChannelField by = ChannelField::RxFreq);

// Puts an empty channel (clearChannels) at `at` and moves at..15 down one;
// channel 16 is pushed out. True when that channel was open, so that a
// caller working on a copy can ask before it keeps the result.
bool insertEmptyChannel(RadioImage& image, int at);

// Writes the start image's record over each channel given: closed, no
// transmit, 000.00000 MHz, tones OFF, Add, busy lock Off, High, Wide.
void clearChannels(RadioImage& image, std::span<const int> channels);

} // namespace zr310
