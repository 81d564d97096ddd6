#pragma once

// Runs a link engine against a responder on a virtual clock: no port, no
// real time. Carries out the engine's actions the way the serial layer does
// (timers, receive threshold, holds, closing the port) and records what was
// sent and when.

#include "emulated_radio.h"
#include "link_types.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <vector>

namespace zr310::test {

using Bytes = std::vector<std::uint8_t>;

// What the radio answers to one packet, fed byte by byte.
Bytes radioAnswer(EmulatedRadio& radio, std::span<const std::uint8_t> packet);

class VirtualLink {
public:
    using Nanos = std::chrono::nanoseconds;
    // The reply to one packet, given its index in the exchange (0 = wake-up).
    using Responder = std::function<Bytes(int index, std::span<const std::uint8_t> packet)>;

    struct Sent {
        Nanos at;
        Bytes bytes;
    };

    explicit VirtualLink(LinkEngine& engine) : m_engine(engine) {}

    void setResponder(Responder responder) { m_responder = std::move(responder); }
    void setRadio(EmulatedRadio& radio);
    // Adds 9600 baud 8N2 line time to every packet and reply.
    void setLineDelay(bool on) { m_lineDelay = on; }
    void setWarningHandler(std::function<void()> handler) { m_warning = std::move(handler); }
    // How long the user takes to answer the warning: virtual time passes.
    void setWarningOpenFor(Nanos openFor) { m_warningOpenFor = openFor; }

    // Starts the engine and runs until it reports the end, or until `limit`
    // of virtual time has passed (returns false then).
    bool run(Nanos limit = std::chrono::seconds(60));

    const std::vector<Sent>& sent() const { return m_sent; }
    std::optional<Nanos> finishedAt() const { return m_finishedAt; }
    // The send timer intervals armed, in order.
    const std::vector<std::chrono::milliseconds>& sendIntervals() const { return m_sendIntervals; }
    int warningsShown() const { return m_warnings; }
    bool portOpen() const { return m_portOpen; }

private:
    void apply(const LinkAction& action);
    void deliver(const Bytes& bytes);

    LinkEngine& m_engine;
    Responder m_responder;
    std::function<void()> m_warning;
    Nanos m_warningOpenFor{0};
    bool m_lineDelay = false;

    Nanos m_now{0};
    std::optional<Nanos> m_sendDue, m_watchdogDue;
    std::vector<Sent> m_arrivals; // replies on the line, by arrival time
    Bytes m_rx;
    int m_threshold = 0;
    bool m_portOpen = false;
    std::optional<Nanos> m_finishedAt;
    int m_warnings = 0;
    std::vector<Sent> m_sent;
    std::vector<std::chrono::milliseconds> m_sendIntervals;
};

} // namespace zr310::test
