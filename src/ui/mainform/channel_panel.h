#pragma once

#include "channel.h"
#include "radio_image.h"

#include <QGroupBox>

#include <array>

class QCheckBox;
class QLabel;
class QLineEdit;
class QTableWidget;

namespace zr310::ui {

// Text colours of the channel grid, as 0x00BBGGRR values.
inline constexpr std::uint32_t kCellGreen = 0x608030;
inline constexpr std::uint32_t kCellDarkRed = 0x000090;
inline constexpr std::uint32_t kCellMidGrey = 0x808080;

// Grid columns.
enum GridColumn {
    kColLabel = 0,
    kColRxFreq,
    kColRxTone,
    kColTxFreq,
    kColTxTone,
    kColScan,
    kColBusyLock,
    kColPower,
    kColBandwidth,
    kGridColumns
};
inline constexpr int kGridRows = 1 + kChannelCount;

// The "Channel Setting" frame `FraCHSet`: the channel grid `channelGrid`, its
// in-place frequency box `txtInputBox`, the legend and, beside each channel
// row, the boxes `chkClose_i`, `chkForbidTx_i` and `chkSameFreq_i`
// (i = 0..15 for channels 1..16).
class ChannelPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit ChannelPanel(QWidget* parent = nullptr);

    // Rows, columns, the Chinese header line and the row labels.
    void frameUp();
    // Header row, row labels, legend and the cell words in the current
    // language; colours and check boxes stay as they are.
    void applyLanguage(Language from, Language to);
    // Fills every cell, colour and box from the image.
    void refresh(const RadioImage& image, bool narrowBandRadio, Language language);
    // Lays out the grid and the boxes inside the frame's current size.
    void placeContents();

    QTableWidget* grid() const { return m_grid; }
    QColor systemGreyText() const;

private:
    void setCell(int row, int column, const QString& text);
    void colourCell(int row, int column, const QColor& colour);
    void colourChannel(int n, const ChannelTexts& texts, bool narrowBandRadio, Language language);

    QTableWidget* m_grid = nullptr;
    QLineEdit* m_txtInputBox = nullptr;
    QLabel* m_legendClose = nullptr;
    QLabel* m_legendNoTx = nullptr;
    QLabel* m_legendSimplex = nullptr;
    std::array<QCheckBox*, kChannelCount> m_chkClose{};
    std::array<QCheckBox*, kChannelCount> m_chkForbidTx{};
    std::array<QCheckBox*, kChannelCount> m_chkSameFreq{};
};

} // namespace zr310::ui
