#pragma once

#include "atomic_file.h"
#include "radio_image.h"

#include <cstddef>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace zr310 {

// Channels as comma-separated text, one row a channel, in the column layout
// that channel list programs and spreadsheets exchange. docs/csv.md gives the
// mapping in both directions.

// Sixteen rows take about two kilobytes; a larger file is not read.
inline constexpr std::size_t kMaxCsvBytes = 1024 * 1024;

// The header and one row for each open channel, UTF-8 with CRLF line ends.
std::string exportChannelsCsv(const RadioImage& image);

// Writes exportChannelsCsv(image) to path atomically.
WriteResult saveChannelsCsv(const std::filesystem::path& path, const RadioImage& image);

// A CSV text the importer refuses. The message names the line, as
// "line 7: 440.000000 MHz is outside the band 136 - 174MHz".
class CsvError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Sets each channel named by a row's Location from that row; other channels
// and the busy lock keep their values. All or nothing: on a refusal throws
// CsvError and leaves the image unchanged. Returns the number of rows taken.
int importChannelsCsv(RadioImage& image, std::string_view text);

} // namespace zr310
