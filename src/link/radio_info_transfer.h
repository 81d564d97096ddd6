#pragma once

#include "block_transfer.h"
#include "radio_image.h"

namespace zr310 {

// The radio-information transfer: the exchange of BlockTransfer over the
// upper memory only. A read fetches 0x0300..0x03F7 (31 blocks) and keeps
// 0x0300..0x03EF: the user text, the write date and the radio ID (the last
// block is fetched but not kept). A write sends 0x0300..0x03C7 (25 blocks)
// as they stand in the image: the user text and the first half of the write
// date, never the radio ID. No version check, no date stamp; the
// identification is only checked for its length.
//
// The outcome is NoResponse, Completed, or Interrupted when the exchange
// stopped after the wake-up was answered.
//
// `TransferKind` is Read or Write; the tuning kinds throw
// std::invalid_argument.
class RadioInfoTransfer : public BlockTransfer {
public:
    RadioInfoTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags);

    // The result is given 100 ms after the port is closed. A write that got
    // past the wake-up clears `skipVersion10Check`.
    LinkAction onWatchdog() override;
    // The text the radio information window shows when the exchange closes:
    // 0 for no response (the caller shows the port message), otherwise the
    // completion text of the operation, also after an interruption, which
    // that window does not tell apart from success.
    int windowMessageId() const;

protected:
    int blocks() const override;
    int addressOfBlock(int counter) const override;
};

} // namespace zr310
