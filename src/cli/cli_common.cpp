#include "cli_common.h"

#include "atomic_file.h"
#include "radio_info.h"

#include <algorithm>
#include <system_error>

namespace zr310 {

std::string pathText(const std::filesystem::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

std::vector<std::string> takeValueOptions(std::vector<std::string>& args, std::string_view name,
                                          std::string_view shortName) {
    const std::string prefix = std::string(name) + "=";
    std::vector<std::string> values;
    std::vector<std::string> rest;
    for (auto it = args.begin(); it != args.end(); ++it) {
        const bool named = *it == name || (!shortName.empty() && *it == shortName);
        if (named) {
            if (std::next(it) == args.end())
                throw UsageError(std::string(name) + " needs a value");
            values.push_back(*++it);
        } else if (it->rfind(prefix, 0) == 0) {
            values.push_back(it->substr(prefix.size()));
        } else {
            rest.push_back(*it);
        }
    }
    args = std::move(rest);
    return values;
}

std::string takeValueOption(std::vector<std::string>& args, std::string_view name,
                            std::string_view shortName) {
    std::vector<std::string> values = takeValueOptions(args, name, shortName);
    if (values.size() > 1)
        throw UsageError(std::string(name) +
                         (shortName.empty() ? "" : " (" + std::string(shortName) + ")") +
                         " was given twice");
    return values.empty() ? std::string() : values.front();
}

bool takeFlag(std::vector<std::string>& args, std::string_view flag) {
    return std::erase(args, flag) > 0; // a flag given twice means the same
}

Language takeLanguageOption(std::vector<std::string>& args) {
    const std::string value = takeValueOption(args, "--lang");
    if (value.empty() || value == "en")
        return Language::English;
    if (value == "zh")
        return Language::Chinese;
    throw UsageError("unknown language '" + value + "' (use en or zh)");
}

void rejectUnknownOptions(const std::vector<std::string>& args) {
    for (const std::string& arg : args)
        if (arg.size() > 1 && arg[0] == '-')
            throw UsageError("unknown option '" + arg + "'");
}

bool loadImageFile(const std::filesystem::path& path, RadioImage& image, Language language,
                   std::ostream& err, FileExtras* extras) {
    const FileResult result = openImageFile(path, image, extras);
    if (result.ok())
        return true;
    if (result.error == FileError::IncorrectFileType)
        err << ResString(txt::IncorrectFileType, language) << ' ' << pathText(path) << ": "
            << result.detail << '\n';
    else
        err << "cannot read " << pathText(path) << ": " << result.detail << '\n';
    return false;
}

bool saveImageFileReporting(const std::filesystem::path& path, const RadioImage& image,
                            std::ostream& err, const FileExtras& extras) {
    const FileResult result = saveImageFile(path, image, currentLocalDateTime(), extras);
    if (result.ok())
        return true;
    err << "cannot write " << pathText(path) << ": " << result.detail << '\n';
    return false;
}

bool checkOutputFile(const std::filesystem::path& path, bool force, std::ostream& err) {
    namespace fs = std::filesystem;
    if (const std::string problem = saveProblem(path); !problem.empty()) {
        err << "cannot write " << pathText(path) << ": " << problem << '\n';
        return false;
    }
    // The link itself counts, even one that leads nowhere.
    std::error_code ec;
    if (!force && fs::symlink_status(path, ec).type() != fs::file_type::not_found)
        throw UsageError(pathText(path) + " already exists (add --force to replace it)");
    return true;
}

bool lockForEditing(FileLock& lock, const std::filesystem::path& path, std::ostream& err) {
    switch (lock.acquire(path, kEditLockWait)) {
    case FileLock::Status::Held:
        return true;
    case FileLock::Status::Unsupported:
        err << "warning: " << pathText(path)
            << " cannot be locked on its file system; editing it without a lock\n";
        return true;
    case FileLock::Status::Busy:
        err << "cannot edit " << pathText(path) << ": another program is changing it (waited "
            << kEditLockWait.count() << " seconds for its lock " << pathText(lock.lockPath())
            << "); nothing was changed, try again\n";
        return false;
    case FileLock::Status::Failed:
        break;
    }
    err << "cannot lock " << pathText(path) << " for editing: " << pathText(lock.lockPath()) << ": "
        << lock.error() << '\n';
    return false;
}

EditOptions takeEditOptions(std::vector<std::string>& args) {
    EditOptions options;
    options.language = takeLanguageOption(args);
    options.output = takeValueOption(args, "--output", "-o");
    options.force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    return options;
}

int editImageFile(const std::filesystem::path& input, const EditOptions& options, std::ostream& err,
                  const std::function<int(RadioImage&)>& edit) {
    if (!options.output.empty() && !checkOutputFile(options.output, options.force, err))
        return kExitFileRefused;
    const std::filesystem::path target =
        options.output.empty() ? input : std::filesystem::path(options.output);
    FileLock lock; // no other edit of the target from the load to the save
    if (!lockForEditing(lock, target, err))
        return kExitFileRefused;
    RadioImage image;
    FileExtras extras; // the input's unnamed bytes go to the output unchanged
    if (!loadImageFile(input, image, options.language, err, &extras))
        return kExitFileRefused;
    if (const int status = edit(image); status != kExitOk)
        return status;
    return saveImageFileReporting(target, image, err, extras) ? kExitOk : kExitFileRefused;
}

} // namespace zr310
