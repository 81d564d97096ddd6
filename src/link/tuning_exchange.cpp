#include "tuning_exchange.h"

#include "packets.h"
#include "tuning.h"

namespace zr310 {

namespace {

constexpr auto kSendDelay = 20ms;
constexpr auto kReplyTimeout = 300ms;

} // namespace

std::optional<char> tuningLetter(std::uint8_t itemCode) {
    for (const auto& info : kTuningItems) {
        if (info.itemCode == itemCode)
            return info.commandLetter;
    }
    return std::nullopt;
}

std::optional<Packet> tuningFrame(TuneCommand command, std::uint8_t itemCode, std::uint8_t value) {
    switch (command) {
    case TuneCommand::Enter:
        return makePacket(std::array{itemCode, std::uint8_t{0}, kTuneOpEnter});
    case TuneCommand::Cancel:
        return makePacket(std::array{itemCode, std::uint8_t{0}, kTuneOpCancel});
    case TuneCommand::Leave:
        return makePacket(std::array{kTuneLeave});
    case TuneCommand::Value:
    case TuneCommand::Confirm: {
        const auto letter = tuningLetter(itemCode);
        if (!letter)
            return std::nullopt;
        const std::uint8_t op = command == TuneCommand::Value ? kTuneOpValue : kTuneOpConfirm;
        return makePacket(std::array{static_cast<std::uint8_t>(*letter), value, op});
    }
    }
    return std::nullopt;
}

bool TuningExchange::answered() const {
    return m_result == Result::Acknowledged || m_result == Result::ValueReported ||
           m_result == Result::Refused;
}

LinkAction TuningExchange::begin(TuneCommand command, std::uint8_t itemCode, std::uint8_t value) {
    *this = TuningExchange{};
    m_command = command;
    const auto frame = tuningFrame(command, itemCode, value);
    if (!frame)
        return finish(Result::Invalid);
    m_frame = *frame;
    LinkAction action;
    action.openPort = true;
    action.sendTimer = TimerCommand::start(kSendDelay);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction TuningExchange::onSendTick() {
    if (m_result != Result::Pending || m_sent || m_frame.empty())
        return {};
    m_sent = true;
    LinkAction action;
    action.send = m_frame;
    action.receiveThreshold = m_awaited = 1;
    action.sendTimer = TimerCommand::stop();
    action.watchdog = TimerCommand::start(kReplyTimeout);
    return action;
}

LinkAction TuningExchange::onReply(std::span<const std::uint8_t> reply) {
    if (m_result != Result::Pending || m_awaited == 0)
        return {};
    m_awaited = 0;
    if (reply.empty())
        return {};
    if (m_valueLeadSeen) {
        m_value = reply[0];
        return finish(Result::ValueReported);
    }
    const std::uint8_t lead = reply[0];
    if (lead == kTuneRefused)
        return finish(Result::Refused);
    // An enter is always answered with the item's value; a cancel is when
    // it switched the radio to another item.
    const bool mayReport = m_command == TuneCommand::Enter || m_command == TuneCommand::Cancel;
    if (lead == kTuneValueReply && mayReport) {
        m_valueLeadSeen = true;
        LinkAction action;
        action.receiveThreshold = m_awaited = 1;
        return action;
    }
    if (lead != kAck || m_command == TuneCommand::Enter)
        return {}; // a stray byte: the watchdog ends the exchange
    return finish(Result::Acknowledged);
}

int TuningExchange::messageId() const {
    switch (m_result) {
    case Result::NoAnswer:
        return txt::TuningInterrupted;
    case Result::Refused:
        return txt::TuningError;
    default:
        return 0;
    }
}

LinkAction TuningExchange::onWatchdog() {
    if (m_result != Result::Pending)
        return {};
    return finish(Result::NoAnswer);
}

LinkAction TuningExchange::finish(Result result) {
    m_result = result;
    m_awaited = 0;
    if (answered())
        m_linkState = 2;
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    action.watchdog = TimerCommand::stop();
    action.closePort = result == Result::Acknowledged && m_command == TuneCommand::Leave;
    action.finished = true;
    return action;
}

} // namespace zr310
