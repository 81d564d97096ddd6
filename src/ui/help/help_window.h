#pragma once

#include "string_table.h"

#include <QDialog>
#include <QUrl>

class QTextBrowser;

namespace zr310::ui {

// The help window: the HTML help pages built into the program, in the
// language of the user interface, shown in `helpBrowser`.
class HelpWindow : public QDialog {
    Q_OBJECT
public:
    enum class Page { Contents, Index };

    explicit HelpWindow(QWidget* parent = nullptr);

    void showPage(Page page, Language language);

    static QUrl pageUrl(Page page, Language language);

private:
    QTextBrowser* m_browser = nullptr;
};

} // namespace zr310::ui
