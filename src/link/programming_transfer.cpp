#include "programming_transfer.h"

#include "packets.h"

namespace zr310 {

namespace {

constexpr auto kStartDelay = 30ms;
constexpr auto kBeforeTuningCommand = 80ms;
constexpr auto kBadTuningReply = 5ms; // watchdog after a wrong answer to the tuning command
constexpr auto kWriteTuningHold = 50ms;
constexpr auto kEnterTuningHold = 200ms;

} // namespace

ProgrammingTransfer::ProgrammingTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                                         Clock clock)
    : BlockTransfer(kind, image, flags, kStartDelay), m_clock(std::move(clock)) {}

int ProgrammingTransfer::blocks() const {
    return blockCount(kind());
}

int ProgrammingTransfer::addressOfBlock(int counter) const {
    return zr310::blockAddress(kind(), counter);
}

int ProgrammingTransfer::progressMaximum() const {
    return zr310::progressMaximum(kind());
}

int ProgrammingTransfer::messageId() const {
    const bool read = kind() == TransferKind::Read;
    switch (outcome()) {
    case TransferOutcome::Interrupted:
        return read ? txt::ReadInterrupted : txt::WriteInterrupted;
    case TransferOutcome::Cancelled: // entering tuning mode only reads
        return read || kind() == TransferKind::EnterTuning ? txt::ReadCancelled
                                                           : txt::WriteCancelled;
    default:
        return 0;
    }
}

LinkAction ProgrammingTransfer::start() {
    // The warning's answer holds for one write only.
    if (kind() == TransferKind::Write)
        flags().skipVersion10Check = false;
    return BlockTransfer::start();
}

LinkAction ProgrammingTransfer::sendStep() {
    if (m_awaitingWarning)
        return {};
    if (m_holding)
        return finishAfterHold();
    if (m_identityChanged && linkState() == 4)
        return abandonSession(); // not the radio the user agreed to write
    if (linkState() == 4 && kind() == TransferKind::Write)
        return sendWriteBlock(m_warningAnswered);
    const bool tuning = kind() == TransferKind::EnterTuning || kind() == TransferKind::WriteTuning;
    if (linkState() >= 5 && tuning)
        return sendTuningEnding();
    return BlockTransfer::sendStep();
}

LinkAction ProgrammingTransfer::sendWriteBlock(bool warningAnswered) {
    LinkAction action = timersStopped();
    LinkFlags& f = flags();
    const bool check = f.radioIsVersion10 && !f.skipVersion10Check;
    if (check && !warningAnswered && !f.version10DontShow) {
        m_awaitingWarning = true;
        action.needVersion10Warning = true;
        return action;
    }
    if (check && !f.version10Continue) {
        // Declined: the write ends quietly when the watchdog closes it.
        markTransferFinished();
        action.watchdog = TimerCommand::start(kReplyTimeout);
        return action;
    }
    stampWriteDate(image(), m_clock());
    action.send = writeBlockPacket(blockAddress(), image());
    for (int i = 0; i < 8; ++i)
        m_sent.setAtAddress(blockAddress() + i, image().atAddress(blockAddress() + i));
    expect(action, 1);
    action.watchdog = TimerCommand::start(kReplyTimeout);
    return action;
}

LinkAction ProgrammingTransfer::resumeAfterWarning(std::chrono::milliseconds openFor) {
    if (!m_awaitingWarning || outcome() != TransferOutcome::Running)
        return {};
    m_awaitingWarning = false;
    m_warningAnswered = true;
    m_mayRecover = openFor >= kRadioMayHaveGivenUp;
    if (cancelRequested())
        return cancelAtBoundary();
    // The radio is still waiting in its block state: the first block (or,
    // declined, nothing) follows in the same session.
    return sendWriteBlock(true);
}

LinkAction ProgrammingTransfer::sendTuningEnding() {
    LinkAction action = timersStopped();
    if (kind() == TransferKind::WriteTuning) {
        // The radio acknowledges the tuning command, but the port is closed
        // before anything is read.
        action.send = makePacket(kTuningCommand);
        action.holdAfterSend = kWriteTuningHold;
        closeAfterLastPacket(action);
        action.watchdog = TimerCommand::start(kCloseAfterEnd);
    } else if (linkState() == 5) {
        action.send = makePacket(std::array{kAck});
        expect(action, 1);
        action.watchdog = TimerCommand::start(kReplyTimeout);
    } else {
        // The tuning command is answered within a 200 ms hold during which
        // replies are still handled; the send timer measures the hold.
        action.send = makePacket(kTuningCommand);
        expect(action, 1);
        m_holding = true;
        action.sendTimer = TimerCommand::start(kEnterTuningHold);
    }
    return action;
}

LinkAction ProgrammingTransfer::finishAfterHold() {
    m_holding = false;
    LinkAction action = timersStopped();
    closeAfterLastPacket(action);
    action.watchdog = TimerCommand::start(kReplyTimeout);
    return action;
}

void ProgrammingTransfer::identified(std::span<const std::uint8_t> ident) {
    LinkFlags& f = flags();
    f.radioIsVersion10 = ident[kIdentVersionIndex] != kIdentCurrentVersion;
    if (m_recovering && !f.radioIsVersion10)
        m_identityChanged = true;
    if (f.radioIsVersion10 && kind() == TransferKind::Write && !m_optionConverted) {
        m_optionConverted = true;
        const std::uint8_t option = image().atAddress(kVersion10OptionAddress);
        image().setAtAddress(kVersion10OptionAddress, toVersion10Layout(option));
    }
}

LinkAction ProgrammingTransfer::endingReply(std::span<const std::uint8_t> reply) {
    if (m_holding) {
        LinkAction action;
        if (isAck(reply)) {
            markTransferFinished();
        } else {
            m_holding = false;
            action.sendTimer = TimerCommand::stop();
            action.watchdog = TimerCommand::start(kBadTuningReply);
        }
        return action;
    }
    // Entering tuning mode: the confirm after the blocks.
    return isAck(reply) ? advance(6, kBeforeTuningCommand) : leaveToWatchdog();
}

bool ProgrammingTransfer::firstWriteBlockUnanswered() const {
    return kind() == TransferKind::Write && linkState() == 4 && blockCounter() == 1 &&
           !transferFinished() && !cancelRequested() && outcome() == TransferOutcome::Running;
}

LinkAction ProgrammingTransfer::onWatchdog() {
    if (m_mayRecover && firstWriteBlockUnanswered()) {
        m_mayRecover = false;
        m_recovering = true;
        return restartExchange();
    }
    LinkAction action = BlockTransfer::onWatchdog();
    if (action.finished && outcome() == TransferOutcome::Completed && kind() == TransferKind::Write)
        flags().skipVersion10Check = false;
    return action;
}

WriteCheck checkWrittenBlocks(const RadioImage& sent, const RadioImage& readBack) {
    WriteCheck check;
    for (int block = 1; block <= blockCount(TransferKind::Write); ++block) {
        const int first = zr310::blockAddress(TransferKind::Write, block);
        for (int address = first; address < first + 8; ++address) {
            if (sent.atAddress(address) == readBack.atAddress(address))
                continue;
            if (check.differingBytes++ == 0)
                check.firstAddress = address;
        }
    }
    return check;
}

} // namespace zr310
