#include "transfer_support.h"

#include "cli_common.h"
#include "packets.h"
#include "ports.h"
#include "serial_transfer.h"

#include <QCoreApplication>

#include <algorithm>

namespace zr310 {

namespace {

// The end of a verify: the read-back's failure, or what the comparison found.
int verifyOutcome(const TransferResult& readBack, const WriteCheck& check, const PortArgs& port,
                  std::ostream& err) {
    if (readBack.outcome != TransferOutcome::Completed) {
        err << text(txt::VerifyNotRead, port.language) << '\n';
        return reportFailure(readBack, port, TransferKind::Read, err);
    }
    if (check.passed())
        return kExitOk;
    err << verifyFailedText(check, port.language).toStdString() << '\n';
    return kExitVerifyFailed;
}

} // namespace

void ensureApplication() {
    if (QCoreApplication::instance())
        return;
    static int argc = 1;
    static char name[] = "zr310-cli";
    static char* argv[] = {name, nullptr};
    new QCoreApplication(argc, argv);
}

std::string plain(std::string_view text) {
    std::string result;
    for (char c : text) {
        if (c != '\r')
            result += c;
    }
    return result;
}

std::string text(int id, Language language) {
    return plain(ResString(id, language));
}

PortArgs takePortArgs(std::vector<std::string>& args, PortCount count) {
    PortArgs parsed;
    parsed.language = takeLanguageOption(args);
    parsed.trace = takeValueOption(args, "--trace");
    if (count == PortCount::One) {
        parsed.ports.push_back(takeValueOption(args, "--port", "-p"));
    } else {
        parsed.ports = takeValueOptions(args, "--port", "-p");
    }
    parsed.port = parsed.ports.empty() ? std::string() : parsed.ports.front();
    if (parsed.port.empty())
        throw UsageError("--port PORT is required (COM1..COM4, a device, or sim)");
    rejectRepeatedPorts(parsed.ports);
    return parsed;
}

void rejectRepeatedPorts(const std::vector<std::string>& ports) {
    for (auto it = ports.begin(); it != ports.end(); ++it) {
        if (std::find(ports.begin(), it, *it) != it)
            throw UsageError("--port " + *it + " is given twice");
    }
}

int reportFailure(const TransferResult& result, const PortArgs& port, TransferKind kind,
                  std::ostream& err) {
    switch (result.outcome) {
    case TransferOutcome::NoResponse: {
        const auto message =
            unreachableText(QString::fromStdString(port.port), result.portProblem, port.language);
        err << text(txt::CommunicationError, port.language) << ": " << plain(message.toStdString())
            << '\n';
        return kExitNoResponse;
    }
    case TransferOutcome::Declined:
        return kExitDeclined;
    case TransferOutcome::Cancelled:
        err << text(result.messageId, port.language) << '\n';
        return kExitInterrupted;
    default: {
        const int id = kind == TransferKind::Read ? txt::ReadInterrupted : txt::WriteInterrupted;
        err << text(txt::Error, port.language) << ": " << text(id, port.language) << '\n';
        return kExitInterrupted;
    }
    }
}

TraceScope::TraceScope(const PortArgs& port, std::ostream& err)
    : m_path(port.trace), m_language(port.language), m_err(err) {
    if (port.trace.empty())
        return;
    m_trace = std::make_unique<SerialTrace>(QString::fromStdString(port.trace));
    if (!m_trace->isOpen()) {
        report();
        m_failed = true;
        return;
    }
    SerialTrace::setActive(m_trace.get());
}

TraceScope::~TraceScope() {
    if (!m_trace || m_failed)
        return;
    m_trace->flushReceived(); // the last line may be the one that fails
    SerialTrace::setActive(nullptr);
    if (!m_trace->isOpen())
        report();
}

void TraceScope::report() const {
    m_err << text(txt::TraceRefused, m_language) << ' ' << m_path << ": "
          << m_trace->errorString().toStdString() << '\n';
}

int verifyWrite(const PortArgs& port, const RadioImage& sent, std::ostream& err) {
    RadioImage readBack = makeStartImage();
    LinkFlags flags;
    SerialTransfer read(TransferKind::Read, QString::fromStdString(port.port), readBack, flags);
    const auto result = runToEnd(read);
    return verifyOutcome(result, checkWrittenBlocks(sent, readBack), port, err);
}

int verifyInfoWrite(const PortArgs& port, const RadioImage& sent, std::ostream& err) {
    RadioImage readBack = makeStartImage();
    LinkFlags flags;
    InfoTransfer read(TransferKind::Read, QString::fromStdString(port.port), readBack, flags);
    const auto result = runToEnd(read);
    WriteCheck check;
    for (int address = kInfoFirstAddress; address < kInfoFirstAddress + kInfoWriteBlocks * 8;
         ++address) {
        if (sent.atAddress(address) != readBack.atAddress(address) && check.differingBytes++ == 0)
            check.firstAddress = address;
    }
    return verifyOutcome(result, check, port, err);
}

} // namespace zr310
