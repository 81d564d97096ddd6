#include "radio_info_transfer.h"

#include "packets.h"

#include <stdexcept>

namespace zr310 {

namespace {

constexpr auto kStartDelay = 10ms;
constexpr auto kAfterWakeUp = 2ms;
constexpr auto kAfterIdent = 1ms;
constexpr auto kAfterConfirm = 10ms;
constexpr auto kBetweenReadBlocks = 20ms;
constexpr auto kBetweenWriteBlocks = 5ms;
constexpr auto kAfterLastBlock = 10ms;

constexpr auto kReplyTimeout = 300ms;
constexpr auto kCloseAfterEnd = 20ms;
constexpr auto kBadBlockReply = 3ms;
constexpr auto kClosePause = 30ms;
constexpr auto kPauseBeforeResult = 100ms;

bool isAck(std::span<const std::uint8_t> reply) {
    return reply.size() == 1 && reply[0] == kAck;
}

} // namespace

RadioInfoTransfer::RadioInfoTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags)
    : m_kind(kind), m_image(image), m_flags(flags) {
    if (kind != TransferKind::Read && kind != TransferKind::Write)
        throw std::invalid_argument("radio information is only read or written");
}

int RadioInfoTransfer::blocks() const {
    return m_kind == TransferKind::Read ? kInfoReadBlocks : kInfoWriteBlocks;
}

int RadioInfoTransfer::blockAddress() const {
    const int counter = m_blockCounter < 1 || m_blockCounter > blocks() ? blocks() : m_blockCounter;
    return kInfoFirstAddress + (counter - 1) * 8;
}

int RadioInfoTransfer::windowMessageId() const {
    if (m_outcome == TransferOutcome::Running || m_outcome == TransferOutcome::NoResponse)
        return 0;
    return m_kind == TransferKind::Read ? kMsgReadCompleted : kMsgWriteCompleted;
}

void RadioInfoTransfer::expect(LinkAction& action, int length) {
    m_awaited = length;
    action.receiveThreshold = length;
}

LinkAction RadioInfoTransfer::start() {
    if (m_started)
        return {};
    m_started = true;
    LinkAction action;
    action.openPort = true;
    action.sendTimer = TimerCommand::start(kStartDelay);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction RadioInfoTransfer::onSendTick() {
    if (!m_started || m_outcome != TransferOutcome::Running)
        return {};
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    m_awaited = 0;
    switch (m_linkState) {
    case 1:
        action.send = makePacket(kWakeUp);
        expect(action, 1);
        break;
    case 2:
        action.send = makePacket(std::array{kStx});
        expect(action, kIdentLength);
        break;
    case 3:
        action.send = makePacket(std::array{kAck});
        expect(action, 1);
        break;
    case 4:
        if (m_kind == TransferKind::Read) {
            action.send = readBlockPacket(blockAddress());
            expect(action, kReadReplyLength);
        } else {
            action.send = writeBlockPacket(blockAddress(), m_image);
            expect(action, 1);
        }
        break;
    default:
        action.send = makePacket(kEnd);
        action.closePort = true;
        action.pauseAfterClose = kClosePause;
        m_transferFinished = true;
        m_blockCounter = kBlockCounterDone;
        break;
    }
    action.watchdog = TimerCommand::start(m_linkState == 5 ? kCloseAfterEnd : kReplyTimeout);
    return action;
}

LinkAction RadioInfoTransfer::onReply(std::span<const std::uint8_t> reply) {
    if (m_outcome != TransferOutcome::Running || m_awaited == 0)
        return {};
    m_awaited = 0;
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    auto advance = [&](int state, std::chrono::milliseconds pause) {
        m_linkState = state;
        action.sendTimer = TimerCommand::start(pause);
        action.watchdog = TimerCommand::stop();
    };
    switch (m_linkState) {
    case 1:
        if (isAck(reply))
            advance(2, kAfterWakeUp);
        break;
    case 2:
        // Only the length is checked; the version is not looked at here.
        if (reply.size() == kIdentLength)
            advance(3, kAfterIdent);
        break;
    case 3:
        if (isAck(reply))
            advance(4, kAfterConfirm);
        break;
    case 4:
        return blockReply(reply);
    }
    return action;
}

LinkAction RadioInfoTransfer::blockReply(std::span<const std::uint8_t> reply) {
    LinkAction action;
    bool good = false;
    if (m_kind == TransferKind::Read) {
        if (reply.size() == kReadReplyLength) {
            if (m_blockCounter < kInfoReadBlocks) {
                for (int i = 0; i < 8; ++i)
                    m_image.setAtAddress(blockAddress() + i, reply[4 + i]);
            }
            good = reply[0] == kWriteCommand;
        }
    } else {
        good = isAck(reply);
    }
    if (!good) {
        action.sendTimer = TimerCommand::stop();
        action.watchdog = TimerCommand::start(kBadBlockReply);
        return action;
    }
    const bool last = m_blockCounter >= blocks();
    ++m_blockCounter;
    if (last)
        m_linkState = 5;
    const auto pause = last                           ? kAfterLastBlock
                       : m_kind == TransferKind::Read ? kBetweenReadBlocks
                                                      : kBetweenWriteBlocks;
    action.sendTimer = TimerCommand::start(pause);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction RadioInfoTransfer::onWatchdog() {
    if (!m_started || m_outcome != TransferOutcome::Running)
        return {};
    m_awaited = 0;
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    action.watchdog = TimerCommand::stop();
    action.closePort = true;
    action.pauseAfterClose = kPauseBeforeResult;
    action.finished = true;
    if (!m_transferFinished && m_linkState == 1) {
        m_outcome = TransferOutcome::NoResponse;
        return action;
    }
    m_outcome = m_blockCounter == kBlockCounterDone ? TransferOutcome::Completed
                                                    : TransferOutcome::Interrupted;
    if (m_kind == TransferKind::Write)
        m_flags.skipVersion10Check = false;
    return action;
}

} // namespace zr310
