#pragma once

#include <QDialog>
#include <QString>

#include <optional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QKeyEvent;
class QPushButton;
class QRadioButton;
class QTableWidgetItem;

namespace zr310::ui {

// Which side of which grid the signalling dialog edits.
inline constexpr int kSideChannelRx = 85;
inline constexpr int kSideChannelTx = 170;
inline constexpr int kSideTestRx = 51;
inline constexpr int kSideTestTx = 119;

// The signalling dialog `frmQTDQT`: off, a CTCSS tone or a DCS code (normal
// or inverted) for one side of one channel or test channel. The caller hands
// it the side's current text ("OFF", "CTC 88.5", "DCS 023", "-DCS 023") and,
// after exec(), reads resultText(): the chosen text after OK, the text it was
// opened with after Cancel.
//
// Controls: option buttons `OptOFF`, `OptCTC`, `OptDCS`; the tone list
// `CboCTC`; the editable code list `CboDCS`, where at most three digits can
// be typed and a code is made octal when the list is left; `ChkDCS`
// (invert); `CmdOK`, `CmdCancel`; all inside the group box `Frame1` but the
// two buttons.
class FrmQTDQT : public QDialog {
    Q_OBJECT
public:
    FrmQTDQT(int sideMarker, int row, const QString& sideText, QWidget* parent = nullptr);

    // Runs the dialog for a grid cell, which is yellow while it is open.
    // The chosen text, or nothing after Cancel or an unchanged choice.
    static std::optional<QString> chooseFor(QTableWidgetItem* cell, int sideMarker, int row,
                                            QWidget* parent);

    int sideMarker() const { return m_sideMarker; }
    int row() const { return m_row; }
    QString resultText() const { return m_result; }
    // After OK: whether "DCS Invert" was ticked. After Cancel: whether the
    // text the dialog was opened with is an inverted code.
    bool dcsInvert() const { return m_dcsInvert; }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void showText(const QString& sideText);
    void updateEnabled();
    bool filterDcsKey(QKeyEvent* key);
    void pasteDcsCode();
    void validateDcsCode();
    void okClicked();

    int m_sideMarker;
    int m_row;
    QString m_result;
    bool m_dcsInvert = false;

    QGroupBox* m_frame = nullptr;
    QRadioButton* m_optOff = nullptr;
    QRadioButton* m_optCtc = nullptr;
    QRadioButton* m_optDcs = nullptr;
    QComboBox* m_cboCtc = nullptr;
    QComboBox* m_cboDcs = nullptr;
    QCheckBox* m_chkDcs = nullptr;
    QPushButton* m_cmdOk = nullptr;
    QPushButton* m_cmdCancel = nullptr;
};

} // namespace zr310::ui
