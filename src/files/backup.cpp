#include "backup.h"

#include "atomic_file.h"
#include "k720_file.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <system_error>

#ifdef _WIN32
#include <fcntl.h>
#include <io.h>
#include <sys/stat.h>
#else
#include <fcntl.h>
#include <unistd.h>
#endif

namespace zr310 {

namespace fs = std::filesystem;

namespace {

constexpr int kMostCopies = 9999; // of one name, before giving up

std::string pathText(const fs::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

// Creates path as a new empty file, failing when anything is there already
// (errno EEXIST). True when created.
bool createNewFile(const fs::path& path) {
#ifdef _WIN32
    const int fd = _wopen(path.c_str(), _O_WRONLY | _O_CREAT | _O_EXCL | _O_BINARY | _O_NOINHERIT,
                          _S_IREAD | _S_IWRITE);
    if (fd < 0)
        return false;
    _close(fd);
#else
    const int fd = ::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
    if (fd < 0)
        return false;
    ::close(fd);
#endif
    return true;
}

#ifdef _WIN32
fs::path environmentPath(const wchar_t* name) {
    const wchar_t* value = _wgetenv(name);
    return value != nullptr ? fs::path(value) : fs::path();
}
#else
fs::path environmentPath(const char* name) {
    const char* value = std::getenv(name);
    return value != nullptr ? fs::path(value) : fs::path();
}
#endif

bool isKept(char c) {
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9') || c == '-' ||
           c == '_';
}

} // namespace

fs::path backupFolder(std::string* why) {
    const auto fail = [why](const char* reason) {
        if (why != nullptr)
            *why = reason;
        return fs::path();
    };
#if defined(_WIN32)
    const fs::path appData = environmentPath(L"APPDATA");
    if (appData.empty() || !appData.is_absolute())
        return fail("APPDATA names no folder");
    return appData / "zr310" / "backups";
#else
    const fs::path home = environmentPath("HOME");
#if defined(__APPLE__)
    if (home.empty() || !home.is_absolute())
        return fail("HOME names no folder");
    return home / "Library" / "Application Support" / "zr310" / "backups";
#else
    // The XDG base directory rules: a relative path is ignored.
    const fs::path dataHome = environmentPath("XDG_DATA_HOME");
    if (!dataHome.empty() && dataHome.is_absolute())
        return dataHome / "zr310" / "backups";
    if (home.empty() || !home.is_absolute())
        return fail("neither XDG_DATA_HOME nor HOME names a folder");
    return home / ".local" / "share" / "zr310" / "backups";
#endif
#endif
}

std::string fileNameSafeId(std::string_view radioId) {
    std::string safe;
    bool replacing = false;
    for (const char c : radioId) {
        if (isKept(c)) {
            safe += c;
            replacing = false;
        } else if (!replacing) {
            safe += '_';
            replacing = true;
        }
    }
    const auto edge = [](char c) { return c == '_' || c == '-'; };
    const auto first = std::find_if_not(safe.begin(), safe.end(), edge);
    const auto last = std::find_if_not(safe.rbegin(), safe.rend(), edge).base();
    return first < last ? std::string(first, last) : std::string();
}

std::string backupFileName(const DateTime& when, std::string_view radioId, int copy) {
    const auto clamp = [](int value, int most) { return std::clamp(value, 0, most); };
    char stamp[32];
    std::snprintf(stamp, sizeof stamp, "%04d-%02d-%02d_%02d%02d%02d", clamp(when.year, 9999),
                  clamp(when.month, 99), clamp(when.day, 99), clamp(when.hour, 99),
                  clamp(when.minute, 99), clamp(when.second, 99));
    std::string name = stamp;
    if (const std::string id = fileNameSafeId(radioId); !id.empty())
        name += "_" + id;
    if (copy > 1)
        name += "-" + std::to_string(copy);
    return name + ".k720";
}

BackupResult saveBackup(const RadioImage& image, const fs::path& folder, const DateTime& when) {
    std::error_code error;
    fs::create_directories(folder, error);
    if (error)
        return {{}, "cannot create the folder " + pathText(folder) + ": " + error.message()};

    // Claims a free name: the empty file keeps every other writer off it.
    const std::string radioId = decodeRadioId(image);
    fs::path path;
    for (int copy = 1; path.empty(); ++copy) {
        if (copy > kMostCopies)
            return {{}, "no free name in " + pathText(folder)};
        const fs::path candidate = folder / backupFileName(when, radioId, copy); // ASCII only
        if (createNewFile(candidate))
            path = candidate;
        else if (errno != EEXIST)
            return {{},
                    "cannot create " + pathText(candidate) + ": " +
                        std::generic_category().message(errno)};
    }

    const FileImage bytes = toFileImage(image, when);
    if (const WriteResult written = writeFileAtomically(path, bytes); !written.ok) {
        fs::remove(path, error); // the empty file that held the name
        return {{}, "cannot write " + pathText(path) + ": " + written.detail};
    }
    // The backup must give back exactly what was read.
    RadioImage reopened;
    if (const FileResult opened = openDataFile(path, reopened); !opened.ok())
        return {{}, "cannot read back " + pathText(path) + ": " + opened.detail};
    if (!(reopened == image))
        return {{}, pathText(path) + " does not give back the data read"};
    return {path, {}};
}

BackupResult saveReadBackup(const RadioImage& image) {
    std::string why;
    const fs::path folder = backupFolder(&why);
    if (folder.empty())
        return {{}, "no backups folder: " + why};
    return saveBackup(image, folder, currentLocalDateTime());
}

} // namespace zr310
