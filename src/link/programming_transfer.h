#pragma once

#include "link_types.h"
#include "radio_image.h"
#include "radio_info.h"

#include <functional>

namespace zr310 {

// One programming transfer with the radio: read the whole memory, write the
// programmable blocks, enter tuning mode (reads the tuning area) or write
// the tuning area.
//
// The exchange: wake-up 0x02 "PROGRAM" (ACK 0x06), identify 0x02 (8-byte
// identification; byte 7 is 0x02 on a current radio, anything else marks a
// version-1.0 radio), confirm 0x06 (ACK), then one packet per 8-byte block:
// "R" hi lo 0x08 answered by "W" hi lo 0x08 + 8 data bytes, or "W" hi lo 0x08
// + 8 data bytes answered by ACK. A read or write ends with "END"; entering
// tuning mode ends with confirm (ACK) and "QZVTUNE" (ACK), writing the tuning
// area with "QZVTUNE". There are no retries: one bad or missing reply ends
// the transfer when the watchdog fires.
//
// Blocks read are stored into the image as they arrive, so a failed read
// leaves old and new bytes mixed. Every write block is built after stamping
// the current date and time into the image (radio addresses 0x3C0..0x3CD).
// When a version-1.0 radio is written, its option byte at 0x02B0 is converted
// to the old layout in the image itself, and the version-1.0 warning is
// consulted before the first write block (see LinkFlags). A completed write
// clears `skipVersion10Check`, so the next write asks again.
class ProgrammingTransfer : public LinkEngine {
public:
    using Clock = std::function<DateTime()>;

    ProgrammingTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                        Clock clock = currentLocalDateTime);

    LinkAction start() override;
    LinkAction onSendTick() override;
    LinkAction onReply(std::span<const std::uint8_t> reply) override;
    LinkAction onWatchdog() override;
    LinkAction resumeAfterWarning() override;

    TransferKind kind() const { return m_kind; }
    int linkState() const { return m_linkState; }       // 1 wake-up .. 6 tuning command
    int blockCounter() const { return m_blockCounter; } // 200 once completed
    bool transferFinished() const { return m_transferFinished; }
    int blockAddress() const; // radio address of the current block

    TransferOutcome outcome() const override { return m_outcome; }
    // The text the transfer itself reports: 1534 or 1535 when interrupted,
    // otherwise 0 (the caller reports the other outcomes).
    int messageId() const;
    int progressValue() const override { return m_progress; }
    int progressMaximum() const override;

private:
    LinkAction sendStep();
    LinkAction sendWriteBlock(bool warningAnswered);
    LinkAction blockReply(std::span<const std::uint8_t> reply);
    LinkAction finishAfterHold();
    void expect(LinkAction& action, int length);

    TransferKind m_kind;
    RadioImage& m_image;
    LinkFlags& m_flags;
    Clock m_clock;

    int m_linkState = 1;
    int m_blockCounter = 1;
    bool m_transferFinished = false;
    int m_progress = 0;
    int m_awaited = 0; // reply length awaited; 0 = none

    bool m_started = false;
    bool m_awaitingWarning = false;
    bool m_holding = false; // entering tuning mode: the tuning command was sent
    TransferOutcome m_outcome = TransferOutcome::Running;
};

} // namespace zr310
