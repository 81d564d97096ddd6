#include "block_transfer.h"

#include "packets.h"
#include "sizes.h"

namespace zr310 {

namespace {

// Pause before the next packet, by what was just answered.
constexpr auto kAfterWakeUp = 2ms;
constexpr auto kAfterIdent = 1ms;
constexpr auto kAfterConfirm = 10ms;
constexpr auto kBetweenReadBlocks = 20ms;
constexpr auto kBetweenWriteBlocks = 5ms;
constexpr auto kAfterLastBlock = 10ms;

// Watchdog after a wrong block reply.
constexpr auto kBadBlockReply = 3ms;

} // namespace

BlockTransfer::BlockTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                             std::chrono::milliseconds startDelay)
    : m_kind(kind), m_image(image), m_flags(flags), m_startDelay(startDelay) {}

bool BlockTransfer::readsBlocks() const {
    return m_kind == TransferKind::Read || m_kind == TransferKind::EnterTuning;
}

void BlockTransfer::expect(LinkAction& action, int length) {
    m_awaited = length;
    action.receiveThreshold = length;
}

LinkAction BlockTransfer::advance(int state, std::chrono::milliseconds pause) {
    m_linkState = state;
    LinkAction action;
    action.sendTimer = TimerCommand::start(pause);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction BlockTransfer::leaveToWatchdog() {
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    return action;
}

LinkAction BlockTransfer::timersStopped() {
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    action.watchdog = TimerCommand::stop();
    return action;
}

void BlockTransfer::closeAfterLastPacket(LinkAction& action) {
    action.closePort = true;
    action.pauseAfterClose = kClosePause;
    m_transferFinished = true;
    m_blockCounter = kBlockCounterDone;
}

void BlockTransfer::endSession(LinkAction& action) const {
    if (m_linkState > 1)
        action.send = makePacket(kEnd);
    action.closePort = true;
    action.pauseAfterClose = kClosePause;
}

LinkAction BlockTransfer::abandonSession() {
    LinkAction action = timersStopped();
    endSession(action);
    action.watchdog = TimerCommand::start(kCloseAfterEnd);
    return action;
}

LinkAction BlockTransfer::restartExchange() {
    LinkAction action = timersStopped();
    endSession(action);
    m_linkState = 1;
    m_blockCounter = 1;
    m_progress = 0;
    m_awaited = 0;
    m_reopenPort = true;
    action.sendTimer = TimerCommand::start(m_startDelay);
    return action;
}

LinkAction BlockTransfer::start() {
    if (m_started)
        return {};
    m_started = true;
    LinkAction action;
    action.openPort = true;
    action.sendTimer = TimerCommand::start(m_startDelay);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction BlockTransfer::onSendTick() {
    if (!m_started || m_outcome != TransferOutcome::Running)
        return {};
    m_awaited = 0;
    // A radio hears "END" in its block state: once it has answered the wake-up,
    // the identify and confirm that are left go out first.
    if (m_cancelRequested && (m_linkState == 1 || m_linkState == 4))
        return cancelAtBoundary();
    return sendStep();
}

LinkAction BlockTransfer::cancelAtBoundary() {
    LinkAction action = timersStopped();
    endSession(action);
    action.finished = true;
    m_outcome = TransferOutcome::Cancelled;
    return action;
}

LinkAction BlockTransfer::sendStep() {
    LinkAction action = timersStopped();
    switch (m_linkState) {
    case 1:
        action.openPort = m_reopenPort;
        m_reopenPort = false;
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
        if (readsBlocks()) {
            action.send = readBlockPacket(blockAddress());
            expect(action, kReadReplyLength);
        } else {
            action.send = writeBlockPacket(blockAddress(), m_image);
            expect(action, 1);
        }
        break;
    default:
        action.send = makePacket(kEnd);
        closeAfterLastPacket(action);
        action.watchdog = TimerCommand::start(kCloseAfterEnd);
        return action;
    }
    action.watchdog = TimerCommand::start(kReplyTimeout);
    return action;
}

LinkAction BlockTransfer::onReply(std::span<const std::uint8_t> reply) {
    if (m_outcome != TransferOutcome::Running || m_awaited == 0)
        return {};
    m_awaited = 0;
    switch (m_linkState) {
    case 1:
        if (!isAck(reply))
            return leaveToWatchdog();
        m_radioAnswered = true;
        return advance(2, kAfterWakeUp);
    case 2:
        if (reply.size() != kIdentLength)
            return leaveToWatchdog();
        identified(reply);
        return advance(3, kAfterIdent);
    case 3:
        return isAck(reply) ? advance(4, kAfterConfirm) : leaveToWatchdog();
    case 4:
        return blockReply(reply);
    default:
        return endingReply(reply);
    }
}

LinkAction BlockTransfer::endingReply(std::span<const std::uint8_t>) {
    return leaveToWatchdog();
}

LinkAction BlockTransfer::blockReply(std::span<const std::uint8_t> reply) {
    bool good = false;
    if (readsBlocks()) {
        // The data is stored before the lead byte is looked at. The last
        // block of a full read is fetched but not kept.
        if (reply.size() == kReadReplyLength) {
            const bool keep = m_kind != TransferKind::Read || m_blockCounter < blocks();
            if (keep) {
                for (int i = 0; i < 8; ++i)
                    m_image.setAtAddress(blockAddress() + i, reply[toIndex(4 + i)]);
            }
            good = reply[0] == kWriteCommand;
        }
    } else {
        good = isAck(reply);
    }
    if (!good) {
        LinkAction action = leaveToWatchdog();
        action.watchdog = TimerCommand::start(kBadBlockReply);
        return action;
    }
    const bool last = m_blockCounter >= blocks();
    ++m_blockCounter;
    if (m_progress < progressMaximum())
        ++m_progress;
    const auto pause = last            ? kAfterLastBlock
                       : readsBlocks() ? kBetweenReadBlocks
                                       : kBetweenWriteBlocks;
    return advance(last ? 5 : 4, pause);
}

LinkAction BlockTransfer::onWatchdog() {
    if (!m_started || m_outcome != TransferOutcome::Running)
        return {};
    m_awaited = 0;
    if (m_cancelRequested && !m_transferFinished)
        return cancelAtBoundary();
    LinkAction action = timersStopped();
    action.closePort = true;
    action.finished = true;
    // A radio that answered an earlier wake-up of this transfer was reached:
    // whatever fails afterwards is an interruption.
    if (!m_transferFinished)
        m_outcome = m_linkState == 1 && !m_radioAnswered ? TransferOutcome::NoResponse
                                                         : TransferOutcome::Interrupted;
    else if (m_blockCounter == kBlockCounterDone)
        m_outcome = TransferOutcome::Completed;
    else
        m_outcome = TransferOutcome::Declined;
    return action;
}

} // namespace zr310
