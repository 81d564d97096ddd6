#pragma once

// An emulated ZR-310: its 1024 bytes of memory and the radio side of the
// programming protocol and of the tuning exchange. It is fed the PC's bytes
// one at a time and answers with the bytes the radio sends back once a
// packet is complete. It keeps no time; LinePacer and the pty server pace
// its answers like a real 9600 baud line.

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zr310 {

// A fault the emulated radio can show, to exercise the PC's error paths.
struct RadioFault {
    enum class Kind {
        None,
        Silent,       // never answers
        ShortIdent,   // identification of 7 bytes
        BadLead,      // the reply to block `block` leads with another byte
        Drop,         // no reply from block `block` on
        Noise,        // stray bytes before every reply, or before block `block`'s
        RefuseTuning, // answers 'b' to every tuning frame but leaving tuning mode
        Corrupt,      // acknowledges write block `block` but stores its first byte inverted
        DropAfter,    // gives up a half-done session after `block` ms of silence
    };
    Kind kind = Kind::None;
    int block = 0; // 1-based block packet of the session; 0 = every reply (noise)

    // "silent", "short-ident", "bad-lead:N", "drop:N", "noise", "noise:N",
    // "refuse-tuning", "corrupt:N", "drop-after:MS".
    static std::optional<RadioFault> parse(std::string_view text);
    std::string toString() const;
};

struct EmulatedRadioOptions {
    bool version10 = false; // identification byte 7 is 0x01 instead of 0x02
    RadioFault fault{};
    // Strict: does only what the written protocol says. A wake-up is heard
    // only while idle; in a session each state answers only its own packet,
    // the block state only blocks, "END" and the tuning-mode entry (confirm,
    // tuning command). Forgiving (the default): a wake-up starts a new
    // session in any state, as a radio switched off and on would.
    // Neither gives up a session on its own (see RadioFault::DropAfter).
    bool strict = false;
};

class EmulatedRadio {
public:
    static constexpr int kMemorySize = 1024;
    using Memory = std::array<std::uint8_t, kMemorySize>; // radio address order

    enum class Mode { Idle, AwaitIdentify, AwaitConfirm, Programming, Tuning };

    static constexpr std::uint8_t kNoiseByte = 0x00;
    static constexpr std::uint8_t kBadLeadByte = 0x15; // NAK

    explicit EmulatedRadio(const Memory& memory, EmulatedRadioOptions options = {});

    // One byte from the PC; the answer, if this byte completed a packet.
    std::vector<std::uint8_t> receive(std::uint8_t byte);

    // The line has been quiet long enough that a half-done programming
    // session is over: back to waiting for a wake-up. Tuning mode stays.
    void lineIdle();
    // How long a quiet line takes to end a half-done session (lineIdle),
    // none when the radio waits for ever.
    std::optional<int> dropsSessionAfterMs() const;

    const Memory& memory() const { return m_memory; }
    Mode mode() const { return m_mode; }
    const EmulatedRadioOptions& options() const { return m_options; }

    // Counts the moments the memory was changed for good: a programming
    // session that wrote blocks and ended, or a confirmed tuning value.
    int commits() const { return m_commits; }
    // Block packets written in all sessions, for tests.
    int blocksWritten() const { return m_blocksWritten; }

    // Tuning mode: the item being adjusted and its live value.
    std::optional<std::uint8_t> activeTuningItem() const { return m_tuneItem; }
    std::uint8_t liveTuningValue() const { return m_tuneValue; }

    // The 8-byte identification this radio answers with.
    std::vector<std::uint8_t> identification() const;

private:
    std::vector<std::uint8_t> handlePacket();
    std::vector<std::uint8_t> handleProgramming();
    std::vector<std::uint8_t> handleTuning();
    std::vector<std::uint8_t> blockReply(std::vector<std::uint8_t> reply);
    std::size_t expectedLength() const;
    bool startsPacket(std::uint8_t byte) const;
    std::vector<std::uint8_t> withNoise(std::vector<std::uint8_t> reply, bool blockReply) const;
    void endSession();

    Memory m_memory;
    EmulatedRadioOptions m_options;
    Mode m_mode = Mode::Idle;
    std::vector<std::uint8_t> m_packet;
    int m_sessionBlocks = 0;
    bool m_sessionWrote = false;
    int m_commits = 0;
    int m_blocksWritten = 0;
    std::optional<std::uint8_t> m_tuneItem;
    std::uint8_t m_tuneValue = 0;
};

} // namespace zr310
