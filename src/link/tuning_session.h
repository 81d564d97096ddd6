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
//
// Frames may also be handed in while an exchange runs, with submit() and
// submitValue(); they wait and go out one after another:
//
//   tuning.submit(TuneCommand::Enter, 0x33, 0);
//   tuning.submitValue(0x33, 40);   // the bar moves while the enter runs:
//   tuning.submitValue(0x33, 41);   //   only the newest value waits,
//   tuning.submitValue(0x33, 42);   //   so 42 is sent next
//   tuning.submit(TuneCommand::Confirm, 0x33, 42);   // after the 42
//
// The rules:
// - Waiting frames keep their order. A value takes the place of a value of
//   the same item waiting last in line, so a burst of values while one is in
//   flight sends only the newest next, and the last value chosen always
//   reaches the radio. Any other command waits behind what is already in
//   line (a confirm comes after the value before it).
// - A frame left unanswered (NoAnswer) or refused (Refused) drops the
//   frames still waiting, except a Leave: the radio is not following, and
//   the caller shows one message (TuningExchange::messageId()) and starts
//   afresh. A Leave still goes out so the radio can get out of tuning mode.
// - finished() and frameFinished() are emitted for every exchange, run() or
//   submitted; frameSent() when a frame is written to the port.
// - run() starts an exchange only when nothing is running (as before); a
//   submitted frame waits behind one started with run().

#include "link_session.h"
#include "tuning_exchange.h"

#include <QObject>

#include <deque>

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
    // Why the port could not be opened for the last exchange (see LinkSession).
    const PortProblem& portProblem() const { return m_session.portProblem(); }

    // Sends the frame now or after the frames before it (see the rules above).
    void submit(TuneCommand command, std::uint8_t itemCode, std::uint8_t value);
    void submitValue(std::uint8_t itemCode, std::uint8_t value) {
        submit(TuneCommand::Value, itemCode, value);
    }
    // Frames submitted and not yet started, oldest first.
    const std::deque<TuningFrame>& waitingFrames() const { return m_waiting; }
    void clearWaiting() { m_waiting.clear(); }
    // Nothing running and nothing waiting.
    bool isIdle() const { return !isRunning() && m_waiting.empty(); }

signals:
    // `value` is the item's stored value when the result is ValueReported.
    void finished(zr310::TuningExchange::Result result, int value);
    // The same, with the frame the exchange was for.
    void frameFinished(const zr310::TuningFrame& frame, zr310::TuningExchange::Result result,
                       int value);
    // The frame goes out on the port now (20 ms after its exchange began).
    void frameSent(const zr310::TuningFrame& frame);

private:
    void exchangeEnded();
    void startNext();

    TuningEngine m_engine;
    LinkSession m_session;
    std::deque<TuningFrame> m_waiting;
    int m_ending = 0; // depth of exchangeEnded(): the next frame starts when it returns
};

} // namespace zr310

Q_DECLARE_METATYPE(zr310::TuningExchange::Result)
Q_DECLARE_METATYPE(zr310::TuningFrame)
