// Imports the input as channel CSV (docs/csv.md): the first byte picks the
// band of an image with every channel closed, the rest is the text. A refused
// import leaves the image as it was. An accepted one exports, and that export
// imports into the result to the very same bytes: every channel an import can
// set is written out in full.

#include "bands.h"
#include "csv_channels.h"
#include "fuzz_input.h"

#include <cstdio>
#include <string>

using namespace zr310;
using fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0)
        return 0;
    RadioImage image = makeStartImage();
    setBand(image, data[0] % static_cast<int>(kBands.size()));
    const RadioImage before = image;
    const std::string_view text(reinterpret_cast<const char*>(data + 1), size - 1);
    try {
        importChannelsCsv(image, text);
    } catch (const CsvError&) {
        check(image == before, "a refused import changed the image");
        return 0;
    }

    const std::string exported = exportChannelsCsv(image);
    RadioImage again = image;
    try {
        importChannelsCsv(again, exported);
    } catch (const CsvError& error) {
        std::fprintf(stderr, "%s\nrefusing its own export:\n%s\n", error.what(), exported.c_str());
        fuzz::fail("an export is refused");
    }
    if (again != image)
        std::fprintf(stderr, "the export:\n%s\n", exported.c_str());
    check(again == image, "an export imports to other bytes");
    return 0;
}
