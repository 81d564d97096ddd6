#pragma once

#include "channel.h"
#include "radio_image.h"

#include <QBrush>
#include <QGroupBox>
#include <QPoint>

#include <array>
#include <functional>

class QCheckBox;
class QLabel;
class QTableWidget;

namespace zr310::ui {

class ChannelGrid;
class FrequencyBox;
class ImageEditor;

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
//
// Every edit (a click on a cell, the frequency box, the signalling dialog, a
// box beside the grid) goes through the ImageEditor as one step, and the row
// is then drawn again from the image, so the grid always shows what the
// image holds.
class ChannelPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit ChannelPanel(QWidget* parent = nullptr);

    void setEditor(ImageEditor* editor) { m_editor = editor; }

    // Rows, columns, the Chinese header line and the row labels.
    void frameUp();
    // Header row, row labels, legend and the cell words in the current
    // language; colours and check boxes stay as they are.
    void applyLanguage(Language from, Language to);
    // Fills every cell, colour and box from the image. Simplex boxes are
    // ticked for open channels that transmit as they receive.
    void refresh(const RadioImage& image, bool narrowBandRadio, Language language);
    // Lays out the grid and the boxes inside the frame's current size, the
    // rows `rowGrowth` times their start height.
    void placeContents(double rowGrowth);

    // Ends an edit in the frequency box as leaving it would.
    void commitEdit();
    bool isInputBoxOpen() const;
    FrequencyBox* inputBox() const { return m_txtInputBox; }
    // Puts the keyboard on CH 1 / RX Freq.
    void focusFirstCell();
    // The channels with a selected cell (the current one when none is).
    QList<int> selectedChannels() const;

    QTableWidget* grid() const;
    QColor systemGreyText() const;

    // Gives cells (x: grid column, y: channel row) a red background until the
    // next refresh, to point at what the checks before a write found.
    void markCells(const QList<QPoint>& cells);

private:
    using ChannelChange = std::function<void(RadioImage& image, int evenColumn)>;

    void setCell(int row, int column, const QString& text);
    void colourCell(int row, int column, const QColor& colour);
    void colourChannel(int n, const ChannelTexts& texts, bool narrowBandRadio, Language language);
    void renderRow(int n, const RadioImage& image, Language language);

protected:
    // Arrow keys between the boxes beside the grid and back into it.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Editing (channel_panel_editing.cpp).
    void connectEditors();
    void actOnCell(int row, int column);
    void openInputBox(int row, int column, const QString& typed = {});
    void inputBoxClosed(bool accepted, bool moveRight);
    void openSignalling(int row, Side side);
    void toggleCell(int row, int column);
    void closeClicked(int i, bool checked);
    void forbidTxClicked(int i, bool checked);
    void sameFreqClicked(int i, bool checked);
    // Edits channel n as one step; an edit of the receive side is copied to
    // the transmit side while the channel is simplex. Redraws the row.
    void editChannel(int n, const ChannelChange& change, bool receiveSide = false);
    bool isBlank(int n) const;
    // The box `k` (0 Close, 1 No TX, 2 Simplex) beside channel n.
    QCheckBox* channelBox(int n, int k) const;
    void moveAmongBoxes(int n, int k, int key);
    bool isNoTx(int n) const;

    ImageEditor* m_editor = nullptr;
    ChannelGrid* m_grid = nullptr;
    FrequencyBox* m_txtInputBox = nullptr;
    int m_boxRow = 0;
    int m_boxColumn = 0;
    bool m_narrowBandRadio = false;
    std::array<bool, kChannelCount> m_simplex{};
    QLabel* m_legendClose = nullptr;
    QLabel* m_legendNoTx = nullptr;
    QLabel* m_legendSimplex = nullptr;
    std::array<QCheckBox*, kChannelCount> m_chkClose{};
    std::array<QCheckBox*, kChannelCount> m_chkForbidTx{};
    std::array<QCheckBox*, kChannelCount> m_chkSameFreq{};
    QList<std::pair<QPoint, QBrush>> m_marks; // marked cells with their own background
};

} // namespace zr310::ui
