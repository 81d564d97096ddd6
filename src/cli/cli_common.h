#pragma once

#include "file_lock.h"
#include "k720_file.h"
#include "radio_image.h"
#include "string_table.h"

#include <chrono>
#include <filesystem>
#include <functional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// Exit statuses of zr310-cli.
inline constexpr int kExitOk = 0;
inline constexpr int kExitUsage = 2;
inline constexpr int kExitNoResponse = 3;
inline constexpr int kExitInterrupted = 4;
inline constexpr int kExitFileRefused = 5;
inline constexpr int kExitDeclined = 6;
inline constexpr int kExitVerifyFailed = 7;
inline constexpr int kExitRefused = 8;      // the radio refused a tuning frame
inline constexpr int kExitChecksFailed = 9; // write without --force: the data fails its checks
inline constexpr int kExitDifferent = 1;    // diff: the files differ

// A mistake in the command line: the message names what was wrong.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// Takes "--lang en|zh" (or "--lang=zh") out of args; English when absent.
Language takeLanguageOption(std::vector<std::string>& args);

// Takes a flag such as "--json" out of args; true when it was there.
bool takeFlag(std::vector<std::string>& args, std::string_view flag);

// Takes "NAME VALUE" or "NAME=VALUE" out of args; empty when absent. An
// option given twice is a UsageError.
std::string takeValueOption(std::vector<std::string>& args, std::string_view name,
                            std::string_view shortName = {});

// Takes every "NAME VALUE" or "NAME=VALUE" (or "SHORT VALUE") out of args, in
// their order; none when absent.
std::vector<std::string> takeValueOptions(std::vector<std::string>& args, std::string_view name,
                                          std::string_view shortName = {});

// Rejects anything left that looks like an option.
void rejectUnknownOptions(const std::vector<std::string>& args);

// Opens a data file or raw image, and its unnamed bytes into extras when
// given. On failure prints the reason in the chosen language and returns false.
bool loadImageFile(const std::filesystem::path& path, RadioImage& image, Language language,
                   std::ostream& err, FileExtras* extras = nullptr);

// Saves by the file name's format, stamped with the local time. On failure
// prints the reason and returns false.
bool saveImageFileReporting(const std::filesystem::path& path, const RadioImage& image,
                            std::ostream& err, const FileExtras& extras = {});

// The one rule for every OUT a command writes, checked before any work is
// done: what a save could not replace or create (a folder, device, FIFO or
// socket in the way, a link loop, a folder that does not exist) is refused
// with the reason on err, and the caller exits kExitFileRefused; something
// else standing there (a file, a dangling link) throws a UsageError unless
// --force was given.
bool checkOutputFile(const std::filesystem::path& path, bool force, std::ostream& err);

// How long an edit waits while another program edits the same file.
inline constexpr std::chrono::seconds kEditLockWait{5};

// Locks path for the whole of a command that reads, changes and saves it.
// False, with the reason on err, when another program kept it locked for
// kEditLockWait or the lock file cannot be made; the caller exits
// kExitFileRefused. On a file system without locks a warning goes to err and
// the edit goes on unlocked.
bool lockForEditing(FileLock& lock, const std::filesystem::path& path, std::ostream& err);

// What every command that edits FILE takes: -o OUT (empty: FILE itself),
// --force to replace an OUT, --lang for its messages.
struct EditOptions {
    std::string output;
    bool force = false;
    Language language = Language::English;
};

// Takes -o/--output, --force and --lang out of args, then rejects any other
// option left.
EditOptions takeEditOptions(std::vector<std::string>& args);

// Edits FILE in place or into OUT, as set does: checks OUT (checkOutputFile),
// locks the file to be written from before the read to after the save
// (lockForEditing), loads FILE with its unnamed bytes, lets `edit` change the
// image and saves it with the same unnamed bytes. `edit` returns kExitOk to
// save, or another status to stop with nothing written; a UsageError thrown
// by it also leaves every file as it was.
int editImageFile(const std::filesystem::path& input, const EditOptions& options, std::ostream& err,
                  const std::function<int(RadioImage&)>& edit);

std::string pathText(const std::filesystem::path& path);

} // namespace zr310
