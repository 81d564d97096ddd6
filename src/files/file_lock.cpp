#include "file_lock.h"

#include <cerrno>
#include <system_error>
#include <thread>

#ifdef _WIN32
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zr310 {

namespace fs = std::filesystem;

namespace {

using Clock = std::chrono::steady_clock;

// How often a held lock is tried again while waiting for it.
constexpr std::chrono::milliseconds kRetryInterval{50};

// Two names of one file (a link, "./x", "../dir/x") lock alike.
fs::path lockPathFor(const fs::path& path) {
    std::error_code error;
    fs::path resolved = fs::weakly_canonical(path, error);
    if (error || resolved.empty())
        resolved = path;
    resolved += ".zr310-lock";
    return resolved;
}

} // namespace

#ifdef _WIN32

// The lock file is opened without sharing, so that the open itself is the
// lock, and deleted by the system when the handle is closed.
FileLock::Status FileLock::acquire(const fs::path& path, std::chrono::milliseconds wait) {
    m_lockPath = lockPathFor(path);
    const auto deadline = Clock::now() + wait;
    for (;;) {
        HANDLE handle =
            CreateFileW(m_lockPath.c_str(), GENERIC_READ | GENERIC_WRITE | DELETE, 0, nullptr,
                        OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL | FILE_FLAG_DELETE_ON_CLOSE, nullptr);
        if (handle != INVALID_HANDLE_VALUE) {
            m_handle = handle;
            return Status::Held;
        }
        const DWORD error = GetLastError();
        // Access is also denied for a moment while the last holder's file is
        // being deleted.
        const bool held = error == ERROR_SHARING_VIOLATION;
        if ((!held && error != ERROR_ACCESS_DENIED) || Clock::now() >= deadline) {
            if (held)
                return Status::Busy;
            m_error = std::system_category().message(static_cast<int>(error));
            return Status::Failed;
        }
        std::this_thread::sleep_for(kRetryInterval);
    }
}

FileLock::~FileLock() {
    if (m_handle != nullptr)
        CloseHandle(m_handle);
}

#else

namespace {

// Whether fd is still the file at path: a holder removes the lock file as it
// lets go, and whoever locked that removed file must lock the new one.
bool isFileAt(int fd, const fs::path& path) {
    struct stat locked {
    }, named{};
    return ::fstat(fd, &locked) == 0 && ::stat(path.c_str(), &named) == 0 &&
           locked.st_dev == named.st_dev && locked.st_ino == named.st_ino;
}

bool locksUnsupported(int error) {
    return error == ENOLCK || error == EOPNOTSUPP || error == ENOTSUP || error == ENOSYS;
}

} // namespace

FileLock::Status FileLock::acquire(const fs::path& path, std::chrono::milliseconds wait) {
    m_lockPath = lockPathFor(path);
    const auto deadline = Clock::now() + wait;
    for (;;) {
        const int fd = ::open(m_lockPath.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0666);
        if (fd < 0) {
            m_error = std::generic_category().message(errno);
            return Status::Failed;
        }
        if (::flock(fd, LOCK_EX | LOCK_NB) == 0) {
            if (isFileAt(fd, m_lockPath)) {
                m_fd = fd;
                return Status::Held;
            }
            ::close(fd);
            continue;
        }
        const int error = errno;
        ::close(fd);
        if (locksUnsupported(error)) {
            ::unlink(m_lockPath.c_str());
            return Status::Unsupported;
        }
        if (error != EWOULDBLOCK && error != EINTR) {
            m_error = std::generic_category().message(error);
            return Status::Failed;
        }
        if (Clock::now() >= deadline)
            return Status::Busy;
        std::this_thread::sleep_for(kRetryInterval);
    }
}

FileLock::~FileLock() {
    if (m_fd < 0)
        return;
    // Removed while still locked, so that nobody locks it after us unseen.
    ::unlink(m_lockPath.c_str());
    ::close(m_fd);
}

#endif

} // namespace zr310
