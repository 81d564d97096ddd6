#include "radio_info_transfer.h"

#include "packets.h"

#include <algorithm>
#include <stdexcept>

namespace zr310 {

namespace {

constexpr auto kStartDelay = 10ms;
constexpr auto kPauseBeforeResult = 100ms;

} // namespace

RadioInfoTransfer::RadioInfoTransfer(TransferKind kind, RadioImage& image, LinkFlags& flags)
    : BlockTransfer(kind, image, flags, kStartDelay) {
    if (kind != TransferKind::Read && kind != TransferKind::Write)
        throw std::invalid_argument("radio information is only read or written");
}

int RadioInfoTransfer::blocks() const {
    return kind() == TransferKind::Read ? kInfoReadBlocks : kInfoWriteBlocks;
}

int RadioInfoTransfer::addressOfBlock(int counter) const {
    return kInfoFirstAddress + (std::clamp(counter, 1, blocks()) - 1) * 8;
}

int RadioInfoTransfer::windowMessageId() const {
    if (outcome() == TransferOutcome::Running || outcome() == TransferOutcome::NoResponse)
        return 0;
    if (outcome() == TransferOutcome::Cancelled)
        return kind() == TransferKind::Read ? txt::ReadCancelled : txt::WriteCancelled;
    return kind() == TransferKind::Read ? txt::ReadCompleted : txt::WriteCompleted;
}

LinkAction RadioInfoTransfer::onWatchdog() {
    LinkAction action = BlockTransfer::onWatchdog();
    if (!action.finished)
        return action;
    action.pauseAfterClose = kPauseBeforeResult;
    if (kind() == TransferKind::Write && outcome() != TransferOutcome::NoResponse)
        flags().skipVersion10Check = false;
    return action;
}

} // namespace zr310
