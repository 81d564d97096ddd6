#include "report_command.h"

#include "cli_common.h"
#include "report_pdf.h"

#include <QGuiApplication>

#include <memory>

namespace zr310 {

namespace {

// The fonts need a QGuiApplication. It runs offscreen (unless QT_QPA_PLATFORM
// says otherwise): a PDF needs no display, and a display that is set but
// cannot be reached would end the program.
std::unique_ptr<QGuiApplication> startGuiApplication() {
    if (QCoreApplication::instance() != nullptr)
        return nullptr;
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    static int argc = 1;
    static char name[] = "zr310-cli";
    static char* argv[] = {name, nullptr};
    return std::make_unique<QGuiApplication>(argc, argv);
}

} // namespace

int runReportCommand(std::vector<std::string> args, std::ostream& /*out*/, std::ostream& err) {
    const Language language = takeLanguageOption(args);
    const std::string output = takeValueOption(args, "--output", "-o");
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() != 1)
        throw UsageError("report needs exactly one FILE");
    if (output.empty())
        throw UsageError("report needs -o OUT.pdf");
    const std::filesystem::path target = output;
    if (!checkOutputFile(target, force, err))
        return kExitFileRefused;

    RadioImage image;
    if (!loadImageFile(args[0], image, language, err))
        return kExitFileRefused;
    const auto app = startGuiApplication();
    const WriteResult written =
        writeReportPdf(target, image, language, QDateTime::currentDateTime());
    if (!written.ok) {
        err << "cannot write " << pathText(target) << ": " << written.detail << '\n';
        return kExitFileRefused;
    }
    return kExitOk;
}

} // namespace zr310
