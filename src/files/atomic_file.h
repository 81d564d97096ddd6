#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <span>
#include <string>
#include <vector>

namespace zr310 {

enum class ReadStatus { Ok, TooLarge, Failed };

struct ReadResult {
    ReadStatus status = ReadStatus::Failed;
    std::vector<std::uint8_t> bytes; // the content when status is Ok
    std::string detail;              // why not, otherwise (without the path)
};

// Reads a regular file of at most maxBytes. A larger file is TooLarge and is
// not read in full; a directory, device or pipe is Failed without being opened.
ReadResult readWholeFile(const std::filesystem::path& path, std::size_t maxBytes);

struct WriteResult {
    bool ok = false;
    std::string detail; // why not, when not ok (without the path)
};

// Replaces the file at path with bytes, or leaves it as it was: the bytes go to
// a new file in the same directory, are flushed to the disk and only then
// renamed over the target. On any failure the new file is removed. A symbolic
// link is followed, so the file it points to is replaced; an existing file's
// permission bits are kept.
WriteResult writeFileAtomically(const std::filesystem::path& path,
                                std::span<const std::uint8_t> bytes);

} // namespace zr310
