#include "frm_about.h"

#include "common/texts.h"
#include "toolbar_icons.h"
#include "version.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace zr310::ui {

QString FrmAbout::makerName() {
    return currentLanguage() == Language::Chinese ? QStringLiteral("zr310 开源项目组")
                                                  : QStringLiteral("The zr310 project");
}

FrmAbout::FrmAbout(QWidget* parent) : QDialog(parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(makerName());

    auto* picture = new QLabel(this);
    picture->setPixmap(icons::applicationIcon().pixmap(64, 64));
    picture->setAlignment(Qt::AlignTop);

    auto* label1 = new QLabel(this);
    label1->setObjectName(QStringLiteral("Label1"));
    label1->setText(res(txt::ProgramTitle) + QStringLiteral("\n\n2006 ") + res(txt::Version) +
                    QLatin1Char(' ') + QString::fromLatin1(kProgramVersion) + QLatin1Char('\n') +
                    makerName());

    auto* command1 = new QPushButton(res(txt::CloseButton), this);
    command1->setObjectName(QStringLiteral("Command1"));
    command1->setDefault(true);
    connect(command1, &QPushButton::clicked, this, &QDialog::accept);

    auto* text = new QHBoxLayout;
    text->addWidget(picture);
    text->addSpacing(12);
    text->addWidget(label1, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(command1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(text);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace zr310::ui
