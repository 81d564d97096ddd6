#pragma once

// The live exchange of tuning mode: once the radio is in tuning mode (after
// "QZVTUNE"), the PC enters an item, sends values while the technician moves
// the value bar, and confirms or cancels the item, one three-byte frame at a
// time. The frames are described in docs/tuning-protocol.md.

#include "link_types.h"

#include <cstdint>
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

} // namespace zr310
