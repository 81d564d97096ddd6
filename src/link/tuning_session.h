#pragma once

// The tuning-mode exchanges of the main window over a serial port, one at a
// time (see docs/tuning-protocol.md):
//
//   TuningSession tuning("COM1");
//   connect(&tuning, &TuningSession::finished, this,
//           [](TuningExchange::Result r, int value) { ... });
//   tuning.run(TuneCommand::Enter, 0x33, 0);   // 'G' + value -> ValueReported
//
// The port stays open between exchanges and is closed once the radio has
// acknowledged leaving tuning mode, or when the session is destroyed.

#include "link_session.h"
#include "tuning_exchange.h"

#include <QObject>

namespace zr310 {

class TuningSession : public QObject {
    Q_OBJECT

public:
    explicit TuningSession(const QString& portName, QObject* parent = nullptr);

    // Starts one exchange; false (nothing sent) while another is running.
    // A value or confirm for a code that is no tuning item finishes at once
    // with Invalid.
    bool run(TuneCommand command, std::uint8_t itemCode, std::uint8_t value);
    bool isRunning() const { return m_session.isRunning(); }
    const TuningExchange& exchange() const { return m_engine.exchange; }

signals:
    // `value` is the item's stored value when the result is ValueReported.
    void finished(zr310::TuningExchange::Result result, int value);

private:
    // Lets the link session drive one exchange at a time.
    struct Engine : LinkEngine {
        TuningExchange exchange;
        TuneCommand command = TuneCommand::Enter;
        std::uint8_t itemCode = 0, value = 0;

        LinkAction start() override { return exchange.begin(command, itemCode, value); }
        LinkAction onSendTick() override { return exchange.onSendTick(); }
        LinkAction onReply(std::span<const std::uint8_t> r) override { return exchange.onReply(r); }
        LinkAction onWatchdog() override { return exchange.onWatchdog(); }
        TransferOutcome outcome() const override { return TransferOutcome::Running; }
    };

    Engine m_engine;
    LinkSession m_session;
};

} // namespace zr310

Q_DECLARE_METATYPE(zr310::TuningExchange::Result)
