#include "atomic_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#ifndef NOMINMAX
#define NOMINMAX
#endif
#include <windows.h>
#else
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

namespace zr310 {

namespace fs = std::filesystem;

namespace {

std::string errnoText(int error) {
    return std::generic_category().message(error);
}

// The few file system calls that differ between the platforms. Each returns
// what the C library returns and leaves the reason in errno, except
// replaceFile, which returns the error text (empty on success).
#ifdef _WIN32
int openNewFile(const fs::path& path) {
    return _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                  _S_IREAD | _S_IWRITE);
}
long long writeSome(int fd, const std::uint8_t* data, std::size_t size) {
    return _write(fd, data, static_cast<unsigned>(std::min<std::size_t>(size, 1u << 20)));
}
int flushToDisk(int fd) {
    return _commit(fd);
}
int closeFile(int fd) {
    return _close(fd);
}
void keepPermissions(int, const fs::path&) {}
std::string replaceFile(const fs::path& from, const fs::path& to) {
    if (MoveFileExW(from.c_str(), to.c_str(), MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH))
        return {};
    return std::system_category().message(static_cast<int>(GetLastError()));
}
void flushDirectory(const fs::path&) {}
#else
int openNewFile(const fs::path& path) {
    return ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
}
long long writeSome(int fd, const std::uint8_t* data, std::size_t size) {
    return ::write(fd, data, size);
}
int flushToDisk(int fd) {
    return ::fsync(fd);
}
int closeFile(int fd) {
    return ::close(fd);
}
// Gives the new file the permission bits of the file it replaces.
void keepPermissions(int fd, const fs::path& target) {
    struct stat info {};
    if (::stat(target.c_str(), &info) == 0)
        static_cast<void>(::fchmod(fd, info.st_mode & 07777));
}
std::string replaceFile(const fs::path& from, const fs::path& to) {
    if (::rename(from.c_str(), to.c_str()) == 0)
        return {};
    return errnoText(errno);
}
// Makes the rename itself durable. Best effort: not every file system lets a
// directory be opened or synced.
void flushDirectory(const fs::path& directory) {
    const int fd = ::open(directory.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (fd >= 0) {
        static_cast<void>(::fsync(fd));
        ::close(fd);
    }
}
#endif

fs::path directoryOf(const fs::path& path) {
    const fs::path parent = path.parent_path();
    return parent.empty() ? fs::path(".") : parent;
}

// A symbolic link is replaced through: the file it points to gets the bytes.
fs::path followLink(const fs::path& path) {
    std::error_code error;
    if (!fs::is_symlink(fs::symlink_status(path, error)))
        return path;
    fs::path resolved = fs::weakly_canonical(path, error);
    return error ? path : resolved;
}

// The new file beside the target while it is written. It is closed and
// removed on destruction unless it was renamed over the target.
class TempFile {
public:
    TempFile() = default;
    TempFile(const TempFile&) = delete;
    TempFile& operator=(const TempFile&) = delete;
    ~TempFile() {
        if (m_fd >= 0)
            closeFile(m_fd);
        if (!m_path.empty()) {
            std::error_code ignored;
            fs::remove(m_path, ignored);
        }
    }

    // Creates a file with a fresh name beside target; false (errno set) when
    // none could be created.
    bool create(const fs::path& target) {
        static std::atomic<unsigned> counter{0};
        const auto now = std::chrono::steady_clock::now().time_since_epoch().count();
        for (int attempt = 0; attempt < 64; ++attempt) {
            char suffix[40];
            std::snprintf(suffix, sizeof suffix, ".zr310-%llx-%x",
                          static_cast<unsigned long long>(now), counter.fetch_add(1));
            fs::path candidate = target;
            candidate += suffix;
            m_fd = openNewFile(candidate);
            if (m_fd >= 0) {
                m_path = candidate;
                return true;
            }
            if (errno != EEXIST)
                return false;
        }
        return false;
    }

    // Closes the file; false (errno set) when the system reports an error.
    bool close() {
        const int fd = m_fd;
        m_fd = -1;
        return closeFile(fd) == 0;
    }

    void release() { m_path.clear(); }

    int fd() const { return m_fd; }
    const fs::path& path() const { return m_path; }

private:
    int m_fd = -1;
    fs::path m_path;
};

bool writeAll(int fd, std::span<const std::uint8_t> bytes) {
    while (!bytes.empty()) {
        const long long written = writeSome(fd, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0) {
            if (written == 0)
                errno = EIO;
            return false;
        }
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return true;
}

WriteResult failure(const std::string& step, const std::string& why) {
    return {false, step + ": " + why};
}

} // namespace

ReadResult readWholeFile(const fs::path& path, std::size_t maxBytes) {
    ReadResult result;
    std::error_code error;
    const fs::file_status status = fs::status(path, error);
    if (error) {
        result.detail = error.message();
        return result;
    }
    if (!fs::is_regular_file(status)) {
        result.detail = "not a regular file";
        return result;
    }
    const std::uintmax_t size = fs::file_size(path, error);
    if (error) {
        result.detail = error.message();
        return result;
    }
    const std::string tooLarge = "larger than " + std::to_string(maxBytes) + " bytes";
    if (size > maxBytes) {
        result.status = ReadStatus::TooLarge;
        result.detail = tooLarge;
        return result;
    }

    std::ifstream in(path, std::ios::binary);
    if (!in) {
        result.detail = errnoText(errno);
        return result;
    }
    // One byte more than allowed, to notice a file that grew since its size
    // was taken.
    result.bytes.resize(static_cast<std::size_t>(size) + 1);
    in.read(reinterpret_cast<char*>(result.bytes.data()),
            static_cast<std::streamsize>(result.bytes.size()));
    if (in.bad()) {
        result.bytes.clear();
        result.detail = errnoText(errno);
        return result;
    }
    result.bytes.resize(static_cast<std::size_t>(in.gcount()));
    if (result.bytes.size() > maxBytes) {
        result.bytes.clear();
        result.status = ReadStatus::TooLarge;
        result.detail = tooLarge;
        return result;
    }
    result.status = ReadStatus::Ok;
    return result;
}

WriteResult writeFileAtomically(const fs::path& path, std::span<const std::uint8_t> bytes) {
    const fs::path target = followLink(path);
    TempFile temp;
    if (!temp.create(target))
        return failure("cannot create a new file in its folder", errnoText(errno));
    keepPermissions(temp.fd(), target);
    if (!writeAll(temp.fd(), bytes))
        return failure("cannot write the new file", errnoText(errno));
    if (flushToDisk(temp.fd()) != 0)
        return failure("cannot flush the new file to disk", errnoText(errno));
    if (!temp.close())
        return failure("cannot close the new file", errnoText(errno));
    if (std::string error = replaceFile(temp.path(), target); !error.empty())
        return failure("cannot replace the file", error);
    temp.release();
    flushDirectory(directoryOf(target));
    return {true, {}};
}

} // namespace zr310
