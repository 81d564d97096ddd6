#include "main_form.h"

#include "bands.h"
#include "channel_panel.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "frequency_box.h"
#include "help/help_window.h"
#include "menus.h"
#include "model_panel.h"
#include "options_panel.h"
#include "sizes.h"
#include "toolbar_icons.h"
#include "tuning_panels.h"

#include <QAction>
#include <QCloseEvent>

namespace zr310::ui {

namespace {

// The title the window carries for a moment at start-up, before the
// language is known.
constexpr auto kStartTitle = "ZR-310 PC编程软件 ";
constexpr auto kDefaultFileName = "ZR-310.k720";

} // namespace

StartOptions StartOptions::fromEnvironment() {
    StartOptions options;
    const QByteArray name = qgetenv("ZR310_LOCALE");
    if (!name.isEmpty()) {
        options.locale = QLocale(QString::fromLatin1(name));
    }
    return options;
}

Language MainForm::languageForLocale(const QLocale& locale) {
    // The locale id 2052: Chinese as written in the People's Republic.
    return locale.language() == QLocale::Chinese && locale.territory() == QLocale::China
               ? Language::Chinese
               : Language::English;
}

MainForm::MainForm(StartOptions options, QWidget* parent)
    : QMainWindow(parent), m_image(makeStartImage()), m_portName(options.portName),
      m_fileToOpen(options.fileToOpen), m_menus(std::make_unique<Menus>()) {
    setObjectName(QStringLiteral("mainform"));
    setWindowIcon(icons::applicationIcon());
    setAcceptDrops(true);
    createMenus();
    createToolbar();
    createStatusBar();
    createPanels();

    // The language of the system's locale.
    const Language language = languageForLocale(options.locale);
    gbytLang = static_cast<int>(language);
    m_shownLanguage = language;
    m_menus->mnuSetup_LangSet[toIndex(gbytLang)]->setChecked(true);
    installQtTranslation();

    // Scroll bars, the channel grid, the test channel grid and the tuning
    // tree are built by createPanels(); here the grids get their headings.
    m_fraChSet->frameUp();
    m_tuning->frameUpTestGrid();

    // The panels edit the image through this window.
    m_fraChSet->setEditor(this);
    m_fraFunction->setEditor(this);
    connect(m_fraFunction, &OptionsPanel::channelsChanged, this, &MainForm::refreshChannels);
    connect(m_fraModel, &ModelPanel::bandChosen, this, &MainForm::bandChosen);
    m_tuning->setEditor(this);
    connect(m_tuning, &TuningPanels::leaveRequested, this, &MainForm::channelWindow);
    connect(m_tuning, &TuningPanels::writeTestFrequencyRequested, this,
            &MainForm::writeTestFrequency);

    // The in-place box starts hidden; the title is first the fixed one.
    m_fraChSet->inputBox()->hide();
    setWindowTitle(QString::fromUtf8(kStartTitle));

    // Lists, grid, model and band from the start image, then the texts.
    ReFlashData();
    ApplyLanguage();

    // Default file name and normal mode.
    m_fileName = QString::fromLatin1(kDefaultFileName);
    m_normalMode = true;

    // Frame1 and its panels; the tuning frames stay hidden.
    placePanels();
    m_tuning->setShown(false);
    resizeToStartSize();

    takeReferenceCopy();
    startFreshHistory();
    m_fraChSet->focusFirstCell();
}

// The panels outlive this body: Qt deletes them with the QWidget base, after
// the image, the history and the ImageEditor part are gone, and hides the
// window first, which takes the focus from the frequency box or a list. So
// the panels stop editing here; a normal close has already written what they
// held (closeEvent), and a window destroyed without one drops it.
MainForm::~MainForm() {
    m_fraChSet->setEditor(nullptr);
    m_fraFunction->setEditor(nullptr);
    m_tuning->setEditor(nullptr);
}

bool MainForm::isModified() const {
    for (int block = 0; block < RadioImage::kBlocks; ++block) {
        for (int column = 0; column < RadioImage::kColumns; ++column) {
            if (m_image.at(column, block) != m_reference.at(column, block)) {
                return true;
            }
        }
    }
    return false;
}

void MainForm::takeReferenceCopy() {
    m_reference = m_image;
}

void MainForm::closeEvent(QCloseEvent* event) {
    commitEdits();
    event->setAccepted(mayDiscardEdits());
}

bool MainForm::mayDiscardEdits() {
    if (!isModified()) {
        return true;
    }
    const auto answer = showMessageBox(this, QMessageBox::Warning, res(txt::ReadButton),
                                       resDisplay(txt::SaveChangesQuestion),
                                       QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
    switch (answer) {
    case QMessageBox::Yes:
        // A save that did not happen (dialog cancelled, disk error) keeps
        // the data, so that nothing is lost.
        return fileSave();
    case QMessageBox::No:
        return true;
    default:
        return false;
    }
}

void MainForm::ReFlashData() {
    const Language language = currentLanguage();
    // A version-1.0 radio has no power selection, no narrow band and no low
    // power: the refresh takes them out of the image.
    if (m_linkFlags.radioIsVersion10) {
        clearPowerSelection(m_image);
        for (int n = 1; n <= kChannelCount; ++n) {
            ChannelRecord::channel(m_image, n).forceWideAndHigh();
        }
    }
    m_fraFunction->refresh(m_image, language);
    m_fraModel->refresh(m_image);
    m_fraChSet->refresh(m_image, m_fraFunction->narrowBandRadio(), language);
}

void MainForm::InitSetData() {
    m_fraModel->InitSetData();
}

void MainForm::SetFreqRange() {
    m_bandLimits = bandLimitsOfText(m_fraModel->bandText().toStdString());
}

} // namespace zr310::ui
