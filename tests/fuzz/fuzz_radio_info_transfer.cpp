// The radio-information transfer against a radio that answers anything: the
// first byte picks a read or a write, the rest is the script of
// EngineScript. The transfer ends with an outcome; a read changes only the
// bytes it keeps (0x0300..0x03EF), a write none at all.

#include "engine_script.h"
#include "packets.h"
#include "radio_info_transfer.h"

using namespace zr310;
using fuzz::check;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input({data, size});
    const bool read = input.byte() % 2 == 0;
    RadioImage image;
    for (std::size_t i = 0; i < RadioImage::kSize; ++i)
        image[i] = static_cast<std::uint8_t>(i * 37 + 11);
    const RadioImage before = image;
    LinkFlags flags;
    RadioInfoTransfer transfer(read ? TransferKind::Read : TransferKind::Write, image, flags);

    fuzz::EngineScript(transfer, input).run();

    check(transfer.outcome() != TransferOutcome::Running, "finished without an outcome");
    const int keptEnd = read ? kInfoFirstAddress + (kInfoReadBlocks - 1) * 8 : kInfoFirstAddress;
    for (int address = 0; address < static_cast<int>(RadioImage::kSize); ++address) {
        const bool kept = address >= kInfoFirstAddress && address < keptEnd;
        check(kept || image.atAddress(address) == before.atAddress(address),
              "the transfer changed an image byte it does not keep");
    }
    return 0;
}
