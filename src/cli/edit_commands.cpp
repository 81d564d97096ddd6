#include "edit_commands.h"

#include "cli_common.h"
#include "image_edit.h"

#include <algorithm>

namespace zr310 {

namespace {

// `set --help`: one line per key, "  KEY  VALUE | VALUE | ...", and below it
// a note in brackets where there is one.
void printSetHelp(std::ostream& out) {
    out << "usage: zr310-cli set FILE KEY=VALUE... [-o OUT [--force]] [--lang en|zh]\n\n"
           "Sets each KEY of FILE (or of its copy OUT) to VALUE, from left to right. A value\n"
           "may also be given in Chinese and in any letter case. ch{1..16}.KEY stands for\n"
           "ch1.KEY to ch16.KEY, tch{1..11} for the test channels; \"...\" for the items\n"
           "between its neighbours.\n\n";
    const auto keys = imageEditKeys();
    std::size_t width = 0;
    for (const EditKeyHelp& key : keys)
        width = std::max(width, key.key.size());
    for (const EditKeyHelp& key : keys) {
        out << "  " << key.key << std::string(width + 2 - key.key.size(), ' ');
        for (std::size_t i = 0; i < key.values.size(); ++i)
            out << (i ? " | " : "") << key.values[i];
        out << '\n';
        if (!key.note.empty())
            out << std::string(width + 4, ' ') << '(' << key.note << ")\n";
    }
}

} // namespace

int runNewCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() != 1)
        throw UsageError("new needs exactly one OUT file");
    const std::filesystem::path path = args[0];
    if (!checkOutputFile(path, force, err))
        return kExitFileRefused;
    return saveImageFileReporting(path, makeStartImage(), err) ? kExitOk : kExitFileRefused;
}

int runSetCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err) {
    if (takeFlag(args, "--help") || takeFlag(args, "-h")) {
        printSetHelp(out);
        return kExitOk;
    }
    const Language language = takeLanguageOption(args);
    std::string output = takeValueOption(args, "--output", "-o");
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() < 2)
        throw UsageError("set needs a FILE and at least one KEY=VALUE");
    if (!output.empty() && !checkOutputFile(output, force, err))
        return kExitFileRefused;

    const std::filesystem::path input = args[0];
    const std::filesystem::path target = output.empty() ? input : std::filesystem::path(output);
    FileLock lock; // no other edit of the target from the load to the save
    if (!lockForEditing(lock, target, err))
        return kExitFileRefused;
    RadioImage image;
    FileExtras extras; // the input's unnamed bytes go to the output unchanged
    if (!loadImageFile(input, image, language, err, &extras))
        return kExitFileRefused;

    for (std::size_t i = 1; i < args.size(); ++i) {
        const std::string& pair = args[i];
        const auto equals = pair.find('=');
        if (equals == std::string::npos || equals == 0)
            throw UsageError("'" + pair + "' is not KEY=VALUE");
        try {
            applyImageEdit(image, std::string_view(pair).substr(0, equals),
                           std::string_view(pair).substr(equals + 1));
        } catch (const EditError& e) {
            throw UsageError(e.what());
        }
    }
    return saveImageFileReporting(target, image, err, extras) ? kExitOk : kExitFileRefused;
}

} // namespace zr310
