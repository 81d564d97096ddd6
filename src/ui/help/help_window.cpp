#include "help_window.h"

#include "common/texts.h"

#include <QHBoxLayout>
#include <QPushButton>
#include <QRegularExpression>
#include <QTextBrowser>
#include <QVBoxLayout>

// The help pages are compiled into the library; this registers them.
static void initHelpResources() {
    Q_INIT_RESOURCE(help);
}

namespace zr310::ui {

namespace {

QString menuWord(int id) {
    QString text = res(id);
    text.remove(QStringLiteral("..."));
    text.remove(QRegularExpression(QStringLiteral("\\(&.\\)")));
    text.remove(QLatin1Char('&'));
    return text.trimmed();
}

} // namespace

HelpWindow::HelpWindow(QWidget* parent) : QDialog(parent) {
    initHelpResources();
    setObjectName(QStringLiteral("frmHelp"));
    setWindowFlag(Qt::WindowMaximizeButtonHint);
    setAttribute(Qt::WA_DeleteOnClose, false);

    m_browser = new QTextBrowser(this);
    m_browser->setObjectName(QStringLiteral("helpBrowser"));
    m_browser->setOpenExternalLinks(false);

    auto* back = new QPushButton(QStringLiteral("<"), this);
    back->setObjectName(QStringLiteral("CmdBack"));
    back->setFixedWidth(32);
    auto* contents = new QPushButton(this);
    contents->setObjectName(QStringLiteral("CmdContents"));
    auto* index = new QPushButton(this);
    index->setObjectName(QStringLiteral("CmdIndex"));
    connect(back, &QPushButton::clicked, m_browser, &QTextBrowser::backward);
    connect(m_browser, &QTextBrowser::backwardAvailable, back, &QPushButton::setEnabled);
    connect(contents, &QPushButton::clicked, this,
            [this] { showPage(Page::Contents, currentLanguage()); });
    connect(index, &QPushButton::clicked, this,
            [this] { showPage(Page::Index, currentLanguage()); });
    back->setEnabled(false);

    auto* bar = new QHBoxLayout;
    bar->addWidget(back);
    bar->addWidget(contents);
    bar->addWidget(index);
    bar->addStretch();
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(bar);
    layout->addWidget(m_browser, 1);
    resize(640, 560);
}

QUrl HelpWindow::pageUrl(Page page, Language language) {
    const QString folder =
        language == Language::Chinese ? QStringLiteral("zh") : QStringLiteral("en");
    const QString file =
        page == Page::Index ? QStringLiteral("keywords.html") : QStringLiteral("index.html");
    return QUrl(QStringLiteral("qrc:/help/%1/%2").arg(folder, file));
}

void HelpWindow::showPage(Page page, Language language) {
    setWindowTitle(res(txt::ProgramTitle) + QStringLiteral(" - ") + menuWord(txt::MenuHelp));
    findChild<QPushButton*>(QStringLiteral("CmdContents"))->setText(menuWord(txt::MenuHelpContent));
    findChild<QPushButton*>(QStringLiteral("CmdIndex"))->setText(menuWord(txt::MenuHelpIndex));
    m_browser->setSource(pageUrl(page, language));
    show();
    raise();
    activateWindow();
}

} // namespace zr310::ui
