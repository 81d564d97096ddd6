#pragma once

// The live exchange of tuning mode: once the radio is in tuning mode (after
// "QZVTUNE"), the PC enters an item, sends values while the technician moves
// the value bar, and confirms or cancels the item, one three-byte frame at a
// time. The frames are described in docs/tuning-protocol.md.

#include "link_types.h"

#include <cstdint>
#include <functional>
#include <optional>

namespace zr310 {

// What a tuning exchange is to do, numbered as the tuning panel sets it.
enum class TuneCommand { Enter = 0, Value = 1, Confirm = 2, Cancel = 3, Leave = 4 };

// Third byte of a frame.
inline constexpr std::uint8_t kTuneOpEnter = 0x00;
inline constexpr std::uint8_t kTuneOpValue = 0x01;
inline constexpr std::uint8_t kTuneOpConfirm = 0x02;
inline constexpr std::uint8_t kTuneOpCancel = 0x03;
inline constexpr std::uint8_t kTuneLeave = 0x06;

// Replies besides the ACK 0x06.
inline constexpr std::uint8_t kTuneValueReply = 0x47; // 'G' + the item's stored value
inline constexpr std::uint8_t kTuneRefused = 0x62;    // 'b': not understood or not allowed now

// Texts a tuning panel shows when an exchange fails (English ids).

// One frame of the tuning exchange as a tuning panel asks for it.
struct TuningFrame {
    TuneCommand command = TuneCommand::Enter;
    std::uint8_t itemCode = 0;
    std::uint8_t value = 0;

    bool operator==(const TuningFrame&) const = default;
};

// The frame for a command: enter and cancel carry the item code, value and
// confirm carry the item's command letter and the value, leave is 0x06.
// Nothing for a value or confirm of a code that is not a tuning item.
std::optional<Packet> tuningFrame(TuneCommand command, std::uint8_t itemCode, std::uint8_t value);

// The command letter of an item code ('B', 'M', 'm', 'Q', 'D'), or nothing.
std::optional<char> tuningLetter(std::uint8_t itemCode);

// One exchange of tuning mode, driven like the transfers: begin() arms the
// send timer (20 ms), the tick sends the frame and arms the 300 ms watchdog,
// the reply ends it. The port is left open between exchanges and closed
// once the radio acknowledged leaving tuning mode.
//
// Results: an enter is answered 'G' + value (ValueReported); a cancel with
// 0x06 (Acknowledged, back on the test channels) or, when it carried the
// code of another item, 'G' + that item's value (ValueReported: the radio
// has switched to it); value, confirm and leave with 0x06. 'b' is Refused,
// silence or a stray byte NoAnswer, a frame that cannot be built Invalid
// (nothing sent).
class TuningExchange {
public:
    enum class Result { Pending, Acknowledged, ValueReported, Refused, NoAnswer, Invalid };

    LinkAction begin(TuneCommand command, std::uint8_t itemCode, std::uint8_t value);
    LinkAction onSendTick();
    LinkAction onReply(std::span<const std::uint8_t> reply);
    LinkAction onWatchdog();

    Result result() const { return m_result; }
    // The radio answered (acknowledged, reported or refused): the tuning
    // panel then marks its item active.
    bool answered() const;
    std::uint8_t reportedValue() const { return m_value; }
    int linkState() const { return m_linkState; } // 1 until the radio answered
    TuneCommand command() const { return m_command; }
    // The text to show for the result: txt::TuningInterrupted after no
    // answer, txt::TuningError after a refusal, otherwise 0.
    int messageId() const;

private:
    LinkAction finish(Result result);

    TuneCommand m_command = TuneCommand::Enter;
    Packet m_frame;
    Result m_result = Result::Pending;
    std::uint8_t m_value = 0;
    int m_linkState = 1;
    int m_awaited = 0;
    bool m_sent = false;
    bool m_valueLeadSeen = false;
};

// The exchange of one frame as the engine the serial layer drives (one
// exchange per start); `sent` is called as the frame goes out.
struct TuningEngine : LinkEngine {
    TuningExchange exchange;
    TuningFrame frame;
    std::function<void()> sent;

    LinkAction start() override {
        return exchange.begin(frame.command, frame.itemCode, frame.value);
    }
    LinkAction onSendTick() override {
        LinkAction action = exchange.onSendTick();
        if (!action.send.empty() && sent)
            sent();
        return action;
    }
    LinkAction onReply(std::span<const std::uint8_t> r) override { return exchange.onReply(r); }
    LinkAction onWatchdog() override { return exchange.onWatchdog(); }
    TransferOutcome outcome() const override { return TransferOutcome::Running; }
};

} // namespace zr310
