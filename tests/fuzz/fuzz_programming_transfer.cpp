// A block transfer against a radio that answers anything: the first byte
// picks the transfer (0-3 a programming transfer of that kind, 4 and 5 a read
// and a write of the radio information), the second the link flags the
// process holds (one bit each), the rest is the script of EngineScript.
// Whatever the radio answers, the transfer ends with an outcome and changes no
// image byte but those it is meant to: the blocks a read keeps (of the radio
// information 0x0300..0x03EF), the date stamp and the version-1.0 option byte
// of a programming write, none when writing the tuning area or the radio
// information.

#include "engine_script.h"
#include "packets.h"
#include "programming_transfer.h"
#include "radio_info_transfer.h"

#include <bitset>
#include <memory>

using namespace zr310;
using fuzz::check;

namespace {

constexpr int kInfoRead = 4; // 5: the write of the radio information

std::bitset<RadioImage::kSize> addressesItMayChange(int transfer) {
    std::bitset<RadioImage::kSize> addresses;
    const auto mark = [&](int first, int count) {
        for (int address = first; address < first + count; ++address)
            addresses.set(static_cast<std::size_t>(address));
    };
    if (transfer == kInfoRead)
        mark(kInfoFirstAddress, (kInfoReadBlocks - 1) * 8);
    if (transfer >= kInfoRead)
        return addresses;
    switch (const auto kind = static_cast<TransferKind>(transfer)) {
    case TransferKind::Read:
    case TransferKind::EnterTuning:
        for (int block = 1; block <= blockCount(kind); ++block)
            mark(blockAddress(kind, block), 8);
        break;
    case TransferKind::Write:
        mark(kWriteDateAddress, 14);
        mark(kVersion10OptionAddress, 1);
        break;
    case TransferKind::WriteTuning:
        break;
    }
    return addresses;
}

RadioImage patternedImage() {
    RadioImage image;
    for (std::size_t i = 0; i < RadioImage::kSize; ++i)
        image[i] = static_cast<std::uint8_t>(i * 37 + 11);
    return image;
}

// As the warning window answers: going on may tick "don't show again",
// declining clears all three.
void answerWarning(LinkFlags& flags, std::uint8_t answer) {
    const bool goOn = answer & 1;
    flags.skipVersion10Check = flags.version10Continue = goOn;
    flags.version10DontShow = goOn && (answer & 2);
}

std::unique_ptr<BlockTransfer> makeTransfer(int transfer, RadioImage& image, LinkFlags& flags) {
    if (transfer >= kInfoRead)
        return std::make_unique<RadioInfoTransfer>(
            transfer == kInfoRead ? TransferKind::Read : TransferKind::Write, image, flags);
    return std::make_unique<ProgrammingTransfer>(static_cast<TransferKind>(transfer), image, flags,
                                                 [] { return DateTime{2024, 5, 6, 7, 8, 9}; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    fuzz::FuzzInput input({data, size});
    const int transfer = input.byte() % 6;
    const std::uint8_t bits = input.byte();
    LinkFlags flags{(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
    RadioImage image = patternedImage();
    const auto engine = makeTransfer(transfer, image, flags);

    fuzz::EngineScript(*engine, input, [&flags](std::uint8_t answer) {
        answerWarning(flags, answer);
    }).run();

    check(engine->outcome() != TransferOutcome::Running, "finished without an outcome");
    const RadioImage before = patternedImage();
    const auto mayChange = addressesItMayChange(transfer);
    for (int address = 0; address < static_cast<int>(RadioImage::kSize); ++address) {
        check(mayChange[static_cast<std::size_t>(address)] ||
                  image.atAddress(address) == before.atAddress(address),
              "the transfer changed an image byte outside its blocks");
    }
    return 0;
}
