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
// consulted before the first write block (see LinkFlags). An answer that lets
// the write go on starts the exchange again from the wake-up, since the radio
// may have dropped the session while the warning was open, and holds for the
// rest of the write: it is not asked again. A completed write clears
// `skipVersion10Check`, so the next write asks again.
class ProgrammingTransfer : public BlockTransfer {
public:
    using Clock = std::function<DateTime()>;

    ProgrammingTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                        Clock clock = currentLocalDateTime);

    LinkAction onWatchdog() override;
    LinkAction resumeAfterWarning() override;

    // The text the transfer itself reports: 1534 or 1535 when interrupted,
    // otherwise 0 (the caller reports the other outcomes).
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

    Clock m_clock;
    RadioImage m_sent;
    bool m_awaitingWarning = false;
    bool m_warningAnswered = false; // in this write: not asked again
    bool m_optionConverted = false; // the version-1.0 option byte, at most once
    bool m_holding = false;         // entering tuning mode: the tuning command was sent
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
