#include "engine_script.h"

#include <algorithm>

namespace zr310::fuzz {

namespace {

void setTimer(std::optional<std::chrono::milliseconds>& due, const TimerCommand& command,
              std::chrono::milliseconds now) {
    if (command.mode == TimerCommand::Mode::Stop)
        due.reset();
    if (command.mode == TimerCommand::Mode::Start)
        due = now + command.interval;
}

} // namespace

void EngineScript::run() {
    apply(m_engine.start());
    while (!m_finished && !m_input.empty())
        scriptedEvent();
    for (int step = 0; !m_finished; ++step) {
        check(step < kMaxQuietSteps, "the exchange runs on without an answer");
        check(m_sendDue || m_watchdogDue, "the exchange waits with no timer armed");
        if (m_sendDue && (!m_watchdogDue || *m_sendDue <= *m_watchdogDue))
            fireSendTimer();
        else
            fireWatchdog();
    }
}

void EngineScript::scriptedEvent() {
    switch (m_input.byte() % 4) {
    case 0:
        if (m_sendDue)
            fireSendTimer();
        break;
    case 1: {
        const auto reply = m_input.bytes(m_input.byte() % 17);
        if (m_portOpen && m_threshold > 0) {
            m_threshold = 0;
            apply(m_engine.onReply(reply));
        }
        break;
    }
    case 2:
        if (m_watchdogDue)
            fireWatchdog();
        break;
    default:
        m_engine.requestCancel();
        break;
    }
}

void EngineScript::fireSendTimer() {
    m_now = std::max(m_now, *m_sendDue);
    m_sendDue.reset();
    apply(m_engine.onSendTick());
}

void EngineScript::fireWatchdog() {
    m_now = std::max(m_now, *m_watchdogDue);
    m_watchdogDue.reset();
    apply(m_engine.onWatchdog());
}

void EngineScript::apply(const LinkAction& action) {
    check(action.send.size <= Packet::kCapacity, "a packet longer than a packet can be");
    m_portOpen = m_portOpen || action.openPort || !action.send.empty();
    m_now += action.holdAfterSend;
    if (action.closePort)
        m_portOpen = false;
    m_now += action.pauseAfterClose;
    m_threshold = action.receiveThreshold;
    setTimer(m_sendDue, action.sendTimer, m_now);
    setTimer(m_watchdogDue, action.watchdog, m_now);
    if (action.needVersion10Warning) {
        const std::uint8_t answer = m_input.byte();
        if (m_answer)
            m_answer(answer);
        // The high bit: the user took a minute to answer.
        const Millis openFor = answer & 0x80 ? Millis(60'000) : Millis(0);
        m_now += openFor;
        apply(m_engine.resumeAfterWarning(openFor));
        return;
    }
    if (action.finished)
        m_finished = true;
}

} // namespace zr310::fuzz
