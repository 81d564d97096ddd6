#include "channel.h"

#include "byte_fields.h"

namespace zr310 {

ChannelView::SideLayout ChannelView::layout(Side side) {
    // Receive: frequency in blocks 0-1, flags in block 2, tone in blocks 3-4
    // of the even column. Transmit: frequency in blocks 5-6, flags in block 7
    // of the even column, tone in blocks 0-1 of the odd column.
    if (side == Side::Receive)
        return {0, 1, 2, 0, 3, 4};
    return {5, 6, 7, 1, 0, 1};
}

std::size_t ChannelView::flagsOffset(Side side) const {
    return RadioImage::linearOffset(m_column, layout(side).flagsBlock);
}

void ChannelRecord::setFlag(std::size_t offset, std::uint8_t mask, bool on) {
    auto& byte = (*m_image)[offset];
    byte = on ? (byte | mask) : (byte & ~mask);
}

FrequencyCode ChannelView::frequency(Side side) const {
    const SideLayout l = layout(side);
    const std::uint8_t flagsByte = m_view->at(m_column, l.flagsBlock);
    const std::uint32_t steps = (flagsByte & kFreqBit16 ? 0x10000u : 0u) |
                                std::uint32_t{m_view->at(m_column, l.freqHighBlock)} << 8 |
                                m_view->at(m_column, l.freqLowBlock);
    return {steps, (flagsByte & kStep625) != 0};
}

void ChannelRecord::setFrequency(Side side, double mhz) {
    const SideLayout l = layout(side);
    const FrequencyCode code = encodeFrequency(mhz);
    m_image->set(m_column, l.freqLowBlock, code.steps & 0xFF);
    m_image->set(m_column, l.freqHighBlock, (code.steps >> 8) & 0xFF);
    auto& flagsByte = (*m_image)[flagsOffset(side)];
    flagsByte |= (code.steps >> 16) & kFreqBit16;
    setFlag(flagsOffset(side), kStep625, code.step625);
}

Tone ChannelView::tone(Side side) const {
    const SideLayout l = layout(side);
    const int column = m_column + l.toneColumnOffset;
    return decodeTone(m_view->at(m_column, l.flagsBlock), m_view->at(column, l.toneLowBlock),
                      m_view->at(column, l.toneHighBlock));
}

void ChannelRecord::setTone(Side side, Tone tone) {
    const SideLayout l = layout(side);
    const int column = m_column + l.toneColumnOffset;
    m_image->set(column, l.toneLowBlock, lowByte(tone.value));
    m_image->set(column, l.toneHighBlock, highByte(tone.value));
    auto& flagsByte = (*m_image)[flagsOffset(side)];
    flagsByte = withBits(flagsByte, kToneType, toneTypeBits(tone.kind));
}

void ChannelRecord::copyReceiveToTransmit() {
    const SideLayout rx = layout(Side::Receive);
    const SideLayout tx = layout(Side::Transmit);
    m_image->set(m_column, tx.freqLowBlock, m_image->at(m_column, rx.freqLowBlock));
    m_image->set(m_column, tx.freqHighBlock, m_image->at(m_column, rx.freqHighBlock));
    constexpr std::uint8_t kCopied = kFreqBit16 | kStep625 | kToneType;
    auto& txFlags = (*m_image)[flagsOffset(Side::Transmit)];
    txFlags = withBits(txFlags, kCopied, flags(Side::Receive));
    setTone(Side::Transmit, tone(Side::Receive));
}

ChannelTexts decodeChannel(const RadioImage& image, int evenColumn, Language language) {
    const ChannelView record(image, evenColumn);
    auto word = [language](int id) { return std::string(ResString(id, language)); };
    ChannelTexts texts;
    texts.rxFreq = formatFrequency(frequencyMHz(record.frequency(Side::Receive)));
    texts.txFreq = formatFrequency(frequencyMHz(record.frequency(Side::Transmit)));
    texts.rxTone = toneText(record.tone(Side::Receive));
    texts.txTone = toneText(record.tone(Side::Transmit));
    texts.scan = word(record.scanDeleted() ? txt::Del : txt::Add);
    texts.busyLock = word(record.busyLock() ? txt::On : txt::Off);
    texts.power = word(record.lowPower() ? txt::Low : txt::High);
    texts.bandwidth = word(record.narrow() ? txt::Narrow : txt::Wide);
    texts.close = !record.isOpen();
    texts.noTx = !record.txAllowed();
    return texts;
}

std::string stepText(FrequencyCode code) {
    return code.step625 ? "6.25" : "5.00";
}

} // namespace zr310
