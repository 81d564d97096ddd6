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
// renamed over the target. On any failure the new file is removed. Symbolic
// links are followed, so the file they point to is replaced or, for a dangling
// link, created; the links stay. Only a regular file is replaced: a folder,
// device, pipe or socket in the way (or a link loop) is refused before anything
// is written. An existing file's permission bits are kept. After a save, this
// user's temporary files older than a minute in the target's folder (left by a
// save that was killed) are removed.
WriteResult writeFileAtomically(const std::filesystem::path& path,
                                std::span<const std::uint8_t> bytes);

// Why writeFileAtomically could not save at path, found out without writing:
// a folder, device, pipe or socket in the way, a link loop, or a folder to
// save in that does not exist. Empty when nothing stands in the way.
std::string saveProblem(const std::filesystem::path& path);

} // namespace zr310
