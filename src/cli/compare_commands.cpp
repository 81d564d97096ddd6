#include "compare_commands.h"

#include "cli_common.h"
#include "image_diff.h"
#include "json_writer.h"
#include "write_checks.h"

namespace zr310 {

namespace {

// An empty value shows as "" so that the line still reads.
std::string shown(const std::string& value) {
    return value.empty() ? "\"\"" : value;
}

} // namespace

int runDiffCommand(std::vector<std::string> args, std::ostream& out, std::ostream& err) {
    const Language language = takeLanguageOption(args);
    const bool json = takeFlag(args, "--json");
    rejectUnknownOptions(args);
    if (args.size() != 2)
        throw UsageError("diff needs two files, A and B");

    RadioImage a = makeStartImage();
    RadioImage b = makeStartImage();
    if (!loadImageFile(args[0], a, language, err) || !loadImageFile(args[1], b, language, err))
        return kExitFileRefused;
    const std::vector<ImageDifference> differences = diffImages(a, b);
    if (json) {
        JsonWriter writer;
        writer.beginArray();
        for (const ImageDifference& d : differences)
            writer.beginObject()
                .key("key")
                .value(d.key)
                .key("a")
                .value(d.a)
                .key("b")
                .value(d.b)
                .endObject();
        writer.endArray();
        out << writer.text();
    } else {
        for (const ImageDifference& d : differences)
            out << d.key << ": " << shown(d.a) << " -> " << shown(d.b) << '\n';
    }
    return differences.empty() ? kExitOk : kExitDifferent;
}

bool passesWriteChecks(const RadioImage& image, std::ostream& err) {
    const std::vector<WriteFinding> findings = checkBeforeWrite(image);
    if (findings.empty())
        return true;
    for (const WriteFinding& finding : findings)
        err << severityWord(finding.severity) << ": " << finding.message << '\n';
    err << "nothing was written; --force writes the data as it is\n";
    return false;
}

} // namespace zr310
