#pragma once

#include "fuzz_input.h"
#include "link_types.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <optional>

namespace zr310::fuzz {

// Drives a link engine the way the serial layer carries out its actions
// (src/link/link_session.cpp), with the events taken from the input. A timer
// fires only while it is armed, and a reply is handed over only while the
// port is open and the engine awaits one. One byte an event, by its value
// modulo 4:
//   0  the send timer fires
//   1  a reply arrives: the next byte modulo 17 is its length, then its bytes
//   2  the watchdog fires
//   3  the user asks to cancel
// A version-1.0 warning takes the next byte as its answer (its high bit: the
// answer took a minute).
//
// When the input runs out the radio falls silent: only the timers fire,
// earliest first, and the exchange must finish within kMaxQuietSteps.
// Every action must keep its packet within Packet::kCapacity.
class EngineScript {
public:
    using WarningAnswer = std::function<void(std::uint8_t answer)>;
    static constexpr int kMaxQuietSteps = 10000;

    EngineScript(LinkEngine& engine, FuzzInput& input, WarningAnswer answer = {})
        : m_engine(engine), m_input(input), m_answer(std::move(answer)) {}

    // Starts the engine and runs it until it reports the end; aborts when it
    // does not.
    void run();

private:
    using Millis = std::chrono::milliseconds;

    void scriptedEvent();
    void fireSendTimer();
    void fireWatchdog();
    void apply(const LinkAction& action);

    LinkEngine& m_engine;
    FuzzInput& m_input;
    WarningAnswer m_answer;

    Millis m_now{0};
    std::optional<Millis> m_sendDue, m_watchdogDue;
    int m_threshold = 0;
    bool m_portOpen = false;
    bool m_finished = false;
};

} // namespace zr310::fuzz
