#include "emulated_radio.h"

#include "packets.h"
#include "sizes.h"
#include "tuning.h"
#include "tuning_exchange.h"

#include <algorithm>
#include <charconv>

namespace zr310 {

namespace {

constexpr std::uint8_t kVersion10Ident = 0x01;

const TuningItemInfo* itemByCode(std::uint8_t code) {
    for (const auto& info : kTuningItems) {
        if (info.itemCode == code)
            return &info;
    }
    return nullptr;
}

const TuningItemInfo* itemByLetter(std::uint8_t letter) {
    for (const auto& info : kTuningItems) {
        if (static_cast<std::uint8_t>(info.commandLetter) == letter)
            return &info;
    }
    return nullptr;
}

std::size_t tuningAddress(const TuningItemInfo& info) {
    return toIndex(kTuningColumn * 8 + info.block);
}

template <std::size_t N>
bool equals(const std::vector<std::uint8_t>& packet, const std::array<std::uint8_t, N>& text) {
    return packet.size() == N && std::equal(text.begin(), text.end(), packet.begin());
}

std::optional<int> parseBlock(std::string_view text) {
    int value = 0;
    const auto* end = text.data() + text.size();
    const auto [ptr, ec] = std::from_chars(text.data(), end, value);
    if (ec != std::errc{} || ptr != end || value < 1)
        return std::nullopt;
    return value;
}

} // namespace

std::optional<RadioFault> RadioFault::parse(std::string_view text) {
    if (text == "none")
        return RadioFault{};
    if (text == "silent")
        return RadioFault{Kind::Silent, 0};
    if (text == "short-ident")
        return RadioFault{Kind::ShortIdent, 0};
    if (text == "noise")
        return RadioFault{Kind::Noise, 0};
    if (text == "refuse-tuning")
        return RadioFault{Kind::RefuseTuning, 0};
    const auto colon = text.find(':');
    if (colon == std::string_view::npos)
        return std::nullopt;
    const auto name = text.substr(0, colon);
    const auto block = parseBlock(text.substr(colon + 1));
    if (!block)
        return std::nullopt;
    if (name == "bad-lead")
        return RadioFault{Kind::BadLead, *block};
    if (name == "drop")
        return RadioFault{Kind::Drop, *block};
    if (name == "noise")
        return RadioFault{Kind::Noise, *block};
    if (name == "corrupt")
        return RadioFault{Kind::Corrupt, *block};
    if (name == "drop-after")
        return RadioFault{Kind::DropAfter, *block};
    return std::nullopt;
}

std::string RadioFault::toString() const {
    const std::string n = std::to_string(block);
    switch (kind) {
    case Kind::None:
        return "none";
    case Kind::Silent:
        return "silent";
    case Kind::ShortIdent:
        return "short-ident";
    case Kind::BadLead:
        return "bad-lead:" + n;
    case Kind::Drop:
        return "drop:" + n;
    case Kind::Noise:
        return block == 0 ? "noise" : "noise:" + n;
    case Kind::RefuseTuning:
        return "refuse-tuning";
    case Kind::Corrupt:
        return "corrupt:" + n;
    case Kind::DropAfter:
        return "drop-after:" + n;
    }
    return {};
}

EmulatedRadio::EmulatedRadio(const Memory& memory, EmulatedRadioOptions options)
    : m_memory(memory), m_options(options) {}

std::vector<std::uint8_t> EmulatedRadio::identification() const {
    const std::uint8_t version = m_options.version10 ? kVersion10Ident : kIdentCurrentVersion;
    return {'Z', 'R', '3', '1', '0', 0x00, version, 0x00};
}

std::size_t EmulatedRadio::expectedLength() const {
    const std::uint8_t head = m_packet.front();
    if (head == kStx)
        return m_mode == Mode::AwaitIdentify ? 1 : kWakeUp.size();
    if (m_mode == Mode::Tuning)
        return head == kTuneLeave ? 1 : 3;
    switch (head) {
    case kReadCommand:
        return kReadBlockPacketLength;
    case kWriteCommand:
        return kWriteBlockPacketLength;
    case 'E':
        return kEnd.size();
    case 'Q':
        return kTuningCommand.size();
    default:
        return 1;
    }
}

bool EmulatedRadio::startsPacket(std::uint8_t byte) const {
    // What may start a packet depends on the mode; anything else is line
    // noise to the radio and ignored.
    const bool forgivingWakeUp = byte == kStx && !m_options.strict;
    switch (m_mode) {
    case Mode::Idle:
    case Mode::AwaitIdentify:
        return byte == kStx;
    case Mode::AwaitConfirm:
        return byte == kAck || forgivingWakeUp;
    case Mode::Programming:
        return byte == kReadCommand || byte == kWriteCommand || byte == 'E' || byte == 'Q' ||
               byte == kAck || forgivingWakeUp;
    case Mode::Tuning:
        return !m_options.strict || byte != kStx;
    }
    return false;
}

std::vector<std::uint8_t> EmulatedRadio::receive(std::uint8_t byte) {
    if (m_packet.empty() && !startsPacket(byte))
        return {};
    m_packet.push_back(byte);
    if (m_packet.size() < expectedLength())
        return {};
    auto reply = handlePacket();
    m_packet.clear();
    if (m_options.fault.kind == RadioFault::Kind::Silent)
        return {};
    return reply;
}

std::optional<int> EmulatedRadio::dropsSessionAfterMs() const {
    if (m_options.fault.kind != RadioFault::Kind::DropAfter)
        return std::nullopt;
    return m_options.fault.block;
}

void EmulatedRadio::lineIdle() {
    m_packet.clear();
    if (m_mode != Mode::Tuning)
        m_mode = Mode::Idle;
}

std::vector<std::uint8_t> EmulatedRadio::handlePacket() {
    if (m_packet.front() == kStx && m_mode != Mode::AwaitIdentify) {
        if (!equals(m_packet, kWakeUp))
            return {};
        endSession();
        m_mode = Mode::AwaitIdentify;
        return withNoise({kAck}, false);
    }
    switch (m_mode) {
    case Mode::Idle:
        return {};
    case Mode::AwaitIdentify: {
        m_mode = Mode::AwaitConfirm;
        auto ident = identification();
        if (m_options.fault.kind == RadioFault::Kind::ShortIdent)
            ident.pop_back();
        return withNoise(ident, false);
    }
    case Mode::AwaitConfirm:
        m_mode = Mode::Programming;
        return withNoise({kAck}, false);
    case Mode::Programming:
        return handleProgramming();
    case Mode::Tuning:
        return handleTuning();
    }
    return {};
}

std::vector<std::uint8_t> EmulatedRadio::handleProgramming() {
    const std::uint8_t head = m_packet.front();
    if (head == kAck)
        return withNoise({kAck}, false);
    if (head == 'E') {
        if (equals(m_packet, kEnd))
            endSession();
        return {};
    }
    if (head == 'Q') {
        if (!equals(m_packet, kTuningCommand))
            return {};
        endSession();
        m_mode = Mode::Tuning;
        m_tuneItem.reset();
        return withNoise({kAck}, false);
    }

    // A block packet: "R"/"W", address high, address low, length 8.
    const int address = m_packet[1] * 256 + m_packet[2];
    if (m_packet[3] != kBlockLength || address > kMemorySize - 8)
        return {};
    ++m_sessionBlocks;
    const auto& fault = m_options.fault;
    if (fault.kind == RadioFault::Kind::Drop && m_sessionBlocks >= fault.block)
        return {}; // the radio has stopped answering, and acting
    if (head == kWriteCommand) {
        std::copy_n(m_packet.begin() + 4, 8, m_memory.begin() + address);
        if (fault.kind == RadioFault::Kind::Corrupt && m_sessionBlocks == fault.block)
            m_memory[toIndex(address)] ^= 0xFF;
        m_sessionWrote = true;
        ++m_blocksWritten;
        return blockReply({kAck});
    }
    std::vector<std::uint8_t> reply(m_packet.begin(), m_packet.begin() + 4);
    reply[0] = kWriteCommand;
    reply.insert(reply.end(), m_memory.begin() + address, m_memory.begin() + address + 8);
    return blockReply(std::move(reply));
}

std::vector<std::uint8_t> EmulatedRadio::blockReply(std::vector<std::uint8_t> reply) {
    const auto& fault = m_options.fault;
    if (fault.kind == RadioFault::Kind::BadLead && m_sessionBlocks == fault.block)
        reply[0] = kBadLeadByte;
    return withNoise(std::move(reply), true);
}

std::vector<std::uint8_t> EmulatedRadio::withNoise(std::vector<std::uint8_t> reply,
                                                   bool isBlockReply) const {
    const auto& fault = m_options.fault;
    if (fault.kind != RadioFault::Kind::Noise)
        return reply;
    if (fault.block != 0 && !(isBlockReply && m_sessionBlocks == fault.block))
        return reply;
    reply.insert(reply.begin(), 2, kNoiseByte);
    return reply;
}

void EmulatedRadio::endSession() {
    if (m_sessionWrote)
        ++m_commits;
    m_sessionWrote = false;
    m_sessionBlocks = 0;
    if (m_mode != Mode::Tuning)
        m_mode = Mode::Idle;
}

std::vector<std::uint8_t> EmulatedRadio::handleTuning() {
    if (m_packet.size() == 1) { // leave tuning mode
        m_tuneItem.reset();
        m_mode = Mode::Idle;
        return withNoise({kAck}, false);
    }
    const std::uint8_t head = m_packet[0];
    const std::uint8_t value = m_packet[1];
    const std::uint8_t op = m_packet[2];
    const std::vector<std::uint8_t> refused{kTuneRefused};
    if (m_options.fault.kind == RadioFault::Kind::RefuseTuning)
        return withNoise(refused, false);
    switch (op) {
    case kTuneOpEnter: {
        const auto* item = itemByCode(head);
        if (!item)
            return withNoise(refused, false);
        m_tuneItem = item->itemCode;
        m_tuneValue = m_memory[tuningAddress(*item)];
        return withNoise({kTuneValueReply, m_tuneValue}, false);
    }
    case kTuneOpValue:
    case kTuneOpConfirm: {
        const auto* item = itemByLetter(head);
        if (!item || m_tuneItem != item->itemCode)
            return withNoise(refused, false);
        m_tuneValue = value;
        if (op == kTuneOpConfirm) {
            m_memory[tuningAddress(*item)] = value;
            m_tuneItem.reset();
            ++m_commits;
        }
        return withNoise({kAck}, false);
    }
    case kTuneOpCancel: {
        // The value being tried is dropped. A cancel carrying another item's
        // code switches to that item (the technician chose it while one was
        // in progress) and reports its stored value as an enter does; the
        // code of the item in progress, or no item's code, goes back to the
        // test channels.
        const auto* item = itemByCode(head);
        if (m_tuneItem && item && item->itemCode != *m_tuneItem) {
            m_tuneItem = item->itemCode;
            m_tuneValue = m_memory[tuningAddress(*item)];
            return withNoise({kTuneValueReply, m_tuneValue}, false);
        }
        m_tuneItem.reset();
        return withNoise({kAck}, false);
    }
    default:
        return withNoise(refused, false);
    }
}

} // namespace zr310
