#pragma once

#include "block_transfer.h"
#include "link_types.h"
#include "radio_image.h"

namespace zr310 {

namespace detail {
// The image and flags the exchange is built on; the probe reads and writes
// no block, so neither is looked at.
struct ProbeScratch {
    RadioImage scratchImage;
    LinkFlags scratchFlags;
};
} // namespace detail

// Asks whether a ZR-310 answers on a port, and which version it is, without
// reading or writing any of its memory: the wake-up, identify and confirm
// every transfer starts with, then "END" at once where a transfer sends its
// blocks. The radio is back in normal operation afterwards.
//
// Outcomes: Completed when all three were answered (radio() says which
// version), NoResponse when the wake-up was not, Interrupted when it was
// but the identification or the confirm went wrong. Every path ends on the
// exchange's own watchdog, 300 ms after a packet nothing answered.
class RadioProbe : private detail::ProbeScratch, public BlockTransfer {
public:
    enum class Radio { None, Current, Version10 };

    RadioProbe();

    // The radio that answered; None unless the probe completed.
    Radio radio() const { return outcome() == TransferOutcome::Completed ? m_radio : Radio::None; }

protected:
    int blocks() const override { return 0; }
    int addressOfBlock(int) const override { return 0; }
    LinkAction sendStep() override;
    void identified(std::span<const std::uint8_t> ident) override;

private:
    Radio m_radio = Radio::None;
};

} // namespace zr310
