// Opens the input as a data file (.k720) and as a raw image (.bin), the way
// the window and zr310-cli open a file by its name. A refused file leaves the
// image and the unnamed bytes kept beside it as they were. An accepted one is
// saved and opened again to the same image and unnamed bytes; a raw image
// saves back to the very bytes it came from.

#include "fuzz_input.h"
#include "k720_file.h"

#include <fstream>
#include <string>
#include <unistd.h>
#include <vector>

using namespace zr310;
using fuzz::check;

namespace {

// A folder of this process for the files, in memory when /dev/shm is there
// (saving syncs to the disk), removed at exit.
struct WorkFolder {
    std::filesystem::path path;

    WorkFolder() {
        std::error_code error;
        const std::filesystem::path shm = "/dev/shm";
        const auto base = std::filesystem::is_directory(shm, error)
                              ? shm
                              : std::filesystem::temp_directory_path();
        path = base / ("zr310-fuzz-" + std::to_string(::getpid()));
        std::filesystem::create_directories(path);
    }
    ~WorkFolder() {
        std::error_code error;
        std::filesystem::remove_all(path, error);
    }
};

const DateTime kSaveTime{2024, 5, 6, 7, 8, 9};

RadioImage patternedImage(std::size_t seed) {
    RadioImage image;
    for (std::size_t i = 0; i < RadioImage::kSize; ++i)
        image[i] = static_cast<std::uint8_t>(i * 37 + seed);
    return image;
}

FileExtras patternedExtras() {
    FileExtras extras;
    extras.bytes.fill(0xA5);
    return extras;
}

void writeBytes(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()),
              static_cast<std::streamsize>(bytes.size()));
    check(out.good(), "cannot write the input file");
}

std::vector<std::uint8_t> readBytes(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
}

void openAndSaveAgain(const std::filesystem::path& path, std::span<const std::uint8_t> bytes) {
    writeBytes(path, bytes);
    RadioImage image = patternedImage(11);
    FileExtras extras = patternedExtras();
    if (!openImageFile(path, image, &extras).ok()) {
        check(image == patternedImage(11), "a refused file changed the image");
        check(extras == patternedExtras(), "a refused file changed the unnamed bytes");
        return;
    }
    check(saveImageFile(path, image, kSaveTime, extras).ok(), "cannot save an opened file");
    if (isRawImagePath(path))
        check(readBytes(path) == std::vector(bytes.begin(), bytes.end()),
              "a raw image saves to other bytes");
    RadioImage again = patternedImage(99);
    FileExtras extrasAgain;
    check(openImageFile(path, again, &extrasAgain).ok(), "a saved file is refused");
    check(again == image, "a saved file opens to another image");
    check(extrasAgain == extras, "a saved file opens to other unnamed bytes");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const WorkFolder folder;
    const std::span<const std::uint8_t> bytes(data, size);
    openAndSaveAgain(folder.path / "radio.k720", bytes);
    openAndSaveAgain(folder.path / "radio.bin", bytes);
    return 0;
}
