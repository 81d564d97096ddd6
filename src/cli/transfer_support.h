#pragma once

// What the radio commands of zr310-cli share: the Qt application the link
// needs, the --port and --lang options, running a transfer to its end, and
// the report of a transfer that did not complete.

#include "link_types.h"
#include "serial_transfer.h"
#include "string_table.h"

#include <QEventLoop>
#include <QObject>

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
    std::string port;
    Language language = Language::English;
};

// Takes --lang and the required --port (-p) out of args.
PortArgs takePortArgs(std::vector<std::string>& args);

// Reports a transfer that did not complete; returns its exit status.
int reportFailure(const TransferResult& result, const PortArgs& port, TransferKind kind,
                  std::ostream& err);

// Starts a SerialTransfer or InfoTransfer and waits for its end.
template <typename Transfer> TransferResult runToEnd(Transfer& transfer) {
    QEventLoop loop;
    TransferResult result;
    bool ended = false;
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
