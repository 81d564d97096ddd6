#include "tuning_session.h"

namespace zr310 {

TuningSession::TuningSession(const QString& portName, QObject* parent)
    : QObject(parent), m_session(m_engine, portName) {
    m_session.setClosePortWhenFinished(false);
    connect(&m_session, &LinkSession::finished, this, [this] {
        const auto& exchange = m_engine.exchange;
        if (exchange.result() == TuningExchange::Result::NoAnswer)
            m_session.closePort(); // opened afresh for the next exchange
        emit finished(exchange.result(), exchange.reportedValue());
    });
}

bool TuningSession::run(TuneCommand command, std::uint8_t itemCode, std::uint8_t value) {
    if (m_session.isRunning())
        return false;
    m_engine.command = command;
    m_engine.itemCode = itemCode;
    m_engine.value = value;
    m_session.start();
    return true;
}

} // namespace zr310
