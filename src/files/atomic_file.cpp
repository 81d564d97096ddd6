#include "atomic_file.h"

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <fstream>
#include <string_view>
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

std::string pathText(const fs::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

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
bool isOwnRegularFile(const fs::path& path) {
    std::error_code error;
    return fs::symlink_status(path, error).type() == fs::file_type::regular;
}
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
// A plain file (not a link) that this user owns.
bool isOwnRegularFile(const fs::path& path) {
    struct stat info {};
    return ::lstat(path.c_str(), &info) == 0 && S_ISREG(info.st_mode) && info.st_uid == ::geteuid();
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

// The file a save replaces or creates: symbolic links are followed one at a
// time, so a dangling link gets its target created rather than being replaced
// itself. Only a regular file, or nothing, may stand there; otherwise why says
// what does and the result is empty.
fs::path saveTarget(const fs::path& path, std::string& why) {
    fs::path current = path;
    for (int hops = 0; hops < 40; ++hops) {
        std::error_code error;
        const fs::file_status status = fs::symlink_status(current, error);
        switch (status.type()) {
        case fs::file_type::not_found:
        case fs::file_type::regular:
            return current;
        case fs::file_type::symlink: {
            const fs::path link = fs::read_symlink(current, error);
            if (error) {
                why = error.message();
                return {};
            }
            current = current.parent_path() / link; // an absolute link replaces it all
            continue;
        }
        case fs::file_type::directory:
            why = "it is a folder, not a file";
            return {};
        case fs::file_type::none:
            why = error.message();
            return {};
        default:
            why = "it is a device, pipe or socket, not a file";
            return {};
        }
    }
    why = "too many levels of symbolic links";
    return {};
}

// Temporary files are named <target>.zr310-<hex>-<hex>. One older than this
// was left by a save that was killed, and the next save in its folder removes
// it; a running save finishes well within it.
constexpr std::chrono::seconds kStaleTempAge{60};

constexpr std::string_view kTempMark = ".zr310-";

bool isTempFileName(const std::string& name) {
    const auto mark = name.rfind(kTempMark);
    if (mark == std::string::npos || mark == 0)
        return false;
    const std::string_view rest = std::string_view(name).substr(mark + kTempMark.size());
    const auto dash = rest.find('-');
    const auto isHex = [](std::string_view text) {
        return !text.empty() && text.find_first_not_of("0123456789abcdef") == std::string::npos;
    };
    return dash != std::string_view::npos && isHex(rest.substr(0, dash)) &&
           isHex(rest.substr(dash + 1));
}

// Removes this user's temporary files older than age from the folder. Best
// effort: what cannot be looked at or removed stays.
void removeStaleTempFiles(const fs::path& directory, std::chrono::seconds age) {
    std::error_code error;
    const auto oldest = fs::file_time_type::clock::now() - age;
    for (fs::directory_iterator it(directory, error), end; !error && it != end;
         it.increment(error)) {
        const fs::path& path = it->path();
        std::error_code ignored;
        if (isTempFileName(pathText(path.filename())) && isOwnRegularFile(path) &&
            fs::last_write_time(path, ignored) < oldest && !ignored)
            fs::remove(path, ignored);
    }
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

std::string saveProblem(const fs::path& path) {
    std::string why;
    const fs::path target = saveTarget(path, why);
    if (target.empty())
        return why;
    const fs::path folder = directoryOf(target);
    std::error_code error;
    switch (fs::status(folder, error).type()) {
    case fs::file_type::directory:
        return {};
    case fs::file_type::not_found:
        return "the folder " + pathText(folder) + " does not exist";
    case fs::file_type::none:
        return "the folder " + pathText(folder) + ": " + error.message();
    default:
        return pathText(folder) + " is not a folder";
    }
}

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
    std::string why;
    const fs::path target = saveTarget(path, why);
    if (target.empty())
        return failure("cannot replace the file", why);
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
    removeStaleTempFiles(directoryOf(target), kStaleTempAge);
    return {true, {}};
}

} // namespace zr310
