#pragma once

#include "frequency.h"
#include "radio_image.h"

#include <functional>

namespace zr310::ui {

// How the panels of the main window change the radio image. One call is one
// user action and one undo step: `change` works on a copy of the image, which
// takes the image's place only when it differs; a change that throws (an
// EditError) leaves the image as it was. Returns whether any byte changed.
class ImageEditor {
public:
    virtual ~ImageEditor() = default;

    virtual const RadioImage& image() const = 0;
    virtual bool edit(const std::function<void(RadioImage&)>& change) = 0;
    // The limits of the band the model panel shows.
    virtual BandLimits bandLimits() const = 0;
};

} // namespace zr310::ui
