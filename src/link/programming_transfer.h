#pragma once

#include "block_transfer.h"
#include "radio_image.h"
#include "radio_info.h"

#include <functional>

namespace zr310 {

// One programming transfer with the radio: read the whole memory, write the
// programmable blocks, enter tuning mode (reads the tuning area) or write
// the tuning area, over the exchange of BlockTransfer.
//
// Byte 7 of the identification is 0x02 on a current radio; anything else
// marks a version-1.0 radio. A read or write ends with "END"; entering
// tuning mode ends with confirm (ACK) and "QZVTUNE" (ACK), writing the
// tuning area with "QZVTUNE".
//
// Blocks read are stored into the image as they arrive, so a failed read
// leaves old and new bytes mixed. Every write block is built after stamping
// the current date and time into the image (radio addresses 0x3C0..0x3CD).
// When a version-1.0 radio is written, its option byte at 0x02B0 is converted
// to the old layout in the image itself (once), and the version-1.0 warning is
// consulted before the first write block (see LinkFlags). The session waits
// for the answer as it is: no timer runs while the warning is open, and the
// first block follows the answer in the same session. The answer holds for
// the rest of the write. A write clears `skipVersion10Check` as it starts
// and once it has completed, so every write asks again.
//
// A radio might give up a session the PC leaves silent for long. So when the
// warning was open for kRadioMayHaveGivenUp or more and the first block then
// gets no ACK, the write says "END" and starts once more from the wake-up,
// without asking again or converting the option byte again; the radio must
// still identify as version 1.0. If that fails too, the write is interrupted.
class ProgrammingTransfer : public BlockTransfer {
public:
    using Clock = std::function<DateTime()>;

    // A warning open this long may have outlasted the radio's patience:
    // twice the longest the PC itself waits for any reply.
    static constexpr std::chrono::milliseconds kRadioMayHaveGivenUp{600};

    ProgrammingTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                        Clock clock = currentLocalDateTime);

    LinkAction start() override;
    LinkAction onWatchdog() override;
    LinkAction resumeAfterWarning(std::chrono::milliseconds openFor) override;
    // The write started once more after its first block went unanswered.
    bool recovered() const { return m_recovering; }

    // The text the transfer itself reports: txt::ReadInterrupted or txt::WriteInterrupted when
    // interrupted, txt::ReadCancelled (a read or entering tuning mode) or txt::WriteCancelled when
    // cancelled, otherwise 0 (the caller reports the other outcomes).
    int messageId() const;
    int progressMaximum() const override;
    // A write: the bytes of every block as sent, at their addresses (the
    // date stamp of each block as it went out); zero elsewhere.
    const RadioImage& sentBlocks() const { return m_sent; }

protected:
    int blocks() const override;
    int addressOfBlock(int counter) const override;
    LinkAction sendStep() override;
    void identified(std::span<const std::uint8_t> ident) override;
    LinkAction endingReply(std::span<const std::uint8_t> reply) override;

private:
    LinkAction sendWriteBlock(bool warningAnswered);
    LinkAction sendTuningEnding();
    LinkAction finishAfterHold();
    bool firstWriteBlockUnanswered() const;

    Clock m_clock;
    RadioImage m_sent;
    bool m_awaitingWarning = false;
    bool m_warningAnswered = false; // in this write: not asked again
    bool m_optionConverted = false; // the version-1.0 option byte, at most once
    bool m_holding = false;         // entering tuning mode: the tuning command was sent
    bool m_mayRecover = false;      // the warning was open long: one more start is allowed
    bool m_recovering = false;      // that start is under way
    bool m_identityChanged = false; // ... and the radio no longer says version 1.0
};

// Reading a radio back after a write: how many bytes of the write's blocks
// differ from what was sent, and the radio address of the first one (-1
// when none does).
struct WriteCheck {
    int differingBytes = 0;
    int firstAddress = -1;
    bool passed() const { return differingBytes == 0; }
};
WriteCheck checkWrittenBlocks(const RadioImage& sent, const RadioImage& readBack);

} // namespace zr310
