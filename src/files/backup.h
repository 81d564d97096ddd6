#pragma once

// A backup of every completed read of the whole radio: the image as the read
// left it, saved as a data file of ours in the backups folder, named by the
// date and time of the read and the radio ID. A backup never replaces a file.

#include "radio_image.h"
#include "radio_info.h"

#include <filesystem>
#include <string>
#include <string_view>

namespace zr310 {

// Where a backup went, or why it did not.
struct BackupResult {
    std::filesystem::path path; // the file written, when ok
    std::string error;          // why not, otherwise (an operating system text)

    bool ok() const { return error.empty(); }
};

// The backups folder, from the environment: $XDG_DATA_HOME/zr310/backups, or
// ~/.local/share/zr310/backups when XDG_DATA_HOME is unset, empty or not an
// absolute path (Linux and other Unix systems); %APPDATA%\zr310\backups on
// Windows; ~/Library/Application Support/zr310/backups on macOS. These are
// the program's application-data folder (Qt's AppDataLocation for the
// application name "zr310") with "backups" added. Empty, with why set, when
// the environment names no home.
std::filesystem::path backupFolder(std::string* why = nullptr);

// The radio ID made fit for a file name: ASCII letters, digits, '-' and '_'
// are kept, every run of other characters (blanks, '/', '.', ':', letters
// outside ASCII...) becomes one '_', and '_' and '-' are taken off both ends.
// Empty when nothing is left.
std::string fileNameSafeId(std::string_view radioId);

// "2026-11-23_221530_FLEET7.k720": the date and time, then the ID made safe
// when there is one. copy 1 is the plain name; copy n > 1 adds "-n" before
// the extension ("2026-11-23_221530_FLEET7-2.k720").
std::string backupFileName(const DateTime& when, std::string_view radioId, int copy = 1);

// Saves image as a data file in folder (created when missing) under the
// first of backupFileName(when, decodeRadioId(image), 1, 2, ...) that does
// not exist yet. The name is claimed by creating the file exclusively before
// the data goes in atomically, so an existing file is never replaced, and the
// saved file is read back and must give the image byte for byte.
BackupResult saveBackup(const RadioImage& image, const std::filesystem::path& folder,
                        const DateTime& when);

// saveBackup into backupFolder() at the current local time.
BackupResult saveReadBackup(const RadioImage& image);

} // namespace zr310
