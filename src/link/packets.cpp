#include "packets.h"

#include "sizes.h"

#include <algorithm>

namespace zr310 {

namespace {

// The write carries the channels and test channels (0x0000..0x00FF), then
// four option blocks and the two blocks of the write date.
constexpr std::array<int, 6> kWriteTail{0x02B0, 0x02B8, 0x02D0, 0x02D8, 0x03C0, 0x03C8};
constexpr int kTuningAreaAddress = 0x0100;
constexpr int kTuningAreaBlocks = 22;
constexpr std::array<int, 2> kTuningValueBlocks{0x02F0, 0x02F8};

} // namespace

Packet makePacket(std::span<const std::uint8_t> bytes) {
    Packet packet;
    packet.size = std::min(bytes.size(), Packet::kCapacity);
    std::copy_n(bytes.begin(), packet.size, packet.bytes.begin());
    return packet;
}

Packet readBlockPacket(int address) {
    const std::array<std::uint8_t, kReadBlockPacketLength> bytes{
        kReadCommand, static_cast<std::uint8_t>(address >> 8),
        static_cast<std::uint8_t>(address & 0xFF), kBlockLength};
    return makePacket(bytes);
}

Packet writeBlockPacket(int address, const RadioImage& image) {
    Packet packet;
    packet.size = kWriteBlockPacketLength;
    packet.bytes[0] = kWriteCommand;
    packet.bytes[1] = static_cast<std::uint8_t>(address >> 8);
    packet.bytes[2] = static_cast<std::uint8_t>(address & 0xFF);
    packet.bytes[3] = kBlockLength;
    for (int i = 0; i < 8; ++i)
        packet.bytes[toIndex(4 + i)] = image.atAddress(address + i);
    return packet;
}

int blockCount(TransferKind kind) {
    switch (kind) {
    case TransferKind::Read:
        return RadioImage::kColumns;
    case TransferKind::Write:
        return 32 + static_cast<int>(kWriteTail.size());
    case TransferKind::EnterTuning:
        return kTuningAreaBlocks + static_cast<int>(kTuningValueBlocks.size());
    case TransferKind::WriteTuning:
        return kTuningAreaBlocks;
    }
    return 0;
}

int blockAddress(TransferKind kind, int counter) {
    const int index = std::clamp(counter, 1, blockCount(kind)) - 1;
    switch (kind) {
    case TransferKind::Read:
        return index * 8;
    case TransferKind::Write:
        return index < 32 ? index * 8 : kWriteTail[toIndex(index - 32)];
    case TransferKind::EnterTuning:
        return index < kTuningAreaBlocks ? kTuningAreaAddress + index * 8
                                         : kTuningValueBlocks[toIndex(index - kTuningAreaBlocks)];
    case TransferKind::WriteTuning:
        return kTuningAreaAddress + index * 8;
    }
    return 0;
}

int progressMaximum(TransferKind kind) {
    // A read and a write fill the bar one block before their end; the tuning
    // transfers count every block.
    const bool tuning = kind == TransferKind::EnterTuning || kind == TransferKind::WriteTuning;
    return tuning ? blockCount(kind) : blockCount(kind) - 1;
}

} // namespace zr310
