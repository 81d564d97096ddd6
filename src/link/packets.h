#pragma once

// The packets of the radio's programming protocol (9600 baud, 8N2, raw
// binary, no checksum) and the block address lists of each transfer.

#include "link_types.h"
#include "radio_image.h"

#include <array>
#include <cstdint>
#include <span>

namespace zr310 {

inline constexpr std::uint8_t kAck = 0x06;
inline constexpr std::uint8_t kStx = 0x02;
inline constexpr std::uint8_t kReadCommand = 0x52;  // 'R'
inline constexpr std::uint8_t kWriteCommand = 0x57; // 'W', also the lead of a read reply
inline constexpr std::uint8_t kBlockLength = 0x08;

inline constexpr std::array<std::uint8_t, 8> kWakeUp{kStx, 'P', 'R', 'O', 'G', 'R', 'A', 'M'};
inline constexpr std::array<std::uint8_t, 3> kEnd{'E', 'N', 'D'};
inline constexpr std::array<std::uint8_t, 7> kTuningCommand{'Q', 'Z', 'V', 'T', 'U', 'N', 'E'};

inline constexpr int kIdentLength = 8;
inline constexpr int kIdentVersionIndex = 6; // byte 7: 0x02 on a current radio
inline constexpr std::uint8_t kIdentCurrentVersion = 0x02;
inline constexpr int kReadBlockPacketLength = 4;
inline constexpr int kWriteBlockPacketLength = 12;
inline constexpr int kReadReplyLength = 12;

// `BlockCounter` once a transfer has completed.
inline constexpr int kBlockCounterDone = 200;

// The option byte a version-1.0 radio keeps in another layout.
inline constexpr int kVersion10OptionAddress = 0x02B0;
constexpr std::uint8_t toVersion10Layout(std::uint8_t option) {
    return static_cast<std::uint8_t>((option & 0x78) << 1);
}

inline bool isAck(std::span<const std::uint8_t> reply) {
    return reply.size() == 1 && reply[0] == kAck;
}

Packet makePacket(std::span<const std::uint8_t> bytes);
Packet readBlockPacket(int address);
Packet writeBlockPacket(int address, const RadioImage& image);

// Block address lists of the programming transfer, one 8-byte block each.
int blockCount(TransferKind kind);
int blockAddress(TransferKind kind, int counter); // counter 1..blockCount(kind)
int progressMaximum(TransferKind kind);

// The radio-information transfer: reads 0x0300..0x03F0, writes 0x0300..0x03C0.
inline constexpr int kInfoFirstAddress = 0x0300;
inline constexpr int kInfoReadBlocks = 31;
inline constexpr int kInfoWriteBlocks = 25;

} // namespace zr310
