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
// to the old layout in the image itself, and the version-1.0 warning is
// consulted before the first write block (see LinkFlags). A completed write
// clears `skipVersion10Check`, so the next write asks again.
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
    bool m_awaitingWarning = false;
    bool m_holding = false; // entering tuning mode: the tuning command was sent
};

} // namespace zr310
