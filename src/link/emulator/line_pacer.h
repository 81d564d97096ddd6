#pragma once

#include <chrono>
#include <cstdint>
#include <deque>
#include <optional>
#include <span>
#include <vector>

namespace zr310 {

// Times the bytes of an emulated serial line at 9600 baud, 8N2: 11 bits, so
// 1.146 ms a byte, in each direction. The PC's packet reaches the radio one
// byte time after another, the radio answers when the last byte is in, and
// each reply byte is handed to the PC when its stop bits are through. Keeps
// no clock itself: the caller passes the current time.
class LinePacer {
public:
    using Clock = std::chrono::steady_clock;
    using TimePoint = Clock::time_point;

    static constexpr int kBitsPerByte = 11; // start, 8 data, 2 stop
    static constexpr int kBaudRate = 9600;
    static constexpr std::chrono::nanoseconds kByteTime{1'000'000'000LL * kBitsPerByte / kBaudRate};

    explicit LinePacer(bool paced = true) : m_paced(paced) {}

    // When a byte the PC wrote at `now` has fully arrived at the radio.
    TimePoint arrival(TimePoint now);

    // The radio starts sending `bytes` at `at`.
    void queue(std::span<const std::uint8_t> bytes, TimePoint at);

    // The reply bytes that have fully arrived at the PC by `now`.
    std::vector<std::uint8_t> takeDue(TimePoint now);
    std::optional<TimePoint> nextDue() const;

    bool paced() const { return m_paced; }

private:
    struct Timed {
        TimePoint due;
        std::uint8_t byte;
    };
    bool m_paced = true;
    TimePoint m_inboundFree{};
    TimePoint m_outboundFree{};
    std::deque<Timed> m_outbound;
};

} // namespace zr310
