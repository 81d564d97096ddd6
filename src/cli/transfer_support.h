#pragma once

// What the radio commands of zr310-cli share: the Qt application the link
// needs, the --port and --lang options, running a transfer to its end, and
// the report of a transfer that did not complete.

#include "cancel_signal.h"
#include "link_types.h"
#include "serial_trace.h"
#include "serial_transfer.h"
#include "string_table.h"

#include <QEventLoop>
#include <QObject>

#include <memory>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// The transfers run on Qt's event loop; the command line has no application
// object of its own until one is needed. It lives until the process ends.
void ensureApplication();

// A text of the string table without the "\r" of message-box line breaks.
std::string plain(std::string_view text);
std::string text(int id, Language language);

struct PortArgs {
    std::string port;               // the first --port
    std::vector<std::string> ports; // every --port, in order
    Language language = Language::English;
    std::string trace; // --trace FILE, empty for none
};

enum class PortCount { One, Many };

// Takes --lang, --trace and the required --port (-p) out of args; with
// PortCount::Many --port may be given once for each radio, each port once.
PortArgs takePortArgs(std::vector<std::string>& args, PortCount count = PortCount::One);
// A UsageError when a port is given twice.
void rejectRepeatedPorts(const std::vector<std::string>& ports);

// The --trace file of a radio command: while this lives, every byte sent and
// received goes to it (SerialTrace).
class TraceScope {
public:
    TraceScope(const PortArgs& port, std::ostream& err);
    // Says on err when a line could not be written after the start.
    ~TraceScope();
    TraceScope(const TraceScope&) = delete;
    TraceScope& operator=(const TraceScope&) = delete;
    // The file could not be opened or written at the start; the reason is on
    // err, and nothing must be sent.
    bool failed() const { return m_failed; }

private:
    void report() const;

    std::string m_path;
    Language m_language;
    std::ostream& m_err;
    std::unique_ptr<SerialTrace> m_trace;
    bool m_failed = false;
};

// After a completed write: reads the radio back into an image of its own and
// compares the write's blocks with `sent`. Returns an exit status: the read's
// own when it fails, kExitVerifyFailed when a byte differs.
int verifyWrite(const PortArgs& port, const RadioImage& sent, std::ostream& err);

// After a completed radio-information write (info --set-text): reads the
// radio information back and compares the written blocks (0x0300..0x03C7)
// with `sent`. Exit statuses as verifyWrite.
int verifyInfoWrite(const PortArgs& port, const RadioImage& sent, std::ostream& err);

// Reports a transfer that did not complete; returns its exit status. A
// cancelled one says what state the radio may be in and exits as
// interrupted.
int reportFailure(const TransferResult& result, const PortArgs& port, TransferKind kind,
                  std::ostream& err);

// Starts a SerialTransfer or InfoTransfer and waits for its end; a cancel
// signal (cancel_signal.h) cancels it.
template <typename Transfer> TransferResult runToEnd(Transfer& transfer) {
    QEventLoop loop;
    TransferResult result;
    bool ended = false;
    const CancelOnSignal cancelOnSignal([&transfer] { transfer.cancel(); });
    QObject::connect(&transfer, &Transfer::finished, &loop, [&](const TransferResult& r) {
        result = r;
        ended = true;
        loop.quit();
    });
    transfer.start();
    if (!ended)
        loop.exec();
    return result;
}

} // namespace zr310
