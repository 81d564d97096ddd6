#include "transfer_commands.h"

#include "backup.h"
#include "cli_common.h"
#include "compare_commands.h"
#include "fleet_write.h"
#include "json_writer.h"
#include "ports.h"
#include "radio_info.h"
#include "serial_transfer.h"
#include "sizes.h"
#include "transfer_support.h"

#include <QCoreApplication>
#include <QEventLoop>

#include <cctype>
#include <cstdio>
#include <iostream>
#include <string_view>

#ifdef _WIN32
#include <io.h>
#define ZR310_ISATTY _isatty
#define ZR310_FILENO _fileno
#else
#include <unistd.h>
#define ZR310_ISATTY isatty
#define ZR310_FILENO fileno
#endif

namespace zr310 {

namespace {

constexpr std::string_view kUserTextCaption = "User-Defined Informations";

bool isTerminal(std::FILE* stream) {
    return ZR310_ISATTY(ZR310_FILENO(stream)) != 0;
}

// A progress bar redrawn in place, only when err is the terminal's stderr.
class ProgressBar {
public:
    explicit ProgressBar(std::ostream& err)
        : m_err(err), m_on(&err == &std::cerr && isTerminal(stderr)) {}
    ~ProgressBar() { done(); }

    void show(int value, int maximum) {
        if (!m_on || maximum <= 0)
            return;
        constexpr int kWidth = 40;
        const int filled = kWidth * value / maximum;
        m_err << "\r[" << std::string(toCount(filled), '#')
              << std::string(toCount(kWidth - filled), '-') << "] " << value << '/' << maximum
              << std::flush;
        m_drawn = true;
    }
    void done() {
        if (m_drawn)
            m_err << '\n' << std::flush;
        m_drawn = false;
    }

private:
    std::ostream& m_err;
    bool m_on = false;
    bool m_drawn = false;
};

bool endsWith(const std::string& s, std::string_view suffix) {
    if (s.size() < suffix.size())
        return false;
    for (std::size_t i = 0; i < suffix.size(); ++i) {
        const char c = s[s.size() - suffix.size() + i];
        if (std::tolower(static_cast<unsigned char>(c)) != suffix[i])
            return false;
    }
    return true;
}

// Asks the version-1.0 question on the terminal; anything but yes declines.
bool askToContinue(Language language, std::ostream& err) {
    err << text(txt::Version10Warning, language) << " [y/N] " << std::flush;
    std::string answer;
    if (!std::getline(std::cin, answer))
        return false;
    return answer == "y" || answer == "Y" || answer == "yes";
}

// Reads the radio information into image. Returns an exit status.
int readInfo(const PortArgs& port, RadioImage& image, std::ostream& err) {
    LinkFlags flags;
    InfoTransfer transfer(TransferKind::Read, QString::fromStdString(port.port), image, flags);
    const auto result = runToEnd(transfer);
    if (result.outcome != TransferOutcome::Completed)
        return reportFailure(result, port, TransferKind::Read, err);
    return kExitOk;
}

void printInfo(const RadioImage& image, bool json, Language language, std::ostream& out) {
    const auto date = decodeWriteDate(image);
    if (json) {
        JsonWriter writer;
        writer.beginObject().key("radio_id").value(decodeRadioId(image)).key("write_date");
        if (date)
            writer.value(*date);
        else
            writer.null();
        writer.key("user_text").value(decodeUserText(image)).endObject();
        out << writer.text();
        return;
    }
    // Like the radio information window, a radio that holds no date shows
    // the PC's current date and time.
    std::string shown;
    if (date) {
        shown = *date;
    } else {
        RadioImage now;
        stampWriteDate(now, currentLocalDateTime());
        shown = decodeWriteDate(now).value_or("");
    }
    out << text(txt::RadioId, language) << ": " << decodeRadioId(image) << '\n'
        << text(txt::RecentWriteDate, language) << ": " << shown << '\n'
        << kUserTextCaption << ": " << decodeUserText(image) << '\n';
}

} // namespace

int runReadCommand(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& err) {
    std::vector<std::string> args = arguments;
    const PortArgs port = takePortArgs(args);
    const std::string output = takeValueOption(args, "--output", "-o");
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (output.empty())
        throw UsageError("-o OUT is required");
    if (!args.empty())
        throw UsageError("unexpected argument '" + args.front() + "'");
    if (!endsWith(output, ".k720") && !endsWith(output, ".bin"))
        throw UsageError("OUT must end in .k720 or .bin");
    // Refused before the port is opened, not after the radio was read.
    if (!checkOutputFile(output, force, err))
        return kExitFileRefused;

    ensureApplication();
    const TraceScope trace(port, err);
    if (trace.failed())
        return kExitFileRefused;
    RadioImage image = makeStartImage();
    LinkFlags flags;
    SerialTransfer transfer(TransferKind::Read, QString::fromStdString(port.port), image, flags);
    ProgressBar bar(err);
    QObject::connect(&transfer, &SerialTransfer::progress, &transfer,
                     [&bar](int value, int maximum) { bar.show(value, maximum); });
    const auto result = runToEnd(transfer);
    bar.done();
    if (result.outcome != TransferOutcome::Completed)
        return reportFailure(result, port, TransferKind::Read, err);

    // Every completed read is also kept in the backups folder. A backup that
    // fails is reported, but the read has not failed.
    const BackupResult backup = saveReadBackup(image);
    const auto reportBackup = [&] {
        if (backup.ok())
            out << text(txt::BackupSaved, port.language) << ' ' << pathText(backup.path) << '\n';
        else
            err << text(txt::BackupFailed, port.language) << ' ' << backup.error << '\n';
    };
    if (!saveImageFileReporting(output, image, err)) {
        reportBackup();
        return kExitFileRefused;
    }
    if (flags.radioIsVersion10)
        out << text(txt::ReadVersion10, port.language) << '\n';
    out << text(txt::ReadFinished, port.language) << '\n';
    reportBackup();
    return kExitOk;
}

int runWriteCommand(const std::vector<std::string>& arguments, std::ostream& out,
                    std::ostream& err) {
    std::vector<std::string> args = arguments;
    // --port may be given once for every radio to be written at once.
    const PortArgs port = takePortArgs(args, PortCount::Many);
    const bool yes = takeFlag(args, "--yes") || takeFlag(args, "-y");
    const bool verify = takeFlag(args, "--verify");
    const bool force = takeFlag(args, "--force");
    rejectUnknownOptions(args);
    if (args.size() != 1)
        throw UsageError(args.empty() ? "the file to write (IN) is missing"
                                      : "unexpected argument '" + args[1] + "'");
    if (port.ports.size() > 1 && !port.trace.empty())
        throw UsageError("--trace records one port: give one --port with it");

    RadioImage image = makeStartImage();
    if (!loadImageFile(args.front(), image, port.language, err))
        return kExitFileRefused;
    if (!force && !passesWriteChecks(image, err))
        return kExitChecksFailed;
    if (port.ports.size() > 1)
        return writeFleet(port.ports, image, {port.language, yes, verify}, out);

    ensureApplication();
    const TraceScope trace(port, err);
    if (trace.failed())
        return kExitFileRefused;
    LinkFlags flags;
    SerialTransfer transfer(TransferKind::Write, QString::fromStdString(port.port), image, flags);
    ProgressBar bar(err);
    transfer.setVersion10Warning([&](LinkFlags& f) {
        bar.done();
        const bool goOn = yes || (isTerminal(stdin) && askToContinue(port.language, err));
        // As the warning's OK and Cancel buttons do.
        f.skipVersion10Check = f.version10Continue = goOn;
        if (!goOn)
            f.version10DontShow = false;
        if (cancelSignalled()) // Ctrl+C at the question: end the session
            transfer.cancel();
    });
    QObject::connect(&transfer, &SerialTransfer::progress, &transfer,
                     [&bar](int value, int maximum) { bar.show(value, maximum); });
    const auto result = runToEnd(transfer);
    bar.done();
    if (result.outcome == TransferOutcome::Declined)
        err << text(txt::Version10NeedsYes, port.language) << '\n';
    if (result.outcome != TransferOutcome::Completed)
        return reportFailure(result, port, TransferKind::Write, err);
    if (verify) {
        if (const int status = verifyWrite(port, transfer.sentBlocks(), err); status != kExitOk)
            return status;
    }
    out << text(txt::WriteFinished, port.language) << '\n';
    return kExitOk;
}

int runInfoCommand(const std::vector<std::string>& arguments, std::ostream& out,
                   std::ostream& err) {
    std::vector<std::string> args = arguments;
    const PortArgs port = takePortArgs(args);
    const bool json = takeFlag(args, "--json");
    const bool verify = takeFlag(args, "--verify");
    bool setText = false;
    std::string newText;
    for (auto it = args.begin(); it != args.end(); ++it) {
        if (*it == "--set-text" || it->rfind("--set-text=", 0) == 0) {
            setText = true;
            newText = takeValueOption(args, "--set-text");
            break;
        }
    }
    rejectUnknownOptions(args);
    if (!args.empty())
        throw UsageError("unexpected argument '" + args.front() + "'");
    if (setText && json)
        throw UsageError("--json shows the information; it cannot go with --set-text");
    if (verify && !setText)
        throw UsageError("--verify checks the write of --set-text; give it with --set-text");
    if (setText) {
        const int length = utf16Length(newText);
        if (length < 0)
            throw UsageError("the text is not valid UTF-8");
        if (length > kUserTextLength)
            throw UsageError("the text is longer than 96 characters");
    }

    ensureApplication();
    const TraceScope trace(port, err);
    if (trace.failed())
        return kExitFileRefused;
    RadioImage image = makeStartImage();
    if (const int status = readInfo(port, image, err); status != kExitOk)
        return status;
    if (!setText) {
        printInfo(image, json, port.language, out);
        return kExitOk;
    }

    // The write carries the user text and the first half of the write date
    // as they are in the image: the date as just read.
    encodeUserText(image, newText);
    LinkFlags flags;
    InfoTransfer transfer(TransferKind::Write, QString::fromStdString(port.port), image, flags);
    const auto result = runToEnd(transfer);
    if (result.outcome != TransferOutcome::Completed)
        return reportFailure(result, port, TransferKind::Write, err);
    if (verify) {
        if (const int status = verifyInfoWrite(port, image, err); status != kExitOk)
            return status;
    }
    out << text(txt::WriteFinished, port.language) << '\n';
    return kExitOk;
}

} // namespace zr310
