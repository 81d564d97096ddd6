#pragma once

#include <optional>
#include <string_view>
#include <vector>

namespace zr310 {

// Channel numbers as the command line and keys write them: one number ("3"),
// a range ("3-5"), or a comma list of either ("2,7", "1-3,9"). Each number is
// 1..count with at most two digits; a range runs upwards. The numbers come
// back ascending, each once (a channel named twice counts once). Nothing for
// any other text: blanks, an empty item, "5-3", "0", "17" of 16.
std::optional<std::vector<int>> parseChannelList(std::string_view text, int count);

} // namespace zr310
