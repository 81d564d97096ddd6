#pragma once

// Reads a fuzzer input front to back, so that a seed can be written by hand:
// one byte a choice, and runs of bytes taken as they are. Past the end a
// choice reads 0 and a run is cut short.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <span>
#include <vector>

namespace zr310::fuzz {

class FuzzInput {
public:
    explicit FuzzInput(std::span<const std::uint8_t> data) : m_data(data) {}

    bool empty() const { return m_at >= m_data.size(); }
    std::uint8_t byte() { return empty() ? 0 : m_data[m_at++]; }
    std::vector<std::uint8_t> bytes(std::size_t count) {
        std::vector<std::uint8_t> taken;
        while (taken.size() < count && !empty())
            taken.push_back(m_data[m_at++]);
        return taken;
    }

private:
    std::span<const std::uint8_t> m_data;
    std::size_t m_at = 0;
};

// Stops the run with a message, so that libFuzzer keeps the input.
[[noreturn]] inline void fail(const char* what) {
    std::fprintf(stderr, "fuzz check failed: %s\n", what);
    std::abort();
}

inline void check(bool condition, const char* what) {
    if (!condition)
        fail(what);
}

} // namespace zr310::fuzz
