#include "csv_commands.h"

#include "cli_common.h"
#include "csv_channels.h"

namespace zr310 {

int runExportCsvCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const std::string output = takeValueOption(args, "--output", "-o");
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() != 1 || output.empty())
        throw UsageError("export-csv needs a FILE and -o OUT.csv");
    if (!checkOutputFile(output, force, err))
        return kExitFileRefused;
    RadioImage image;
    if (!loadImageFile(args[0], image, Language::English, err))
        return kExitFileRefused;
    const WriteResult result = saveChannelsCsv(output, image);
    if (!result.ok) {
        err << "cannot write " << output << ": " << result.detail << '\n';
        return kExitFileRefused;
    }
    return kExitOk;
}

int runImportCsvCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    EditOptions options;
    options.output = takeValueOption(args, "--output", "-o");
    options.force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() != 2)
        throw UsageError("import-csv needs a FILE and an IN.csv");
    return editImageFile(args[0], options, err, [&args, &err](RadioImage& image) {
        const ReadResult csv = readWholeFile(args[1], kMaxCsvBytes);
        if (csv.status != ReadStatus::Ok) {
            err << "cannot read " << args[1] << ": " << csv.detail << '\n';
            return kExitFileRefused;
        }
        try {
            importChannelsCsv(image, std::string(csv.bytes.begin(), csv.bytes.end()));
        } catch (const CsvError& error) {
            err << args[1] << ": " << error.what() << '\n';
            return kExitFileRefused;
        }
        return kExitOk;
    });
}

} // namespace zr310
