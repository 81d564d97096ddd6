#pragma once

#include <string>
#include <string_view>

namespace zr310 {

enum class ShownAs {
    Ascii, // bytes of unknown meaning (a file's model tag): printable ASCII only
    Text,  // text a person wrote (a CSV field): UTF-8 letters stay as they are
};

// Bytes for a message, so that none of them hides or cuts it short: a control
// character (a NUL too) becomes \xNN, and so, for ShownAs::Ascii, does every
// byte outside printable ASCII, and the backslash and the double quote.
std::string shownBytes(std::string_view bytes, ShownAs as);

} // namespace zr310
