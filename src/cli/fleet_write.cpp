#include "fleet_write.h"

#include "cli_common.h"
#include "serial_transfer.h"
#include "transfer_support.h"

#include <QEventLoop>
#include <QTimer>

#include <algorithm>
#include <functional>
#include <memory>
#include <sstream>

namespace zr310 {

namespace {

// A message's line breaks as spaces, one space where the text had one already.
void oneLine(std::string& text) {
    std::string joined;
    for (const char c : text) {
        if (c != '\n')
            joined += c;
        else if (!joined.empty() && joined.back() != ' ')
            joined += ' ';
    }
    text = std::move(joined);
}

// One radio of the fleet: its write and, with verify, its read-back.
class FleetRadio {
public:
    FleetRadio(const std::string& port, const RadioImage& image, const FleetOptions& options,
               std::function<void()> done)
        : m_port{port, {port}, options.language, {}}, m_options(options), m_image(image),
          m_done(std::move(done)),
          m_write(TransferKind::Write, QString::fromStdString(port), m_image, m_flags) {
        m_write.setVersion10Warning([this](LinkFlags& flags) {
            // No one can be asked in the middle of a fleet: --yes answers.
            flags.skipVersion10Check = flags.version10Continue = m_options.yes;
        });
        QObject::connect(&m_write, &SerialTransfer::finished, &m_write,
                         [this](const TransferResult& result) { written(result); });
    }

    void start() { m_write.start(); }
    // Stops whichever transfer runs; one still to come sees the signal itself.
    void cancel() {
        if (m_read)
            m_read->cancel();
        else
            m_write.cancel();
    }
    int status() const { return m_status; }
    std::string line() const { return m_port.port + ": " + m_message; }

private:
    void written(const TransferResult& result) {
        if (result.outcome != TransferOutcome::Completed) {
            failed(result, TransferKind::Write, {});
            return;
        }
        if (!m_options.verify) {
            finish(kExitOk, text(txt::WriteFinished, m_port.language));
            return;
        }
        // The write's session is still winding up: start the read-back from
        // the event loop.
        QTimer::singleShot(0, &m_write, [this] { readBack(); });
    }

    void readBack() {
        if (cancelSignalled()) {
            failed({.outcome = TransferOutcome::Cancelled, .messageId = txt::ReadCancelled},
                   TransferKind::Read, text(txt::VerifyNotRead, m_port.language) + ' ');
            return;
        }
        m_readBack = makeStartImage();
        m_read = std::make_unique<SerialTransfer>(
            TransferKind::Read, QString::fromStdString(m_port.port), m_readBack, m_readFlags);
        QObject::connect(m_read.get(), &SerialTransfer::finished, m_read.get(),
                         [this](const TransferResult& result) { readBackDone(result); });
        m_read->start();
    }

    void readBackDone(const TransferResult& result) {
        if (result.outcome != TransferOutcome::Completed) {
            failed(result, TransferKind::Read, text(txt::VerifyNotRead, m_port.language) + ' ');
            return;
        }
        const WriteCheck check = checkWrittenBlocks(m_write.sentBlocks(), m_readBack);
        if (check.passed())
            finish(kExitOk, text(txt::WriteFinished, m_port.language));
        else
            finish(kExitVerifyFailed, verifyFailedText(check, m_port.language).toStdString());
    }

    void failed(const TransferResult& result, TransferKind kind, const std::string& lead) {
        std::ostringstream message;
        const int status = reportFailure(result, m_port, kind, message);
        std::string said = message.str();
        while (!said.empty() && said.back() == '\n')
            said.pop_back();
        oneLine(said);
        if (result.outcome == TransferOutcome::Declined)
            said = text(txt::Version10NeedsYes, m_port.language);
        finish(status, lead + said);
    }

    void finish(int status, std::string message) {
        m_status = status;
        m_message = std::move(message);
        m_done();
    }

    PortArgs m_port;
    FleetOptions m_options;
    RadioImage m_image; // each write stamps its own copy
    LinkFlags m_flags;
    std::function<void()> m_done;
    SerialTransfer m_write;
    RadioImage m_readBack;
    LinkFlags m_readFlags;
    std::unique_ptr<SerialTransfer> m_read;
    int m_status = kExitOk;
    std::string m_message;
};

} // namespace

int writeFleet(const std::vector<std::string>& ports, const RadioImage& image,
               const FleetOptions& options, std::ostream& out) {
    ensureApplication();
    QEventLoop loop;
    std::size_t waiting = ports.size();
    std::vector<std::unique_ptr<FleetRadio>> radios;
    for (const std::string& port : ports) {
        radios.push_back(std::make_unique<FleetRadio>(port, image, options, [&] {
            if (--waiting == 0)
                loop.quit();
        }));
    }
    const CancelOnSignal cancelOnSignal([&radios] {
        for (auto& radio : radios)
            radio->cancel();
    });
    for (auto& radio : radios)
        radio->start();
    if (waiting > 0)
        loop.exec();

    int worst = kExitOk;
    for (const auto& radio : radios) {
        out << radio->line() << '\n';
        worst = std::max(worst, radio->status());
    }
    return worst;
}

} // namespace zr310
