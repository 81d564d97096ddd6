#include "virtual_link.h"

#include "line_pacer.h"

#include <algorithm>

namespace zr310::test {

Bytes radioAnswer(EmulatedRadio& radio, std::span<const std::uint8_t> packet) {
    Bytes reply;
    for (const std::uint8_t byte : packet) {
        const auto part = radio.receive(byte);
        reply.insert(reply.end(), part.begin(), part.end());
    }
    return reply;
}

void VirtualLink::setRadio(EmulatedRadio& radio) {
    m_responder = [&radio](int, std::span<const std::uint8_t> packet) {
        return radioAnswer(radio, packet);
    };
}

bool VirtualLink::run(Nanos limit) {
    apply(m_engine.start());
    while (!m_finishedAt) {
        // The earliest of: a reply arriving, the send timer, the watchdog.
        std::optional<Nanos> next;
        auto consider = [&](std::optional<Nanos> at) {
            if (at && (!next || *at < *next))
                next = at;
        };
        const auto arrival =
            std::min_element(m_arrivals.begin(), m_arrivals.end(),
                             [](const Sent& a, const Sent& b) { return a.at < b.at; });
        if (arrival != m_arrivals.end())
            consider(arrival->at);
        consider(m_sendDue);
        consider(m_watchdogDue);
        if (!next || *next > limit)
            return false;
        m_now = *next;
        if (arrival != m_arrivals.end() && arrival->at == m_now) {
            const Bytes bytes = arrival->bytes;
            m_arrivals.erase(arrival);
            deliver(bytes);
        } else if (m_sendDue == m_now) {
            m_sendDue.reset();
            apply(m_engine.onSendTick());
        } else {
            m_watchdogDue.reset();
            apply(m_engine.onWatchdog());
        }
    }
    return true;
}

void VirtualLink::deliver(const Bytes& bytes) {
    if (!m_portOpen)
        return;
    m_rx.insert(m_rx.end(), bytes.begin(), bytes.end());
    // Like a receive event: fires when the threshold is reached; a reply
    // that asks for more bytes gets those already waiting.
    while (m_threshold > 0 && static_cast<int>(m_rx.size()) >= m_threshold) {
        const Bytes reply(m_rx.begin(), m_rx.begin() + m_threshold);
        m_rx.erase(m_rx.begin(), m_rx.begin() + m_threshold);
        m_threshold = 0;
        apply(m_engine.onReply(reply));
    }
}

void VirtualLink::apply(const LinkAction& action) {
    if (action.openPort) {
        m_portOpen = true;
        m_rx.clear();
    }
    if (!action.send.empty()) {
        const Bytes packet(action.send.view().begin(), action.send.view().end());
        const int index = static_cast<int>(m_sent.size());
        m_sent.push_back({m_now, packet});
        Bytes reply = m_portOpen && m_responder ? m_responder(index, packet) : Bytes{};
        if (!reply.empty()) {
            const auto size = static_cast<int>(packet.size() + reply.size());
            const Nanos lineTime = m_lineDelay ? LinePacer::kByteTime * size : Nanos{0};
            m_arrivals.push_back({m_now + lineTime + Nanos{1}, std::move(reply)});
        }
    }
    m_now += action.holdAfterSend;
    if (action.closePort) {
        m_portOpen = false;
        m_rx.clear();
        m_arrivals.clear();
    }
    m_now += action.pauseAfterClose;
    m_threshold = action.receiveThreshold;

    using Mode = TimerCommand::Mode;
    if (action.sendTimer.mode != Mode::Keep)
        m_sendDue.reset();
    if (action.sendTimer.mode == Mode::Start) {
        m_sendDue = m_now + action.sendTimer.interval;
        m_sendIntervals.push_back(action.sendTimer.interval);
    }
    if (action.watchdog.mode != Mode::Keep)
        m_watchdogDue.reset();
    if (action.watchdog.mode == Mode::Start)
        m_watchdogDue = m_now + action.watchdog.interval;

    if (action.needVersion10Warning) {
        ++m_warnings;
        if (m_warning)
            m_warning();
        m_now += m_warningOpenFor;
        apply(m_engine.resumeAfterWarning(
            std::chrono::duration_cast<std::chrono::milliseconds>(m_warningOpenFor)));
    }
    if (action.finished)
        m_finishedAt = m_now;
}

} // namespace zr310::test
