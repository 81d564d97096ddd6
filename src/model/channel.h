#pragma once

#include "frequency.h"
#include "radio_image.h"
#include "string_table.h"
#include "tones.h"

#include <string>

namespace zr310 {

inline constexpr int kChannelCount = 16;
inline constexpr int kTestChannelCount = 11;
inline constexpr int kFirstTestColumn = 0x20;

constexpr int channelColumn(int channel) {
    return 2 * (channel - 1);
} // n = 1..16
constexpr int testChannelColumn(int testChannel) {
    return kFirstTestColumn + 2 * (testChannel - 1);
} // t = 1..11

enum class Side { Receive, Transmit };

// A channel record, read only: two adjacent columns of the image. The even
// column holds both frequencies, their flags and the receive tone; the odd
// column the transmit tone and the option flags. Test channels use the same
// layout.
class ChannelView {
public:
    ChannelView(const RadioImage& image, int evenColumn) : m_view(&image), m_column(evenColumn) {}

    FrequencyCode frequency(Side side) const;
    Tone tone(Side side) const;

    bool isOpen() const { return flags(Side::Receive) & kInUse; }     // "Close" unchecked
    bool txAllowed() const { return flags(Side::Transmit) & kInUse; } // "No TX" unchecked
    bool narrow() const { return options() & kNarrow; }
    bool busyLock() const { return options() & kBusyLock; }
    bool scanDeleted() const { return options() & kScanDeleted; }
    bool lowPower() const { return options() & kLowPower; }

    static constexpr std::uint8_t kFreqBit16 = 0x01;
    static constexpr std::uint8_t kStep625 = 0x04;
    static constexpr std::uint8_t kInUse = 0x08;
    static constexpr std::uint8_t kToneType = 0x70;
    static constexpr std::uint8_t kNarrow = 0x01;
    static constexpr std::uint8_t kBusyLock = 0x04;
    static constexpr std::uint8_t kScanDeleted = 0x10;
    static constexpr std::uint8_t kLowPower = 0x20;

protected:
    struct SideLayout {
        int freqLowBlock, freqHighBlock, flagsBlock;
        int toneColumnOffset, toneLowBlock, toneHighBlock;
    };
    static SideLayout layout(Side side);

    std::size_t flagsOffset(Side side) const;
    std::size_t optionsOffset() const { return RadioImage::linearOffset(m_column + 1, 2); }
    std::uint8_t flags(Side side) const { return (*m_view)[flagsOffset(side)]; }
    std::uint8_t options() const { return (*m_view)[optionsOffset()]; }

    const RadioImage* m_view;
    int m_column;
};

// A channel record that edits the image in place.
class ChannelRecord : public ChannelView {
public:
    ChannelRecord(RadioImage& image, int evenColumn)
        : ChannelView(image, evenColumn), m_image(&image) {}

    static ChannelRecord channel(RadioImage& image, int n) { return {image, channelColumn(n)}; }
    static ChannelRecord testChannel(RadioImage& image, int t) {
        return {image, testChannelColumn(t)};
    }

    // Stores the radio's encoding of mhz. Bit 16 of the count is ORed into the
    // flags byte and never cleared here, as the radio's own software does.
    void setFrequency(Side side, double mhz);
    void setTone(Side side, Tone tone);

    void setOpen(bool open) { setFlag(flagsOffset(Side::Receive), kInUse, open); }
    void setTxAllowed(bool allowed) { setFlag(flagsOffset(Side::Transmit), kInUse, allowed); }
    void setNarrow(bool on) { setFlag(optionsOffset(), kNarrow, on); }
    void setBusyLock(bool on) { setFlag(optionsOffset(), kBusyLock, on); }
    void setScanDeleted(bool on) { setFlag(optionsOffset(), kScanDeleted, on); }
    void setLowPower(bool on) { setFlag(optionsOffset(), kLowPower, on); }

    // Version-1.0 radios have no narrow band and no low power: their option
    // flags are masked so that the channel shows and stores Wide and High.
    void forceWideAndHigh() { (*m_image)[optionsOffset()] &= 0xDE; }

    // Copies the receive frequency, step and tone onto the transmit side
    // (simplex), keeping the transmit-allowed bit.
    void copyReceiveToTransmit();

private:
    void setFlag(std::size_t offset, std::uint8_t mask, bool on);

    RadioImage* m_image;
};

// Everything the channel grid shows for one channel, in one language.
struct ChannelTexts {
    std::string rxFreq, txFreq, rxTone, txTone;
    std::string scan, busyLock, power, bandwidth;
    bool close = false;
    bool noTx = false;
};

// Decodes the channel at `evenColumn` (a channel or a test channel).
ChannelTexts decodeChannel(const RadioImage& image, int evenColumn, Language language);

// "6.25" or "5.00": the step of one side, as the test channel grid shows it.
std::string stepText(FrequencyCode code);

} // namespace zr310
