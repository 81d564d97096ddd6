#pragma once

#include "radio_image.h"
#include "string_table.h"

#include <QObject>

class QGroupBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

namespace zr310::ui {

// The frames of tuning mode, hidden outside it: the tree of tuning items
// `TreeViewTune`, the item frame `FraTune` (with `FraTuneCH`,
// `HscTuneValue`, `LblTuneAddjustValue`, `CmdTuneOK`, `CmdTuneCancel`) and
// the test channel frame `FraTestCH` with `TestChannelGrid`.
class TuningPanels : public QObject {
    Q_OBJECT
public:
    explicit TuningPanels(QWidget* frame1);

    void frameUpTestGrid();
    // Shows the eleven test channels of the image (ReFlashTestData's texts).
    void refreshTestChannels(RadioImage& image, Language language);
    void applyLanguage(Language language);
    // Lays out the insides of the frames after they were placed.
    void placeContents();
    void setShown(bool shown);

    QTreeWidget* tree() const { return m_tree; }
    QGroupBox* fraTune() const { return m_fraTune; }
    QGroupBox* fraTestCh() const { return m_fraTestCh; }
    QTableWidget* testGrid() const { return m_testGrid; }

private:
    QTreeWidget* m_tree = nullptr;
    QTreeWidgetItem* m_nodeT = nullptr;
    QTreeWidgetItem* m_nodeS = nullptr;
    QTreeWidgetItem* m_nodeQ = nullptr;
    QTreeWidgetItem* m_nodeItems[5]{};

    QGroupBox* m_fraTune = nullptr;
    QGroupBox* m_fraTuneCh = nullptr;
    QLabel* m_tuneLabels[5]{}; // RX Freq, RX CTC/DCS, TX Freq, TX CTC/DCS, Tuning Value
    QScrollBar* m_hscTuneValue = nullptr;
    QLabel* m_lblTuneValue = nullptr;
    QPushButton* m_cmdTuneOk = nullptr;
    QPushButton* m_cmdTuneCancel = nullptr;

    QGroupBox* m_fraTestCh = nullptr;
    QLabel* m_lblTestCh = nullptr;
    QLabel* m_lblClose = nullptr;
    QLabel* m_lblForbidTx = nullptr;
    QLabel* m_lblTestType = nullptr;
    QLabel* m_lblTestBand = nullptr;
    QTableWidget* m_testGrid = nullptr;
    QPushButton* m_cmdWriteTFreq = nullptr;
};

} // namespace zr310::ui
