#pragma once

#include "edit_history.h"
#include "frequency.h"
#include "image_editor.h"
#include "k720_file.h"
#include "link_types.h"
#include "radio_image.h"
#include "string_table.h"

#include <QLocale>
#include <QMainWindow>
#include <QPointer>
#include <QString>

#include <memory>

class QLabel;
class QScrollBar;
class QToolBar;
class QTranslator;

namespace zr310 {
struct TransferResult;
class SerialTrace;
} // namespace zr310

namespace zr310::ui {

class ChannelPanel;
class HelpWindow;
class ModelPanel;
class OptionsPanel;
class TuningPanels;

// How the program starts: the locale that picks the language, and the port
// the radio is reached on: COM1 unless told otherwise ("sim" for the
// built-in simulated radio). The port is not kept between runs.
struct StartOptions {
    QLocale locale = QLocale::system();
    QString portName = QStringLiteral("COM1");
    // A data file or raw image to open once the window shows (`zr310 FILE`).
    QString fileToOpen;

    // The system locale, unless ZR310_LOCALE names another ("zh_CN", "en_US").
    static StartOptions fromEnvironment();
};

// The program's main window `mainform`: menus, toolbar, status bar and the
// content frame `Frame1` with the model, options and channel panels (and the
// hidden tuning frames). It owns the process's one radio image, and every
// panel changes the image through it (ImageEditor), one undo step a change.
class MainForm : public QMainWindow, public ImageEditor {
    Q_OBJECT
public:
    explicit MainForm(StartOptions options = {}, QWidget* parent = nullptr);
    ~MainForm() override;

    // Only Chinese as used in China starts in Chinese.
    static Language languageForLocale(const QLocale& locale);

    // Rebuilds the model panel, the channel grid and the option lists from
    // the image (after a read or an open).
    void ReFlashData();
    // Puts the selected band's range into `lblBandRange`.
    void InitSetData();
    // Takes the selected band's limits into bandLimits().
    void SetFreqRange();
    // Rebuilds the test channel grid of tuning mode from the image.
    void ReFlashTestData();

    RadioImage& image() { return m_image; }
    const RadioImage& image() const override { return m_image; }
    LinkFlags& linkFlags() { return m_linkFlags; }
    BandLimits bandLimits() const override { return m_bandLimits; }

    // One user action on the image: one undo step when a byte changed.
    bool edit(const std::function<void(RadioImage&)>& change) override;
    // Finishes what an editor holds but has not written yet (the frequency
    // box, a list not yet left), so that a command sees what is shown.
    void commitEdits();
    bool normalMode() const { return m_normalMode; }

    // True when the image differs from the copy taken when the data was
    // last opened, read or saved.
    bool isModified() const;
    QString currentFileName() const { return m_fileName; }

    // The port transfers use: a device name, or "sim".
    QString selectedPort() const { return m_portName; }
    void setSelectedPort(const QString& portName) { m_portName = portName; }

    // Shows the window, then opens the start file if there is one.
    void showAndOpen();

    // Opens or saves without a file dialog; a refused file is reported with
    // a message box. Return whether the file was taken or written.
    bool openFile(const QString& path);
    bool saveFile(const QString& path);

    // The inside of the window (below the menu bar) in twips.
    QSizeF insideSizeTwips() const;

protected:
    void closeEvent(QCloseEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    // A data file (.k720) or raw image (.bin) dropped on the window opens.
    void dragEnterEvent(QDragEnterEvent* event) override;
    void dropEvent(QDropEvent* event) override;

private:
    struct Menus;

    // Shell: menus, toolbar, status bar, language.
    void createMenus();
    void createToolbar();
    void createStatusBar();
    void ApplyLanguage();
    void switchLanguage(int language);
    void installQtTranslation();
    void channelWindow();

    // Layout and scrolling.
    void createPanels();
    void placePanels();
    void resizeToStartSize();
    void updateScrollBars();
    void moveFrame1(double leftTwips, double topTwips);

    // Files.
    void fileOpen();
    // Edits not saved yet: asks whether to save them first. False when the
    // user cancelled or the save did not happen.
    bool mayDiscardEdits();
    bool fileSave();
    bool fileSaveAs();
    QString fileFilter() const;
    QString initialFolder() const;
    void takeReferenceCopy();

    // Editing: the Edit menu and the history.
    void editCopy();
    void editPaste();
    void editUndo();
    void editRedo();
    void pasteChannels();
    void bandChosen(int index);
    void startFreshHistory();
    void updateEditActions();
    void refreshChannels();

    // The printed report, its preview and PDF (main_form_report.cpp).
    void filePrint();
    void filePrintPreview();
    void fileExportPdf();
    // Channels to and from CSV files (main_form_csv.cpp).
    void fileImportCsv();
    void fileExportCsv();
    // Checks before a write and File > Compare With (main_form_checks.cpp).
    // True when the image passes or the user writes anyway.
    bool confirmWriteChecks();
    void fileCompare();
    // The radio information window (main_form_info.cpp).
    void showRadioInfo();

    // Transfers.
    void progRead();
    // File > Open Backup Folder: where every read is kept (backup.h).
    void openBackupFolder();
    void progWrite();
    void progTest();
    // Runs frmConnect; a radio that never answered is reported here. `sent`
    // receives the bytes a write sent.
    TransferResult runTransfer(TransferKind kind, RadioImage* sent = nullptr);
    // Verify After Write and the serial trace (main_form_verify.cpp).
    bool verifyWrite(const RadioImage& sent);
    void toggleSerialTrace(bool on);
    void sendLeaveTuningMode();
    void writeTestFrequency();
    void leaveTuningPanels();

    // Dialogs and help.
    void showPortDialog();
    void showAbout();
    void showHelp(bool index);

    RadioImage m_image;
    RadioImage m_reference;
    EditHistory m_history;
    LinkFlags m_linkFlags;
    BandLimits m_bandLimits;
    QString m_fileName;
    FileExtras m_fileExtras; // the opened data file's unnamed bytes, saved back as they were
    QString m_lastOpenFolder;
    QString m_portName;
    QString m_fileToOpen;
    std::shared_ptr<SerialTrace> m_trace; // Setup > Serial Trace, while ticked
    bool m_normalMode = true;
    Language m_shownLanguage = Language::English;

    std::unique_ptr<Menus> m_menus;
    QToolBar* m_toolbar = nullptr;
    QLabel* m_statusPanel = nullptr;
    QTranslator* m_qtTranslator = nullptr;

    QWidget* m_viewport = nullptr;
    QWidget* m_frame1 = nullptr;
    ModelPanel* m_fraModel = nullptr;
    OptionsPanel* m_fraFunction = nullptr;
    ChannelPanel* m_fraChSet = nullptr;
    TuningPanels* m_tuning = nullptr;
    QScrollBar* m_vScroll = nullptr;
    QScrollBar* m_hScroll = nullptr;
    QWidget* m_picture2 = nullptr;
    double m_frame1Left = 0;
    double m_frame1Top = 0;

    QPointer<HelpWindow> m_help;
};

} // namespace zr310::ui
