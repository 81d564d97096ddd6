#pragma once

#include "main_form.h"

#include <array>

class QAction;
class QActionGroup;
class QMenu;

namespace zr310::ui {

// The menu bar and toolbar of the main window, named as the program names
// its menu entries. Toolbar buttons are `Toolbar1_1` ... `Toolbar1_9` by
// their button index (3, 5 and 8 are separators).
struct MainForm::Menus {
    QMenu* menufile = nullptr;
    QAction* menuFileopen = nullptr;
    QAction* menuFileClose = nullptr; // present but hidden
    QAction* menuFilesave = nullptr;
    QAction* menuFilesaveas = nullptr;
    QAction* menuFilePrint = nullptr;
    QAction* menuFilePrintPreview = nullptr;
    QAction* menuFileExportPdf = nullptr;
    QAction* menuFileImportCsv = nullptr;
    QAction* menuFileExportCsv = nullptr;
    QAction* menuFileBackups = nullptr; // Open Backup Folder
    QAction* menuFileCompare = nullptr;
    QAction* menuFileExit = nullptr;

    QMenu* MenuEdit = nullptr;
    QAction* MenuEditCopy = nullptr;
    QAction* menuEditPaste = nullptr;
    QAction* MenuEditUndo = nullptr;
    QAction* MenuEditRedo = nullptr;

    QMenu* MenuProgram = nullptr;
    QAction* menuProgRead = nullptr;
    QAction* menuProgWrite = nullptr;
    QAction* menuProgVerify = nullptr; // checkable, off at start
    QAction* MenuProgTest = nullptr;

    QMenu* menuSetup = nullptr;
    QAction* MenuCHfrm = nullptr;
    QAction* MenuRadioInfo = nullptr;

    QMenu* mnuSetup = nullptr;
    QAction* menuSetup_Port = nullptr;
    QAction* menuSetupTrace = nullptr; // checkable: ticked while a trace file is written
    QMenu* mnuSetup_Lang = nullptr;
    std::array<QAction*, 2> mnuSetup_LangSet{};
    QActionGroup* languageGroup = nullptr;

    QMenu* menuhelp = nullptr;
    QAction* menuhelptext = nullptr;
    QAction* menuHelpID = nullptr;
    QAction* menuhelpAbout = nullptr;

    // Toolbar buttons 1, 2, 4, 6, 7, 9 with their tool tip ids.
    struct ToolButton {
        int index;
        int toolTipId;
        QAction* action;
    };
    std::array<ToolButton, 6> toolButtons{};
};

} // namespace zr310::ui
