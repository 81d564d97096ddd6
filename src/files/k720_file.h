#pragma once

#include "radio_image.h"
#include "radio_info.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>

namespace zr310 {

// A data file (*.k720) is 1360 bytes, 85 lines of 16: a fixed text header, the
// radio image rearranged into the file's order, a save stamp and our marker.
// docs/data-file.md gives the complete map.
inline constexpr std::size_t kFileImageSize = 1360;
using FileImage = std::array<std::uint8_t, kFileImageSize>;

// A raw image (*.bin) is the radio's 1024 bytes in the radio's address order.
inline constexpr std::size_t kRawImageSize = RadioImage::kSize;

// Larger files are refused without being read in full.
inline constexpr std::size_t kMaxImageFileBytes = 64 * 1024;

// The bytes of an opened data file that the layout gives no meaning (those a
// file we make leaves zero; docs/data-file.md lists them), with zeros in every
// other place. Whoever opens a file keeps them beside the image and hands them
// to the save, so they are written back as they were read. The default is the
// zeros of a new file.
struct FileExtras {
    FileImage bytes{};

    bool operator==(const FileExtras&) const = default;
};

// Rearranges the image into a data file and fills in the header, the save
// stamp (saveTime, as YYYYMMDDhhmmss), the marker of our own files and the
// unnamed bytes from extras.
FileImage toFileImage(const RadioImage& image, const DateTime& saveTime,
                      const FileExtras& extras = {});

// Copies every area the file holds into the image. The columns that only our
// own files carry are copied only when the file has our marker; otherwise
// those bytes of the image keep their values.
void applyFileImage(const FileImage& file, RadioImage& image);

enum class FileError { None, IncorrectFileType, CannotRead, CannotWrite };

// The outcome of opening or saving a file. detail says why it failed, in
// words meant to follow the file's name in a message (an operating system
// error text, or why a file was not taken as a data file).
struct FileResult {
    FileError error = FileError::None;
    std::string detail;

    bool ok() const { return error == FileError::None; }
};

// Takes the bytes of a data file into the image when they are one: exactly
// 1360 bytes with the model tag "QK720M" at bytes 4..9. Otherwise returns
// IncorrectFileType and leaves the image as it was.
FileError loadDataFileBytes(std::span<const std::uint8_t> bytes, RadioImage& image);

// On success extras (when given) gets the file's unnamed bytes.
FileResult openDataFile(const std::filesystem::path& path, RadioImage& image,
                        FileExtras* extras = nullptr);
FileResult saveDataFile(const std::filesystem::path& path, const RadioImage& image,
                        const DateTime& saveTime, const FileExtras& extras = {});

// Takes exactly 1024 bytes in radio address order; anything else is
// IncorrectFileType and leaves the image as it was.
FileError loadRawImageBytes(std::span<const std::uint8_t> bytes, RadioImage& image);

FileResult openRawImage(const std::filesystem::path& path, RadioImage& image);
FileResult saveRawImage(const std::filesystem::path& path, const RadioImage& image);

// True for a name ending in ".bin" (any case): such files are raw images, any
// other name is a data file.
bool isRawImagePath(const std::filesystem::path& path);

// Open or save choosing the format by the file name (see isRawImagePath). A
// raw image has no unnamed bytes: opening one sets extras to zeros.
FileResult openImageFile(const std::filesystem::path& path, RadioImage& image,
                         FileExtras* extras = nullptr);
FileResult saveImageFile(const std::filesystem::path& path, const RadioImage& image,
                         const DateTime& saveTime, const FileExtras& extras = {});

} // namespace zr310
