#include "edit_commands.h"

#include "cli_common.h"
#include "image_edit.h"

namespace zr310 {

int runNewCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() != 1)
        throw UsageError("new needs exactly one OUT file");
    const std::filesystem::path path = args[0];
    refuseExistingOutput(path, force);
    return saveImageFileReporting(path, makeStartImage(), err) ? kExitOk : kExitFileRefused;
}

int runSetCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const Language language = takeLanguageOption(args);
    std::string output = takeValueOption(args, "--output", "-o");
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() < 2)
        throw UsageError("set needs a FILE and at least one KEY=VALUE");
    if (!output.empty())
        refuseExistingOutput(output, force);

    const std::filesystem::path input = args[0];
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
    const std::filesystem::path target = output.empty() ? input : std::filesystem::path(output);
    return saveImageFileReporting(target, image, err, extras) ? kExitOk : kExitFileRefused;
}

} // namespace zr310
