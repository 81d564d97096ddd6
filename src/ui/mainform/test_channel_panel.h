#pragma once

#include "channel.h"
#include "radio_image.h"

#include <QGroupBox>

#include <array>
#include <functional>

class QButtonGroup;
class QCheckBox;
class QLabel;
class QPushButton;
class QRadioButton;
class QTableWidget;

namespace zr310::ui {

class ChannelGrid;
class FrequencyBox;
class ImageEditor;

// The test channel frame `FraTestCH` of tuning mode: the eleven test channels
// in `TestChannelGrid` (CH, RX Freq, Step, RX CTC/DCS, TX Freq, Step, TX
// CTC/DCS), beside each row the boxes `TestChkClose_i` and
// `TestChkForbidTX_i` and the choice `OptAddjust_i` of the channel being
// adjusted (i = 0..10), the frequency box `TxtInputTest`, and
// `CmdWriteTFreq`. Edits go through the ImageEditor as one step each; a row
// is drawn again from the image after every edit.
class TestChannelPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit TestChannelPanel(QWidget* parent = nullptr);

    void setEditor(ImageEditor* editor) { m_editor = editor; }

    // Heading line and row labels as first set up.
    void frameUp();
    void applyLanguage(Language language);
    // ReFlashTestData: every row, box and choice from the image; the Type
    // and Frequency Band labels show the model and `bandText`.
    void refresh(const RadioImage& image, const QString& bandText, Language language);
    // Lays out the frame's insides, the grid's rows `rowGrowth` times their
    // start height.
    void placeContents(double rowGrowth);
    // Ends an edit in the frequency box as leaving it would.
    void commitEdit();

    QTableWidget* grid() const;
    // The test channel chosen for adjustment (1..11), 0 for none.
    int adjustedChannel() const;

signals:
    // Write Test Frequency was pressed.
    void writeRequested();

private:
    using RecordChange = std::function<void(RadioImage& image, int evenColumn)>;

    void renderRow(int t, const RadioImage& image, Language language);
    void paintRow(int t);
    void actOnCell(int row, int column);
    void openInputBox(int row, int column, const QString& typed = {});
    void inputBoxClosed(bool accepted, bool moveRight);
    void openSignalling(int row, Side side);
    void editRecord(int t, const RecordChange& change);
    bool isClosed(int t) const;

    ImageEditor* m_editor = nullptr;
    ChannelGrid* m_grid = nullptr;
    FrequencyBox* m_txtInputTest = nullptr;
    int m_boxRow = 0;
    int m_boxColumn = 0;
    QLabel* m_lblTestType = nullptr;
    QLabel* m_lblTestModel = nullptr;
    QLabel* m_lblTestBand = nullptr;
    QLabel* m_lblTestBandValue = nullptr;
    QLabel* m_lblTestCh = nullptr;
    QLabel* m_lblClose = nullptr;
    QLabel* m_lblForbidTx = nullptr;
    QPushButton* m_cmdWriteTFreq = nullptr;
    QButtonGroup* m_adjustGroup = nullptr;
    std::array<QCheckBox*, kTestChannelCount> m_chkClose{};
    std::array<QCheckBox*, kTestChannelCount> m_chkForbidTx{};
    std::array<QRadioButton*, kTestChannelCount> m_optAdjust{};
};

} // namespace zr310::ui
