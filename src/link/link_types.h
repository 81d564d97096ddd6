#pragma once

// Types shared by the protocol engines of the radio link and the layers that
// drive them (the Qt serial layer, the command line, the tests).
//
// An engine never touches a port or a clock. It is driven by events (the
// send timer `ctrTimer` ticked, a reply arrived, the watchdog `MessageTimer`
// ticked) and answers each with a `LinkAction`: what to write, how long to
// hold, whether to close the port, and how to set the two timers and the
// receive threshold afterwards. The texts the link reports are named in
// text_ids.h.

#include "text_ids.h"

#include <array>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zr310 {

using namespace std::chrono_literals;

// The four kinds of programming transfer, numbered as the program shares them.
enum class TransferKind { Read = 0, Write = 1, EnterTuning = 2, WriteTuning = 3 };

// The radio-version flags, one object per process, kept in memory only.
// `radioIsVersion10` is set from the identification of every programming
// transfer; the other three are the answers of the version-1.0 warning.
struct LinkFlags {
    bool radioIsVersion10 = false;
    bool skipVersion10Check = false; // the warning was answered for the write in progress
    bool version10Continue = false;  // the answer was "go on"
    bool version10DontShow = false;  // don't ask again in this run
};

// How a transfer ended, derived from `LinkState`, `BlockCounter` and
// `TransferFinished` when the watchdog closed the exchange.
enum class TransferOutcome {
    Running,    // not ended yet
    Completed,  // BlockCounter reached 200
    NoResponse, // the radio never acknowledged the wake-up (LinkState 1)
    Interrupted,
    Declined,  // a write to a version-1.0 radio was not continued
    Cancelled, // the user stopped it; "END" went out if the radio was in a session
};

// What to do with one of the two timers.
struct TimerCommand {
    enum class Mode { Keep, Stop, Start };
    Mode mode = Mode::Keep;
    std::chrono::milliseconds interval{0};

    static constexpr TimerCommand keep() { return {}; }
    static constexpr TimerCommand stop() { return {Mode::Stop, {}}; }
    static constexpr TimerCommand start(std::chrono::milliseconds ms) { return {Mode::Start, ms}; }

    bool operator==(const TimerCommand&) const = default;
};

// One outgoing packet; 12 bytes is the longest (a write block).
struct Packet {
    static constexpr std::size_t kCapacity = 12;
    std::array<std::uint8_t, kCapacity> bytes{};
    std::size_t size = 0;

    std::span<const std::uint8_t> view() const { return {bytes.data(), size}; }
    bool empty() const { return size == 0; }
};

// The answer of an engine to one event. The serial layer carries it out in
// this order: open the port and clear its buffers (`openPort`), write `send`,
// hold `holdAfterSend` without handling events, close the port, hold
// `pauseAfterClose`, then set the receive threshold and both timers.
struct LinkAction {
    bool openPort = false;
    Packet send;
    std::chrono::milliseconds holdAfterSend{0};
    bool closePort = false;
    std::chrono::milliseconds pauseAfterClose{0};
    int receiveThreshold = 0; // reply bytes awaited from now on; 0 = none
    TimerCommand sendTimer;   // ctrTimer
    TimerCommand watchdog;    // MessageTimer
    // A write to a version-1.0 radio must show the warning now; the caller
    // shows it (it may change the flags), then calls resumeAfterWarning()
    // with how long it was open. The session stays as it is meanwhile: no
    // timer runs and nothing is sent.
    bool needVersion10Warning = false;
    bool finished = false; // the exchange is over; the outcome is final
};

// The interface the serial layer drives; both transfers implement it.
class LinkEngine {
public:
    virtual ~LinkEngine() = default;

    virtual LinkAction start() = 0;
    virtual LinkAction onSendTick() = 0;
    virtual LinkAction onReply(std::span<const std::uint8_t> reply) = 0;
    virtual LinkAction onWatchdog() = 0;
    virtual LinkAction resumeAfterWarning(std::chrono::milliseconds openFor) {
        (void)openFor;
        return {};
    }
    // The user wants the exchange stopped. It stops at the next packet
    // boundary: a packet on the line gets its reply (or its watchdog) first.
    virtual void requestCancel() {}

    virtual TransferOutcome outcome() const = 0;
    virtual int progressValue() const { return 0; }
    virtual int progressMaximum() const { return 0; }
};

} // namespace zr310
