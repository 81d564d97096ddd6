#include "k720_file.h"

#include "atomic_file.h"
#include "shown_bytes.h"

#include <algorithm>
#include <cstdio>
#include <string_view>

namespace zr310 {

namespace {

// File bytes 0x00..0x28, rewritten on every save: two length-prefixed texts
// naming the model ("QK720M PC" and the words for programming software, in
// GB2312) and the version ("= 1.1"), then five fixed bytes.
constexpr std::array<std::uint8_t, 0x29> kHeader = {
    0x08, 0x00, 0x12, 0x00, 'Q',  'K',  '7',  '2',  '0',  'M',  0x20, 0x50, 0x43, 0xB1,
    0xE0, 0xB3, 0xCC, 0xC8, 0xED, 0xBC, 0xFE, 0x2E, 0x08, 0x00, 0x0A, 0x00, 0xB0, 0xE6,
    0xB1, 0xBE, 0x20, 0x3D, 0x20, 0x31, 0x2E, 0x31, 0x11, 0x20, 0x02, 0x00, 0x10};

constexpr std::size_t kTagOffset = 4;
constexpr std::string_view kTag = "QK720M";

constexpr std::size_t kFixedOffset = 0x4E0;
constexpr std::array<std::uint8_t, 5> kFixed = {0x11, 0x20, 0x01, 0x00, 0x10};

constexpr std::size_t kStampOffset = 0x4EC; // 14 digits, YYYYMMDDhhmmss
constexpr std::size_t kStampLength = 14;

// Files we write carry this marker; only then do they hold the extra columns.
constexpr std::size_t kMarkerOffset = 0x4FA;
constexpr std::string_view kMarker = "ZR310X";

// Where the eight blocks of one image column lie in the file: block b at
// first + stride * b. extra marks the columns that only our own files hold.
struct ColumnPlace {
    std::size_t first = 0;
    std::size_t stride = 1;
    bool extra = false;
};

constexpr ColumnPlace placeOf(int column) {
    const auto c = static_cast<std::size_t>(column);
    if (c < 0x20) // channels: one 16-byte row per block, even then odd columns
        return {(c % 2 == 0 ? 0x038 : 0x0B8) + c / 2, 0x10, false};
    if (c < 0x36) // test channels: 11 to a block
        return {(c % 2 == 0 ? 0x1B0 : 0x208) + (c - 0x20) / 2, 11, false};
    if (c < 0x56)
        return {0x260 + 8 * (c - 0x36), 1, true};
    if (c == 0x56 || c == 0x57) // options
        return {0x394 + 8 * (c - 0x56), 1, false};
    if (c < 0x5E)
        return {0x3A4 + 8 * (c - 0x58), 1, true};
    if (c == 0x5E) // tuning values
        return {0x404, 1, false};
    if (c == 0x5F)
        return {0x360, 1, true};
    // User text 0x60..0x77, then the write date and radio identifier columns
    // 0x78..0x7F: two columns a file line, the even one in bytes 0-7 and the
    // odd one in bytes 8-15.
    if (c < 0x78)
        return {0x420 + 8 * (c - 0x60), 1, false};
    return {0x500 + 8 * (c - 0x78), 1, true};
}

constexpr std::size_t fileOffset(int column, int block) {
    const ColumnPlace place = placeOf(column);
    return place.first + place.stride * static_cast<std::size_t>(block);
}

// Every image byte has a file byte of its own, clear of the header, the fixed
// bytes, the stamp and the marker.
constexpr bool layoutIsSound() {
    std::array<bool, kFileImageSize> used{};
    for (int column = 0; column < RadioImage::kColumns; ++column) {
        for (int block = 0; block < RadioImage::kBlocks; ++block) {
            const std::size_t at = fileOffset(column, block);
            if (at < kHeader.size() || at >= kFileImageSize || used[at] ||
                (at >= kFixedOffset && at < kMarkerOffset + kMarker.size()))
                return false;
            used[at] = true;
        }
    }
    return true;
}
static_assert(layoutIsSound());

// The file bytes the layout gives a meaning: the header, the image, the fixed
// bytes, the stamp and the marker. Saving writes the others from FileExtras.
constexpr std::array<bool, kFileImageSize> namedBytes() {
    std::array<bool, kFileImageSize> named{};
    for (std::size_t at = 0; at < kHeader.size(); ++at)
        named[at] = true;
    for (std::size_t at = kFixedOffset; at < kFixedOffset + kFixed.size(); ++at)
        named[at] = true;
    for (std::size_t at = kStampOffset; at < kMarkerOffset + kMarker.size(); ++at)
        named[at] = true; // the stamp runs straight into the marker
    for (int column = 0; column < RadioImage::kColumns; ++column)
        for (int block = 0; block < RadioImage::kBlocks; ++block)
            named[fileOffset(column, block)] = true;
    return named;
}
constexpr std::array<bool, kFileImageSize> kNamed = namedBytes();
static_assert(kStampOffset + kStampLength == kMarkerOffset);

FileExtras extrasOf(std::span<const std::uint8_t> file) {
    FileExtras extras;
    for (std::size_t at = 0; at < kFileImageSize; ++at)
        extras.bytes[at] = kNamed[at] ? 0 : file[at];
    return extras;
}

bool hasMarker(const FileImage& file) {
    return std::equal(kMarker.begin(), kMarker.end(), file.begin() + kMarkerOffset);
}

// Why the bytes are not a data file, or nothing when they are one.
std::string whyNotDataFile(std::span<const std::uint8_t> bytes) {
    if (bytes.size() != kFileImageSize)
        return "a data file has " + std::to_string(kFileImageSize) + " bytes, this one has " +
               std::to_string(bytes.size());
    const auto tag = bytes.subspan(kTagOffset, kTag.size());
    if (!std::equal(kTag.begin(), kTag.end(), tag.begin()))
        return "the model tag at bytes 4..9 is \"" +
               shownBytes({reinterpret_cast<const char*>(tag.data()), tag.size()}, ShownAs::Ascii) +
               "\", not \"" + std::string(kTag) + "\"";
    return {};
}

FileResult fromRead(const ReadResult& read) {
    if (read.status == ReadStatus::TooLarge)
        return {FileError::IncorrectFileType, read.detail};
    return {FileError::CannotRead, read.detail};
}

FileResult fromWrite(const WriteResult& write) {
    return write.ok ? FileResult{} : FileResult{FileError::CannotWrite, write.detail};
}

} // namespace

FileImage toFileImage(const RadioImage& image, const DateTime& saveTime, const FileExtras& extras) {
    FileImage file = extras.bytes; // every named byte is written below
    std::copy(kHeader.begin(), kHeader.end(), file.begin());
    for (int column = 0; column < RadioImage::kColumns; ++column)
        for (int block = 0; block < RadioImage::kBlocks; ++block)
            file[fileOffset(column, block)] = image.at(column, block);
    std::copy(kFixed.begin(), kFixed.end(), file.begin() + kFixedOffset);

    const auto clamp = [](int value, int most) { return std::clamp(value, 0, most); };
    char stamp[kStampLength + 1];
    std::snprintf(stamp, sizeof stamp, "%04d%02d%02d%02d%02d%02d", clamp(saveTime.year, 9999),
                  clamp(saveTime.month, 99), clamp(saveTime.day, 99), clamp(saveTime.hour, 99),
                  clamp(saveTime.minute, 99), clamp(saveTime.second, 99));
    std::copy(stamp, stamp + kStampLength, file.begin() + kStampOffset);
    std::copy(kMarker.begin(), kMarker.end(), file.begin() + kMarkerOffset);
    return file;
}

void applyFileImage(const FileImage& file, RadioImage& image) {
    const bool ours = hasMarker(file);
    for (int column = 0; column < RadioImage::kColumns; ++column) {
        if (placeOf(column).extra && !ours)
            continue;
        for (int block = 0; block < RadioImage::kBlocks; ++block)
            image.set(column, block, file[fileOffset(column, block)]);
    }
}

FileError loadDataFileBytes(std::span<const std::uint8_t> bytes, RadioImage& image) {
    if (!whyNotDataFile(bytes).empty())
        return FileError::IncorrectFileType;
    FileImage file;
    std::copy(bytes.begin(), bytes.end(), file.begin());
    applyFileImage(file, image);
    return FileError::None;
}

FileResult openDataFile(const std::filesystem::path& path, RadioImage& image, FileExtras* extras) {
    const ReadResult read = readWholeFile(path, kMaxImageFileBytes);
    if (read.status != ReadStatus::Ok)
        return fromRead(read);
    if (loadDataFileBytes(read.bytes, image) != FileError::None)
        return {FileError::IncorrectFileType, whyNotDataFile(read.bytes)};
    if (extras)
        *extras = extrasOf(read.bytes);
    return {};
}

FileResult saveDataFile(const std::filesystem::path& path, const RadioImage& image,
                        const DateTime& saveTime, const FileExtras& extras) {
    return fromWrite(writeFileAtomically(path, toFileImage(image, saveTime, extras)));
}

FileError loadRawImageBytes(std::span<const std::uint8_t> bytes, RadioImage& image) {
    if (bytes.size() != kRawImageSize)
        return FileError::IncorrectFileType;
    image = RadioImage::fromRadioOrder(bytes.first<kRawImageSize>());
    return FileError::None;
}

FileResult openRawImage(const std::filesystem::path& path, RadioImage& image) {
    const ReadResult read = readWholeFile(path, kMaxImageFileBytes);
    if (read.status != ReadStatus::Ok)
        return fromRead(read);
    if (loadRawImageBytes(read.bytes, image) != FileError::None)
        return {FileError::IncorrectFileType, "a raw image has " + std::to_string(kRawImageSize) +
                                                  " bytes, this one has " +
                                                  std::to_string(read.bytes.size())};
    return {};
}

FileResult saveRawImage(const std::filesystem::path& path, const RadioImage& image) {
    return fromWrite(writeFileAtomically(path, image.toRadioOrder()));
}

bool isRawImagePath(const std::filesystem::path& path) {
    const auto extension = path.extension().native();
    constexpr std::string_view kRaw = ".bin";
    if (extension.size() != kRaw.size())
        return false;
    for (std::size_t i = 0; i < kRaw.size(); ++i) {
        auto ch = extension[i];
        if (ch >= 'A' && ch <= 'Z')
            ch = static_cast<decltype(ch)>(ch - 'A' + 'a');
        if (ch != static_cast<decltype(ch)>(kRaw[i]))
            return false;
    }
    return true;
}

FileResult openImageFile(const std::filesystem::path& path, RadioImage& image, FileExtras* extras) {
    if (!isRawImagePath(path))
        return openDataFile(path, image, extras);
    FileResult result = openRawImage(path, image);
    if (result.ok() && extras)
        *extras = {};
    return result;
}

FileResult saveImageFile(const std::filesystem::path& path, const RadioImage& image,
                         const DateTime& saveTime, const FileExtras& extras) {
    return isRawImagePath(path) ? saveRawImage(path, image)
                                : saveDataFile(path, image, saveTime, extras);
}

} // namespace zr310
