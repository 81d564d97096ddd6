// The shell of the main window: menus, toolbar, status bar and the texts of
// both languages.
#include "channel_panel.h"
#include "common/texts.h"
#include "frmAbout/frm_about.h"
#include "frmPort/frm_port.h"
#include "help/help_window.h"
#include "main_form.h"
#include "menus.h"
#include "model_panel.h"
#include "options_panel.h"
#include "sizes.h"
#include "toolbar_icons.h"
#include "tuning_panels.h"

#include <QAction>
#include <QActionGroup>
#include <QApplication>
#include <QLabel>
#include <QLibraryInfo>
#include <QMenu>
#include <QMenuBar>
#include <QStatusBar>
#include <QToolBar>
#include <QTranslator>

namespace zr310::ui {

namespace {

QAction* addItem(QMenu* menu, const char* name, const QKeySequence& shortcut = {}) {
    QAction* action = menu->addAction(QString());
    action->setObjectName(QString::fromLatin1(name));
    action->setShortcut(shortcut);
    return action;
}

QMenu* addMenu(QMenuBar* bar, const char* name) {
    QMenu* menu = bar->addMenu(QString());
    menu->setObjectName(QString::fromLatin1(name));
    menu->menuAction()->setObjectName(QString::fromLatin1(name) + QStringLiteral("_action"));
    return menu;
}

} // namespace

void MainForm::createMenus() {
    Menus& m = *m_menus;
    QMenuBar* bar = menuBar();

    m.menufile = addMenu(bar, "menufile");
    m.menuFileopen = addItem(m.menufile, "menuFileopen", Qt::CTRL | Qt::Key_O);
    m.menuFileClose = addItem(m.menufile, "menuFileClose");
    m.menuFileClose->setVisible(false);
    m.menuFilesave = addItem(m.menufile, "menuFilesave", Qt::CTRL | Qt::Key_S);
    m.menuFilesaveas = addItem(m.menufile, "menuFilesaveas");
    m.menufile->addSeparator();
    m.menuFilePrint = addItem(m.menufile, "menuFilePrint", Qt::CTRL | Qt::Key_P);
    m.menuFilePrintPreview = addItem(m.menufile, "menuFilePrintPreview");
    m.menuFileExportPdf = addItem(m.menufile, "menuFileExportPdf");
    m.menufile->addSeparator();
    m.menuFileImportCsv = addItem(m.menufile, "menuFileImportCsv");
    m.menuFileExportCsv = addItem(m.menufile, "menuFileExportCsv");
    m.menuFileBackups = addItem(m.menufile, "menuFileBackups");
    m.menuFileCompare = addItem(m.menufile, "menuFileCompare");
    m.menufile->addSeparator();
    m.menuFileExit = addItem(m.menufile, "menuFileExit", Qt::CTRL | Qt::Key_E);

    m.MenuEdit = addMenu(bar, "MenuEdit");
    m.MenuEditCopy = addItem(m.MenuEdit, "MenuEditCopy", Qt::CTRL | Qt::Key_C);
    m.menuEditPaste = addItem(m.MenuEdit, "menuEditPaste", Qt::CTRL | Qt::Key_V);
    m.MenuEdit->addSeparator();
    m.MenuEditUndo = addItem(m.MenuEdit, "MenuEditUndo", Qt::CTRL | Qt::Key_Z);
    m.MenuEditRedo = addItem(m.MenuEdit, "MenuEditRedo", Qt::CTRL | Qt::Key_Y);
    m.MenuEditRedo->setShortcuts({Qt::CTRL | Qt::Key_Y, Qt::CTRL | Qt::SHIFT | Qt::Key_Z});

    m.MenuProgram = addMenu(bar, "MenuProgram");
    m.menuProgRead = addItem(m.MenuProgram, "menuProgRead", Qt::CTRL | Qt::Key_R);
    m.menuProgWrite = addItem(m.MenuProgram, "menuProgWrite", Qt::CTRL | Qt::Key_W);
    m.menuProgVerify = addItem(m.MenuProgram, "menuProgVerify");
    m.menuProgVerify->setCheckable(true);
    m.MenuProgram->addSeparator();
    m.MenuProgTest = addItem(m.MenuProgram, "MenuProgTest", Qt::CTRL | Qt::Key_T);
    m.MenuProgTest->setCheckable(true);

    m.menuSetup = addMenu(bar, "menuSetup");
    m.MenuCHfrm = addItem(m.menuSetup, "MenuCHfrm", Qt::Key_F5);
    m.MenuCHfrm->setCheckable(true);
    m.MenuCHfrm->setChecked(true);
    m.menuSetup->addSeparator();
    m.MenuRadioInfo = addItem(m.menuSetup, "MenuRadioInfo", Qt::Key_F6);

    m.mnuSetup = addMenu(bar, "mnuSetup");
    m.menuSetup_Port = addItem(m.mnuSetup, "menuSetup_Port", Qt::Key_F9);
    m.menuSetupTrace = addItem(m.mnuSetup, "menuSetupTrace");
    m.menuSetupTrace->setCheckable(true);
    m.mnuSetup_Lang = m.mnuSetup->addMenu(QString());
    m.mnuSetup_Lang->setObjectName(QStringLiteral("mnuSetup_Lang"));
    m.languageGroup = new QActionGroup(this);
    m.languageGroup->setExclusive(true);
    for (int k = 0; k < 2; ++k) {
        QAction* item =
            addItem(m.mnuSetup_Lang, k == 0 ? "mnuSetup_LangSet_0" : "mnuSetup_LangSet_1");
        item->setCheckable(true);
        m.languageGroup->addAction(item);
        m.mnuSetup_LangSet[toIndex(k)] = item;
        connect(item, &QAction::triggered, this, [this, k] { switchLanguage(k); });
    }

    m.menuhelp = addMenu(bar, "menuhelp");
    m.menuhelptext = addItem(m.menuhelp, "menuhelptext");
    m.menuHelpID = addItem(m.menuhelp, "menuHelpID");
    m.menuhelp->addSeparator();
    m.menuhelpAbout = addItem(m.menuhelp, "menuhelpAbout");

    // Whatever an editor holds reaches the image before any command runs
    // (a shortcut does not take the focus from the frequency box or a list).
    // Copy and Paste act on the frequency box itself while it is open.
    for (QMenu* menu : {m.menufile, m.MenuEdit, m.MenuProgram, m.menuSetup}) {
        for (QAction* action : menu->actions()) {
            if (action != m.MenuEditCopy && action != m.menuEditPaste) {
                connect(action, &QAction::triggered, this, &MainForm::commitEdits);
            }
        }
    }

    connect(m.menuFileopen, &QAction::triggered, this, &MainForm::fileOpen);
    connect(m.menuFilesave, &QAction::triggered, this, &MainForm::fileSave);
    connect(m.menuFilesaveas, &QAction::triggered, this, &MainForm::fileSaveAs);
    connect(m.menuFileExit, &QAction::triggered, this, &MainForm::close);
    connect(m.menuFilePrint, &QAction::triggered, this, &MainForm::filePrint);
    connect(m.menuFilePrintPreview, &QAction::triggered, this, &MainForm::filePrintPreview);
    connect(m.menuFileExportPdf, &QAction::triggered, this, &MainForm::fileExportPdf);
    connect(m.menuFileImportCsv, &QAction::triggered, this, &MainForm::fileImportCsv);
    connect(m.menuFileExportCsv, &QAction::triggered, this, &MainForm::fileExportCsv);
    connect(m.menuFileBackups, &QAction::triggered, this, &MainForm::openBackupFolder);
    connect(m.menuFileCompare, &QAction::triggered, this, &MainForm::fileCompare);
    connect(m.MenuRadioInfo, &QAction::triggered, this, &MainForm::showRadioInfo);
    connect(m.MenuEditCopy, &QAction::triggered, this, &MainForm::editCopy);
    connect(m.menuEditPaste, &QAction::triggered, this, &MainForm::editPaste);
    connect(m.MenuEditUndo, &QAction::triggered, this, &MainForm::editUndo);
    connect(m.MenuEditRedo, &QAction::triggered, this, &MainForm::editRedo);
    connect(m.menuProgRead, &QAction::triggered, this, &MainForm::progRead);
    connect(m.menuProgWrite, &QAction::triggered, this, &MainForm::progWrite);
    connect(m.MenuProgTest, &QAction::triggered, this, &MainForm::progTest);
    connect(m.MenuCHfrm, &QAction::triggered, this, &MainForm::channelWindow);
    connect(m.menuSetup_Port, &QAction::triggered, this, &MainForm::showPortDialog);
    connect(m.menuSetupTrace, &QAction::triggered, this, &MainForm::toggleSerialTrace);
    connect(m.menuhelptext, &QAction::triggered, this, [this] { showHelp(false); });
    connect(m.menuHelpID, &QAction::triggered, this, [this] { showHelp(true); });
    connect(m.menuhelpAbout, &QAction::triggered, this, &MainForm::showAbout);
}

void MainForm::createToolbar() {
    using icons::ToolbarIcon;
    Menus& m = *m_menus;
    m_toolbar = addToolBar(QString());
    m_toolbar->setObjectName(QStringLiteral("Toolbar1"));
    m_toolbar->setMovable(false);
    m_toolbar->setIconSize(QSize(24, 24));

    struct Button {
        int index;
        int toolTipId;
        ToolbarIcon icon;
        QAction* same;
    };
    const std::array<Button, 6> buttons{{
        {1, txt::ToolOpen, ToolbarIcon::Open, m.menuFileopen},
        {2, txt::ToolSave, ToolbarIcon::Save, m.menuFilesave},
        {4, txt::ToolPrint, ToolbarIcon::Print, m.menuFilePrint},
        {6, txt::ToolRead, ToolbarIcon::Read, m.menuProgRead},
        {7, txt::ToolWrite, ToolbarIcon::Write, m.menuProgWrite},
        {9, txt::ToolSelectPort, ToolbarIcon::Port, m.menuSetup_Port},
    }};
    std::size_t k = 0;
    for (const Button& button : buttons) {
        if (button.index == 4 || button.index == 6 || button.index == 9) {
            m_toolbar->addSeparator();
        }
        QAction* action = m_toolbar->addAction(icons::toolbarIcon(button.icon), QString());
        action->setObjectName(QStringLiteral("Toolbar1_%1").arg(button.index));
        action->setEnabled(button.same->isEnabled());
        connect(action, &QAction::triggered, button.same, &QAction::trigger);
        m.toolButtons[k++] = {button.index, button.toolTipId, action};
    }
}

void MainForm::createStatusBar() {
    QStatusBar* bar = statusBar();
    bar->setObjectName(QStringLiteral("StatusBar1"));
    m_statusPanel = new QLabel(bar);
    m_statusPanel->setObjectName(QStringLiteral("StatusBar1_Panel1"));
    bar->addWidget(m_statusPanel, 1);
}

void MainForm::ApplyLanguage() {
    const Language language = currentLanguage();
    const Language before = m_shownLanguage;
    m_shownLanguage = language;
    Menus& m = *m_menus;

    setWindowTitle(res(txt::ProgramTitle));
    const std::pair<QMenu*, int> menuCaptions[] = {
        {m.menufile, txt::MenuFile},       {m.MenuEdit, txt::MenuEdit},
        {m.MenuProgram, txt::MenuProgram}, {m.menuSetup, txt::MenuOptionWindow},
        {m.mnuSetup, txt::MenuSetup},      {m.mnuSetup_Lang, txt::MenuLanguage},
        {m.menuhelp, txt::MenuHelp}};
    for (const auto& [menu, id] : menuCaptions) {
        menu->setTitle(res(id));
    }
    const std::pair<QAction*, int> itemCaptions[] = {
        {m.menuFileopen, txt::MenuOpen},
        {m.menuFilesave, txt::MenuSave},
        {m.menuFilesaveas, txt::MenuSaveAs},
        {m.menuFilePrint, txt::MenuPrint},
        {m.menuFilePrintPreview, txt::MenuPrintPreview},
        {m.menuFileExportPdf, txt::MenuExportPdf},
        {m.menuFileImportCsv, txt::MenuImportCsv},
        {m.menuFileExportCsv, txt::MenuExportCsv},
        {m.menuFileBackups, txt::MenuBackupFolder},
        {m.menuFileCompare, txt::MenuCompareWith},
        {m.menuFileExit, txt::MenuExit},
        {m.MenuEditCopy, txt::MenuCopy},
        {m.menuEditPaste, txt::MenuPaste},
        {m.MenuEditUndo, txt::MenuUndo},
        {m.MenuEditRedo, txt::MenuRedo},
        {m.menuProgRead, txt::MenuRead},
        {m.menuProgWrite, txt::MenuWrite},
        {m.MenuProgTest, txt::MenuTestMode},
        {m.MenuCHfrm, txt::MenuChannelWindow},
        {m.MenuRadioInfo, txt::MenuRadioInformation},
        {m.menuSetup_Port, txt::MenuCommunicationPort},
        {m.mnuSetup_LangSet[0], txt::MenuEnglish},
        {m.mnuSetup_LangSet[1], txt::MenuChinese},
        {m.menuhelptext, txt::MenuHelpContent},
        {m.menuHelpID, txt::MenuHelpIndex},
        {m.menuhelpAbout, txt::MenuAbout}};
    for (const auto& [action, id] : itemCaptions) {
        action->setText(res(id));
    }
    m.menuProgVerify->setText(res(txt::MenuVerifyAfterWrite));
    m.menuSetupTrace->setText(res(txt::MenuSerialTrace));
    for (const Menus::ToolButton& button : m.toolButtons) {
        button.action->setToolTip(res(button.toolTipId));
        button.action->setText(res(button.toolTipId));
    }

    m_fraModel->applyLanguage(language);
    m_fraFunction->applyLanguage(m_image, language);
    m_fraChSet->applyLanguage(before, language);
    m_statusPanel->setText(res(txt::ProgramTitle));
    m_tuning->applyLanguage(language);
    placePanels();
}

void MainForm::switchLanguage(int language) {
    if (language == gbytLang) {
        return;
    }
    gbytLang = language;
    installQtTranslation();
    ApplyLanguage();
    m_menus->mnuSetup_LangSet[toIndex(language)]->setChecked(true);
    m_menus->mnuSetup_LangSet[toIndex(1 - language)]->setChecked(false);
}

// Qt's own words (the buttons of message boxes, the file dialogs) follow the
// language too.
void MainForm::installQtTranslation() {
    if (m_qtTranslator != nullptr) {
        QCoreApplication::removeTranslator(m_qtTranslator);
        delete m_qtTranslator;
        m_qtTranslator = nullptr;
    }
    if (currentLanguage() != Language::Chinese) {
        return;
    }
    auto* translator = new QTranslator(this);
    if (translator->load(QStringLiteral("qt_zh_CN"),
                         QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        QCoreApplication::installTranslator(translator);
        m_qtTranslator = translator;
    } else {
        delete translator;
    }
}

void MainForm::channelWindow() {
    m_menus->MenuCHfrm->setChecked(true);
    m_menus->MenuProgTest->setChecked(false);
    setWindowTitle(res(txt::ProgramTitle));
    if (m_normalMode) {
        return;
    }
    sendLeaveTuningMode();
    leaveTuningPanels();
}

void MainForm::showAbout() {
    FrmAbout dialog(this);
    dialog.exec();
}

void MainForm::showHelp(bool index) {
    if (m_help == nullptr) {
        m_help = new HelpWindow(this);
    }
    m_help->showPage(index ? HelpWindow::Page::Index : HelpWindow::Page::Contents,
                     currentLanguage());
}

} // namespace zr310::ui
