#pragma once

#include "link_types.h"
#include "radio_image.h"

namespace zr310 {

// The radio-information transfer: the same packets as a programming
// transfer, over the upper memory only. A read fetches 0x0300..0x03F7 (31
// blocks) and keeps 0x0300..0x03EF: the user text, the write date and the
// radio ID (the last block is fetched but not kept). A write sends
// 0x0300..0x03C7 (25 blocks) as they stand in the image: the user text and
// the first half of the write date, never the radio ID. No version check,
// no date stamp; the identification is only checked for its length.
//
// `TransferKind` is Read or Write; the tuning kinds throw
// std::invalid_argument.
class RadioInfoTransfer : public LinkEngine {
public:
    RadioInfoTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags);

    LinkAction start() override;
    LinkAction onSendTick() override;
    LinkAction onReply(std::span<const std::uint8_t> reply) override;
    LinkAction onWatchdog() override;

    TransferKind kind() const { return m_kind; }
    int linkState() const { return m_linkState; }
    int blockCounter() const { return m_blockCounter; }
    bool transferFinished() const { return m_transferFinished; }
    int blockAddress() const;

    // NoResponse, Completed, or Interrupted when the exchange stopped after
    // the wake-up was answered.
    TransferOutcome outcome() const override { return m_outcome; }
    // The text the radio information window shows when the exchange closes:
    // 0 for no response (the caller shows the port message), otherwise the
    // completion text of the operation, also after an interruption, which
    // that window does not tell apart from success.
    int windowMessageId() const;

private:
    void expect(LinkAction& action, int length);
    LinkAction blockReply(std::span<const std::uint8_t> reply);
    int blocks() const;

    TransferKind m_kind;
    RadioImage& m_image;
    LinkFlags& m_flags;

    int m_linkState = 1;
    int m_blockCounter = 1;
    bool m_transferFinished = false;
    int m_awaited = 0;
    bool m_started = false;
    TransferOutcome m_outcome = TransferOutcome::Running;
};

} // namespace zr310
