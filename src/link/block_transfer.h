#pragma once

#include "link_types.h"
#include "radio_image.h"

#include <chrono>
#include <span>

namespace zr310 {

// The exchange every transfer over the programming port runs.
//
// `LinkState` counts its steps: 1 wake-up 0x02 "PROGRAM" (ACK 0x06),
// 2 identify 0x02 (8-byte identification), 3 confirm 0x06 (ACK), 4 one
// packet per 8-byte block, 5 the ending. A block is read with "R" hi lo 0x08,
// answered by "W" hi lo 0x08 + 8 data bytes, or written with "W" hi lo 0x08
// + 8 data bytes, answered by ACK. The ending is "END", after which the port
// is closed without waiting for an answer. There are no retries: one bad or
// missing reply ends the transfer when the watchdog fires.
//
// A cancel takes effect at the next packet boundary: the reply of a packet
// on the line (or its watchdog) is waited for. Before the wake-up is answered
// nothing more is sent; after it, the session is ended as a complete one is:
// the identify and confirm still due go out, then "END", so the radio is not
// left in the middle of a session.
//
// A transfer names its blocks and may take over the identification, the
// packet of any step and the replies of the ending (state 5 and later).
class BlockTransfer : public LinkEngine {
public:
    LinkAction start() override;
    LinkAction onSendTick() override;
    LinkAction onReply(std::span<const std::uint8_t> reply) override;
    LinkAction onWatchdog() override;
    void requestCancel() override { m_cancelRequested = true; }

    TransferKind kind() const { return m_kind; }
    int linkState() const { return m_linkState; }
    int blockCounter() const { return m_blockCounter; } // 200 once completed
    bool transferFinished() const { return m_transferFinished; }
    int blockAddress() const { return addressOfBlock(m_blockCounter); } // of the current block

    TransferOutcome outcome() const override { return m_outcome; }
    int progressValue() const override { return m_progress; }

protected:
    static constexpr std::chrono::milliseconds kReplyTimeout{300};
    static constexpr std::chrono::milliseconds kCloseAfterEnd{20}; // watchdog after the last packet
    static constexpr std::chrono::milliseconds kClosePause{30};

    BlockTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags,
                  std::chrono::milliseconds startDelay);

    virtual int blocks() const = 0;
    virtual int addressOfBlock(int counter) const = 0; // counter 1..blocks(), clamped

    // The packet of the current step; every send timer tick asks for it.
    virtual LinkAction sendStep();
    // An identification of the right length arrived.
    virtual void identified(std::span<const std::uint8_t> ident) { (void)ident; }
    // A reply in state 5 or later; nothing is awaited there unless a
    // transfer sends more than "END".
    virtual LinkAction endingReply(std::span<const std::uint8_t> reply);

    RadioImage& image() { return m_image; }
    LinkFlags& flags() { return m_flags; }

    // Arms the receive threshold for a reply of `length` bytes.
    void expect(LinkAction& action, int length);
    // The reply was right: go to `state` after `pause`.
    LinkAction advance(int state, std::chrono::milliseconds pause);
    // The reply was wrong: the watchdog, still running from the send, ends
    // the transfer at its interval.
    static LinkAction leaveToWatchdog();
    static LinkAction timersStopped();
    // The last packet is in `action`: close the port after it; the transfer
    // is complete once the watchdog closes the exchange.
    void closeAfterLastPacket(LinkAction& action);
    void markTransferFinished() { m_transferFinished = true; }
    // Ends the radio's session with "END" and starts the whole exchange
    // again: the port is closed, and after the pause of a new transfer it is
    // opened again for the wake-up; the blocks are all sent again.
    LinkAction restartExchange();
    // Ends the radio's session with "END" and closes the port; the watchdog
    // then reports the transfer as interrupted.
    LinkAction abandonSession();
    bool cancelRequested() const { return m_cancelRequested; }
    // Ends the exchange now as cancelled, with "END" if the radio is in a session.
    LinkAction cancelAtBoundary();

private:
    LinkAction blockReply(std::span<const std::uint8_t> reply);
    // "END" (after the wake-up was answered) and the port closed after it.
    void endSession(LinkAction& action) const;
    bool readsBlocks() const;

    TransferKind m_kind;
    RadioImage& m_image;
    LinkFlags& m_flags;
    std::chrono::milliseconds m_startDelay;

    int m_linkState = 1;
    int m_blockCounter = 1;
    bool m_transferFinished = false;
    int m_progress = 0;
    int m_awaited = 0; // reply length awaited; 0 = none
    bool m_started = false;
    bool m_reopenPort = false;    // restarted: the wake-up opens the port again
    bool m_radioAnswered = false; // a wake-up was acknowledged in this transfer
    bool m_cancelRequested = false;
    TransferOutcome m_outcome = TransferOutcome::Running;
};

} // namespace zr310
