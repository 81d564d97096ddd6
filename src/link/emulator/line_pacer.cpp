#include "line_pacer.h"

#include <algorithm>

namespace zr310 {

LinePacer::TimePoint LinePacer::arrival(TimePoint now) {
    if (!m_paced)
        return now;
    m_inboundFree = std::max(now, m_inboundFree) + kByteTime;
    return m_inboundFree;
}

void LinePacer::queue(std::span<const std::uint8_t> bytes, TimePoint at) {
    for (const std::uint8_t byte : bytes) {
        if (m_paced) {
            m_outboundFree = std::max(at, m_outboundFree) + kByteTime;
            m_outbound.push_back({m_outboundFree, byte});
        } else {
            m_outbound.push_back({at, byte});
        }
    }
}

std::vector<std::uint8_t> LinePacer::takeDue(TimePoint now) {
    std::vector<std::uint8_t> due;
    while (!m_outbound.empty() && m_outbound.front().due <= now) {
        due.push_back(m_outbound.front().byte);
        m_outbound.pop_front();
    }
    return due;
}

std::optional<LinePacer::TimePoint> LinePacer::nextDue() const {
    if (m_outbound.empty())
        return std::nullopt;
    return m_outbound.front().due;
}

} // namespace zr310
