#pragma once

// Keeps two programs from changing one file at the same time. A save replaces
// the file by renaming a new one over it, so a lock on the file itself would
// be left behind on the old file; the lock is taken on a file of its own
// beside it instead: the name followed through its links, with
// ".zr310-lock" added ("radio.k720.zr310-lock"). The system drops the lock
// when its holder ends, also when it is killed; the empty lock file a killed
// holder leaves is simply taken over by the next one.

#include <chrono>
#include <filesystem>
#include <string>

namespace zr310 {

class FileLock {
public:
    enum class Status {
        Held,        // this process holds it
        Busy,        // another holder kept it for the whole wait
        Unsupported, // the file system keeps no locks; nothing is held
        Failed,      // the lock file could not be made or locked (error says why)
    };

    FileLock() = default;
    ~FileLock(); // releases the lock and removes the lock file
    FileLock(const FileLock&) = delete;
    FileLock& operator=(const FileLock&) = delete;

    // Locks `path` (which need not exist), waiting up to `wait` while another
    // holder has it. Call once.
    Status acquire(const std::filesystem::path& path, std::chrono::milliseconds wait);
    const std::string& error() const { return m_error; }
    const std::filesystem::path& lockPath() const { return m_lockPath; }

private:
    std::filesystem::path m_lockPath;
    std::string m_error;
#ifdef _WIN32
    void* m_handle = nullptr;
#else
    int m_fd = -1;
#endif
};

} // namespace zr310
