#pragma once

#include "radio_image.h"
#include "string_table.h"

#include <QObject>
#include <QPointer>
#include <QString>

#include <cstdint>

class QGroupBox;
class QLabel;
class QPushButton;
class QScrollBar;
class QTableWidget;
class QTreeWidget;
class QTreeWidgetItem;
class QWidget;

namespace zr310 {
class TuningSession;
}

namespace zr310::ui {

class ImageEditor;
class TestChannelPanel;

// The frames of tuning mode, hidden outside it: the tree of tuning items
// `TreeViewTune`, the item frame `FraTune` (with `FraTuneCH`,
// `HscTuneValue`, `LblTuneAddjustValue`, `CmdTuneOK`, `CmdTuneCancel`) and
// the test channel frame `FraTestCH` (TestChannelPanel).
//
// Choosing an item in the tree puts the radio into its adjustment and shows
// the item frame; every step of the value bar is sent to the radio at once;
// OK keeps the value (in the radio and in the image), Cancel drops it. The
// exchanges run on one TuningSession on the chosen port for as long as
// tuning mode lasts (tuning_items.cpp).
class TuningPanels : public QObject {
    Q_OBJECT
public:
    explicit TuningPanels(QWidget* frame1);
    ~TuningPanels() override;

    void setEditor(ImageEditor* editor);
    // The port the tuning exchanges use.
    void setPortName(const QString& portName) { m_portName = portName; }

    void frameUpTestGrid();
    // ReFlashTestData: the eleven test channels of the image, and the band
    // the model panel shows.
    void refreshTestChannels(const RadioImage& image, const QString& bandText, Language language);
    void applyLanguage(Language language);
    // Lays out the insides of the frames after they were placed.
    void placeContents(double rowGrowth);
    // Shows the tree and the test channels (entering tuning mode) or hides
    // all (leaving); ends the tuning session when hidden.
    void setShown(bool shown);
    // Ends an open edit of the test channel grid.
    void commitEdits();
    // Tells the radio to leave tuning mode (Channel Window, or the "Exit
    // tuning" node); nothing waits for its answer.
    void leaveTuningMode();

    QTreeWidget* tree() const { return m_tree; }
    QGroupBox* fraTune() const { return m_fraTune; }
    QGroupBox* fraTestCh() const;
    QTableWidget* testGrid() const;
    TestChannelPanel* testChannels() const { return m_testChannels; }

    // Tuning state, as the technician's actions set it.
    bool tuneItemActive() const { return m_tuneItemActive; }
    std::uint8_t lastTuneItemCode() const { return m_lastTuneItemCode; }

signals:
    // The "Exit tuning" node was chosen: the radio is told to leave tuning
    // mode, and the main window goes back to its channel view.
    void leaveRequested();
    // Write Test Frequency.
    void writeTestFrequencyRequested();

private:
    // What a node of the tree is, kept as its item data (Qt::UserRole): one
    // of these, or for a tuning item its index in kTuningItems (0..4).
    enum TuneNode : int { kNodeAdjustFrequency = -1, kNodeAllItems = -2, kNodeExit = -3 };

    // Tuning items (tuning_items.cpp).
    void nodeClicked(QTreeWidgetItem* node);
    void chooseItem(int index);
    void valueChanged(int value);
    void finishItem(bool keep);
    void send(int command);
    void exchangeFinished(int command, int result, int value);
    void showItemFrame(bool shown);
    void showAdjustedChannel();

    ImageEditor* m_editor = nullptr;
    QString m_portName;
    // Frames wait in the session while one is exchanged; a newer value of
    // the same item takes the place of one not yet sent.
    QPointer<TuningSession> m_session;

    QTreeWidget* m_tree = nullptr;
    QTreeWidgetItem* m_nodeT = nullptr;
    QTreeWidgetItem* m_nodeS = nullptr;
    QTreeWidgetItem* m_nodeQ = nullptr;
    QTreeWidgetItem* m_nodeItems[5]{};

    QGroupBox* m_fraTune = nullptr;
    QGroupBox* m_fraTuneCh = nullptr;
    QLabel* m_tuneLabels[5]{}; // RX Freq, RX CTC/DCS, TX Freq, TX CTC/DCS, Tuning Value
    QLabel* m_tuneTexts[5]{};  // their values: the adjusted test channel's, the bar's
    QScrollBar* m_hscTuneValue = nullptr;
    QLabel* m_lblTuneValue = nullptr;
    QPushButton* m_cmdTuneOk = nullptr;
    QPushButton* m_cmdTuneCancel = nullptr;
    TestChannelPanel* m_testChannels = nullptr;

    // TuneCommand, TuneItemCode, TuneValue, TuneItemActive, TuneValueSilent
    // and LastTuneItemCode of the tuning exchange.
    int m_tuneCommand = 0;
    std::uint8_t m_tuneItemCode = 0;
    std::uint8_t m_tuneValue = 0;
    bool m_tuneItemActive = false;
    bool m_tuneValueSilent = false;
    std::uint8_t m_lastTuneItemCode = 0;
};

} // namespace zr310::ui
