#include "radio_image.h"

#include "sizes.h"

namespace zr310 {

std::array<std::uint8_t, RadioImage::kBlocks> RadioImage::column(int column) const {
    std::array<std::uint8_t, kBlocks> bytes{};
    for (int block = 0; block < kBlocks; ++block)
        bytes[toIndex(block)] = at(column, block);
    return bytes;
}

void RadioImage::setColumn(int column, std::span<const std::uint8_t, kBlocks> bytes) {
    for (int block = 0; block < kBlocks; ++block)
        set(column, block, bytes[toIndex(block)]);
}

RadioImage::Bytes RadioImage::toRadioOrder() const {
    Bytes out{};
    for (std::size_t linear = 0; linear < kSize; ++linear)
        out[toIndex(radioAddressOf(linear))] = m_bytes[linear];
    return out;
}

RadioImage RadioImage::fromRadioOrder(std::span<const std::uint8_t, kSize> bytes) {
    RadioImage image;
    for (std::size_t linear = 0; linear < kSize; ++linear)
        image.m_bytes[linear] = bytes[toIndex(radioAddressOf(linear))];
    return image;
}

RadioImage makeStartImage() {
    RadioImage image;
    image[0x3D6] = 0x03; // time-out timer: 30 s
    return image;
}

} // namespace zr310
