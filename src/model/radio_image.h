#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace zr310 {

// The radio's 1024 programmable bytes, kept column-wise: 8 blocks of 128
// bytes. Byte (column c, block b) lies at linear offset b * 128 + c and is the
// radio's memory address c * 8 + b, so one column is one 8-byte packet on the
// wire and one record of the channel and option tables.
class RadioImage {
public:
    static constexpr std::size_t kSize = 1024;
    static constexpr int kBlocks = 8;
    static constexpr int kColumns = 128;

    using Bytes = std::array<std::uint8_t, kSize>;

    RadioImage() = default;

    static constexpr std::size_t linearOffset(int column, int block) {
        return static_cast<std::size_t>(block) * kColumns + static_cast<std::size_t>(column);
    }
    static constexpr int radioAddressOf(std::size_t linear) {
        return static_cast<int>((linear % kColumns) * kBlocks + linear / kColumns);
    }
    static constexpr std::size_t linearOffsetOf(int radioAddress) {
        return linearOffset(radioAddress / kBlocks, radioAddress % kBlocks);
    }

    std::uint8_t operator[](std::size_t linear) const { return m_bytes[linear]; }
    std::uint8_t& operator[](std::size_t linear) { return m_bytes[linear]; }

    std::uint8_t at(int column, int block) const { return m_bytes[linearOffset(column, block)]; }
    void set(int column, int block, std::uint8_t value) {
        m_bytes[linearOffset(column, block)] = value;
    }

    std::uint8_t atAddress(int radioAddress) const { return m_bytes[linearOffsetOf(radioAddress)]; }
    void setAtAddress(int radioAddress, std::uint8_t value) {
        m_bytes[linearOffsetOf(radioAddress)] = value;
    }

    // The 8 bytes of one column: radio addresses column * 8 .. column * 8 + 7.
    std::array<std::uint8_t, kBlocks> column(int column) const;
    void setColumn(int column, std::span<const std::uint8_t, kBlocks> bytes);

    const Bytes& linear() const { return m_bytes; }
    Bytes& linear() { return m_bytes; }

    // Radio-address order, as the radio holds its memory and as raw image
    // files store it.
    Bytes toRadioOrder() const;
    static RadioImage fromRadioOrder(std::span<const std::uint8_t, kSize> bytes);

    void fill(std::uint8_t value) { m_bytes.fill(value); }

    bool operator==(const RadioImage&) const = default;

private:
    Bytes m_bytes{};
};

// The image the program starts with before anything was read or opened:
// all zero, with the time-out timer on its first value (30 s).
RadioImage makeStartImage();

} // namespace zr310
