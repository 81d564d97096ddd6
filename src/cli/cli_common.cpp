#include "cli_common.h"

#include "radio_info.h"

#include <algorithm>
#include <system_error>

namespace zr310 {

std::string pathText(const std::filesystem::path& path) {
    const auto text = path.u8string();
    return {text.begin(), text.end()};
}

std::string takeValueOption(std::vector<std::string>& args, std::string_view name,
                            std::string_view shortName) {
    for (auto it = args.begin(); it != args.end(); ++it) {
        const std::string& arg = *it;
        const bool named = arg == name || (!shortName.empty() && arg == shortName);
        if (named) {
            if (std::next(it) == args.end())
                throw UsageError(std::string(name) + " needs a value");
            std::string value = *std::next(it);
            args.erase(it, std::next(it, 2));
            return value;
        }
        const std::string prefix = std::string(name) + "=";
        if (arg.rfind(prefix, 0) == 0) {
            std::string value = arg.substr(prefix.size());
            args.erase(it);
            return value;
        }
    }
    return {};
}

bool takeFlag(std::vector<std::string>& args, std::string_view flag) {
    const auto it = std::find(args.begin(), args.end(), flag);
    if (it == args.end())
        return false;
    args.erase(it);
    return true;
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
        err << ResString(1124, language) << ' ' << pathText(path) << ": " << result.detail << '\n';
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

void refuseExistingOutput(const std::filesystem::path& path, bool force) {
    namespace fs = std::filesystem;
    // The link itself counts, even one that leads nowhere or to itself. A path
    // that cannot be looked at (none) is left to the save to report.
    std::error_code ec;
    const fs::file_type type = fs::symlink_status(path, ec).type();
    if (!force && type != fs::file_type::not_found && type != fs::file_type::none)
        throw UsageError(pathText(path) + " already exists (add --force to replace it)");
}

} // namespace zr310
