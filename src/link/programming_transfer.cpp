#include "programming_transfer.h"

#include "packets.h"

namespace zr310 {

namespace {

// Pause before the next packet, by what was just answered.
constexpr auto kStartDelay = 30ms;
constexpr auto kAfterWakeUp = 2ms;
constexpr auto kAfterIdent = 1ms;
constexpr auto kAfterConfirm = 10ms;
constexpr auto kBetweenReadBlocks = 20ms;
constexpr auto kBetweenWriteBlocks = 5ms;
constexpr auto kAfterLastBlock = 10ms;
constexpr auto kBeforeTuningCommand = 80ms;

// Watchdog intervals.
constexpr auto kReplyTimeout = 300ms;
constexpr auto kCloseAfterEnd = 20ms;
constexpr auto kBadBlockReply = 3ms;
constexpr auto kBadTuningReply = 5ms;

// Pauses held when the exchange ends.
constexpr auto kClosePause = 30ms;
constexpr auto kWriteTuningHold = 50ms;
constexpr auto kEnterTuningHold = 200ms;

bool isAck(std::span<const std::uint8_t> reply) {
    return reply.size() == 1 && reply[0] == kAck;
}

bool readsBlocks(TransferKind kind) {
    return kind == TransferKind::Read || kind == TransferKind::EnterTuning;
}

LinkAction timersStopped() {
    LinkAction action;
    action.sendTimer = TimerCommand::stop();
    action.watchdog = TimerCommand::stop();
    return action;
}

} // namespace

ProgrammingTransfer::ProgrammingTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                                         Clock clock)
    : m_kind(kind), m_image(image), m_flags(flags), m_clock(std::move(clock)) {}

int ProgrammingTransfer::blockAddress() const {
    return zr310::blockAddress(m_kind, m_blockCounter);
}

int ProgrammingTransfer::progressMaximum() const {
    return zr310::progressMaximum(m_kind);
}

int ProgrammingTransfer::messageId() const {
    if (m_outcome != TransferOutcome::Interrupted)
        return 0;
    return m_kind == TransferKind::Read ? kMsgReadInterrupted : kMsgWriteInterrupted;
}

void ProgrammingTransfer::expect(LinkAction& action, int length) {
    m_awaited = length;
    action.receiveThreshold = length;
}

LinkAction ProgrammingTransfer::start() {
    if (m_started)
        return {};
    m_started = true;
    LinkAction action;
    action.openPort = true;
    action.sendTimer = TimerCommand::start(kStartDelay);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction ProgrammingTransfer::onSendTick() {
    if (!m_started || m_outcome != TransferOutcome::Running || m_awaitingWarning)
        return {};
    if (m_holding)
        return finishAfterHold();
    return sendStep();
}

LinkAction ProgrammingTransfer::sendStep() {
    LinkAction action = timersStopped();
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
        if (m_kind == TransferKind::Write)
            return sendWriteBlock(false);
        if (readsBlocks(m_kind)) {
            action.send = readBlockPacket(blockAddress());
            expect(action, kReadReplyLength);
        } else {
            action.send = writeBlockPacket(blockAddress(), m_image);
            expect(action, 1);
        }
        break;
    case 5:
        if (m_kind == TransferKind::EnterTuning) {
            action.send = makePacket(std::array{kAck});
            expect(action, 1);
            break;
        }
        if (m_kind == TransferKind::WriteTuning) {
            // The radio acknowledges the tuning command, but the port is
            // closed before anything is read.
            action.send = makePacket(kTuningCommand);
            action.holdAfterSend = kWriteTuningHold;
        } else {
            action.send = makePacket(kEnd);
        }
        action.closePort = true;
        action.pauseAfterClose = kClosePause;
        m_transferFinished = true;
        m_blockCounter = kBlockCounterDone;
        break;
    case 6:
        // The tuning command is answered within a 200 ms hold during which
        // replies are still handled; the send timer measures the hold.
        action.send = makePacket(kTuningCommand);
        expect(action, 1);
        m_holding = true;
        action.sendTimer = TimerCommand::start(kEnterTuningHold);
        return action;
    }
    const bool closing = m_linkState == 5 && m_kind != TransferKind::EnterTuning;
    action.watchdog = TimerCommand::start(closing ? kCloseAfterEnd : kReplyTimeout);
    return action;
}

LinkAction ProgrammingTransfer::sendWriteBlock(bool warningAnswered) {
    LinkAction action = timersStopped();
    const bool check = m_flags.radioIsVersion10 && !m_flags.skipVersion10Check;
    if (check && !warningAnswered && !m_flags.version10DontShow) {
        m_awaitingWarning = true;
        action.needVersion10Warning = true;
        return action;
    }
    if (check && !m_flags.version10Continue) {
        // Declined: the write ends quietly when the watchdog closes it.
        m_transferFinished = true;
        action.watchdog = TimerCommand::start(kReplyTimeout);
        return action;
    }
    stampWriteDate(m_image, m_clock());
    action.send = writeBlockPacket(blockAddress(), m_image);
    expect(action, 1);
    action.watchdog = TimerCommand::start(kReplyTimeout);
    return action;
}

LinkAction ProgrammingTransfer::resumeAfterWarning() {
    if (!m_awaitingWarning || m_outcome != TransferOutcome::Running)
        return {};
    m_awaitingWarning = false;
    return sendWriteBlock(true);
}

LinkAction ProgrammingTransfer::finishAfterHold() {
    m_holding = false;
    m_awaited = 0;
    LinkAction action = timersStopped();
    action.closePort = true;
    action.pauseAfterClose = kClosePause;
    m_transferFinished = true;
    m_blockCounter = kBlockCounterDone;
    action.watchdog = TimerCommand::start(kReplyTimeout);
    return action;
}

LinkAction ProgrammingTransfer::onReply(std::span<const std::uint8_t> reply) {
    if (m_outcome != TransferOutcome::Running || m_awaited == 0)
        return {};
    m_awaited = 0;
    LinkAction action;
    if (m_holding) {
        if (isAck(reply)) {
            m_transferFinished = true;
        } else {
            m_holding = false;
            action.sendTimer = TimerCommand::stop();
            action.watchdog = TimerCommand::start(kBadTuningReply);
        }
        return action;
    }

    // A wrong answer leaves the watchdog running from the send: it ends the
    // transfer at its interval.
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
        if (reply.size() == kIdentLength) {
            m_flags.radioIsVersion10 = reply[kIdentVersionIndex] != kIdentCurrentVersion;
            if (m_flags.radioIsVersion10 && m_kind == TransferKind::Write) {
                const std::uint8_t option = m_image.atAddress(kVersion10OptionAddress);
                m_image.setAtAddress(kVersion10OptionAddress, toVersion10Layout(option));
            }
            advance(3, kAfterIdent);
        }
        break;
    case 3:
        if (isAck(reply))
            advance(4, kAfterConfirm);
        break;
    case 4:
        return blockReply(reply);
    case 5:
        if (isAck(reply))
            advance(6, kBeforeTuningCommand);
        break;
    }
    return action;
}

LinkAction ProgrammingTransfer::blockReply(std::span<const std::uint8_t> reply) {
    LinkAction action;
    bool good = false;
    if (readsBlocks(m_kind)) {
        // The data is stored before the lead byte is looked at. The last
        // block of a full read is fetched but not kept.
        if (reply.size() == kReadReplyLength) {
            const bool keep = m_kind != TransferKind::Read || m_blockCounter < blockCount(m_kind);
            if (keep) {
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
    const bool last = m_blockCounter >= blockCount(m_kind);
    ++m_blockCounter;
    if (m_progress < progressMaximum())
        ++m_progress;
    if (last)
        m_linkState = 5;
    const auto pause = last                  ? kAfterLastBlock
                       : readsBlocks(m_kind) ? kBetweenReadBlocks
                                             : kBetweenWriteBlocks;
    action.sendTimer = TimerCommand::start(pause);
    action.watchdog = TimerCommand::stop();
    return action;
}

LinkAction ProgrammingTransfer::onWatchdog() {
    if (!m_started || m_outcome != TransferOutcome::Running)
        return {};
    m_awaited = 0;
    m_holding = false;
    m_awaitingWarning = false;
    LinkAction action = timersStopped();
    action.closePort = true;
    action.finished = true;
    if (!m_transferFinished) {
        m_outcome = m_linkState == 1 ? TransferOutcome::NoResponse : TransferOutcome::Interrupted;
    } else if (m_blockCounter == kBlockCounterDone) {
        m_outcome = TransferOutcome::Completed;
        if (m_kind == TransferKind::Write)
            m_flags.skipVersion10Check = false;
    } else {
        m_outcome = TransferOutcome::Declined;
    }
    return action;
}

} // namespace zr310
