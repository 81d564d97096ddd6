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
           "between its neighbours. A range or a list of channels sets each of them:\n"
           "ch1-8.power=Low, ch2,5,9.rx_tone=\"CTC 88.5\", tch1-3.close=x.\n\n";
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
    const EditOptions options = takeEditOptions(args);
    if (args.size() < 2)
        throw UsageError("set needs a FILE and at least one KEY=VALUE");
    return editImageFile(args[0], options, err, [&args](RadioImage& image) {
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
        return kExitOk;
    });
}

} // namespace zr310
