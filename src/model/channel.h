#pragma once

#include "frequency.h"
#include "radio_image.h"
#include "strings.h"
#include "tones.h"

#include <string>

namespace zr310 {

inline constexpr int kChannelCount = 16;
inline constexpr int kTestChannelCount = 11;
inline constexpr int kFirstTestColumn = 0x20;

constexpr int channelColumn(int channel) { return 2 * (channel - 1); }                // n = 1..16
constexpr int testChannelColumn(int testChannel) { return kFirstTestColumn + 2 * (testChannel - 1); } // t = 1..11

enum class Side { Receive, Transmit };

// A channel record: two adjacent columns of the image. The even column holds
// both frequencies, their flags and the receive tone; the odd column the
// transmit tone and the option flags. Test channels use the same layout.
class ChannelRecord {
public:
    ChannelRecord(RadioImage& image, int evenColumn) : m_image(&image), m_column(evenColumn) {}

    static ChannelRecord channel(RadioImage& image, int n) { return {image, channelColumn(n)}; }
    static ChannelRecord testChannel(RadioImage& image, int t) {
        return {image, testChannelColumn(t)};
    }

    FrequencyCode frequency(Side side) const;
    // Stores the radio's encoding of mhz. Bit 16 of the count is ORed into the
    // flags byte and never cleared here, as the radio's own software does.
    void setFrequency(Side side, double mhz);

    Tone tone(Side side) const;
    void setTone(Side side, Tone tone);

    bool isOpen() const { return flags(Side::Receive) & kInUse; }      // "Close" unchecked
    bool txAllowed() const { return flags(Side::Transmit) & kInUse; } // "No TX" unchecked
    void setOpen(bool open) { setFlag(flagsOffset(Side::Receive), kInUse, open); }
    void setTxAllowed(bool allowed) { setFlag(flagsOffset(Side::Transmit), kInUse, allowed); }

    bool narrow() const { return options() & kNarrow; }
    bool busyLock() const { return options() & kBusyLock; }
    bool scanDeleted() const { return options() & kScanDeleted; }
    bool lowPower() const { return options() & kLowPower; }
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

    static constexpr std::uint8_t kFreqBit16 = 0x01;
    static constexpr std::uint8_t kStep625 = 0x04;
    static constexpr std::uint8_t kInUse = 0x08;
    static constexpr std::uint8_t kToneType = 0x70;
    static constexpr std::uint8_t kNarrow = 0x01;
    static constexpr std::uint8_t kBusyLock = 0x04;
    static constexpr std::uint8_t kScanDeleted = 0x10;
    static constexpr std::uint8_t kLowPower = 0x20;

private:
    struct SideLayout {
        int freqLowBlock, freqHighBlock, flagsBlock;
        int toneColumnOffset, toneLowBlock, toneHighBlock;
    };
    static SideLayout layout(Side side);

    std::size_t flagsOffset(Side side) const;
    std::size_t optionsOffset() const { return RadioImage::linearOffset(m_column + 1, 2); }
    std::uint8_t flags(Side side) const { return (*m_image)[flagsOffset(side)]; }
    std::uint8_t options() const { return (*m_image)[optionsOffset()]; }
    void setFlag(std::size_t offset, std::uint8_t mask, bool on);

    RadioImage* m_image;
    int m_column;
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
