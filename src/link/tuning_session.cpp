#include "tuning_session.h"

namespace zr310 {

TuningSession::TuningSession(const QString& portName, QObject* parent)
    : QObject(parent), m_session(m_engine, portName) {
    m_session.setClosePortWhenFinished(false);
    m_engine.sent = [this] { emit frameSent(m_engine.frame); };
    connect(&m_session, &LinkSession::finished, this, &TuningSession::exchangeEnded);
}

bool TuningSession::run(TuneCommand command, std::uint8_t itemCode, std::uint8_t value) {
    if (m_session.isRunning())
        return false;
    m_engine.frame = {command, itemCode, value};
    m_session.start();
    return true;
}

void TuningSession::submit(TuneCommand command, std::uint8_t itemCode, std::uint8_t value) {
    const TuningFrame frame{command, itemCode, value};
    const bool replaces = command == TuneCommand::Value && !m_waiting.empty() &&
                          m_waiting.back().command == TuneCommand::Value &&
                          m_waiting.back().itemCode == itemCode;
    if (replaces)
        m_waiting.back() = frame;
    else
        m_waiting.push_back(frame);
    if (m_ending == 0)
        startNext();
}

void TuningSession::exchangeEnded() {
    ++m_ending; // frames submitted by the receivers wait for the end of this
    const auto& exchange = m_engine.exchange;
    const TuningFrame frame = m_engine.frame;
    const auto result = exchange.result();
    if (result == TuningExchange::Result::NoAnswer)
        m_session.closePort(); // opened afresh for the next exchange
    if (result == TuningExchange::Result::NoAnswer || result == TuningExchange::Result::Refused)
        std::erase_if(m_waiting,
                      [](const TuningFrame& f) { return f.command != TuneCommand::Leave; });
    emit finished(result, exchange.reportedValue());
    emit frameFinished(frame, result, exchange.reportedValue());
    --m_ending;
    if (m_ending == 0)
        startNext();
}

void TuningSession::startNext() {
    if (m_waiting.empty() || m_session.isRunning())
        return;
    const TuningFrame next = m_waiting.front();
    m_waiting.pop_front();
    run(next.command, next.itemCode, next.value);
}

} // namespace zr310
