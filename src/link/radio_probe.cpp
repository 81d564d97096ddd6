#include "radio_probe.h"

#include "packets.h"

namespace zr310 {

namespace {

// As for a transfer: the port settles after opening before the wake-up.
constexpr auto kStartDelay = 30ms;

} // namespace

RadioProbe::RadioProbe()
    : BlockTransfer(TransferKind::Read, scratchImage, scratchFlags, kStartDelay) {}

LinkAction RadioProbe::sendStep() {
    if (linkState() != 4)
        return BlockTransfer::sendStep();
    // Confirmed: where a transfer sends its first block, the probe ends the
    // session. Nothing answers "END"; the port closes after it.
    LinkAction action = timersStopped();
    action.send = makePacket(kEnd);
    closeAfterLastPacket(action);
    action.watchdog = TimerCommand::start(kCloseAfterEnd);
    return action;
}

void RadioProbe::identified(std::span<const std::uint8_t> ident) {
    m_radio = ident[kIdentVersionIndex] == kIdentCurrentVersion ? Radio::Current : Radio::Version10;
}

} // namespace zr310
