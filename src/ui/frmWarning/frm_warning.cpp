#include "frm_warning.h"

#include "common/texts.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace zr310::ui {

FrmWarning::FrmWarning(LinkFlags& flags, QWidget* parent) : QDialog(parent), m_flags(flags) {
    setObjectName(QStringLiteral("frmWarning"));
    setWindowTitle(res(txt::Warning));

    auto* icon = new QLabel(this);
    icon->setPixmap(style()->standardIcon(QStyle::SP_MessageBoxWarning).pixmap(32, 32));
    icon->setAlignment(Qt::AlignTop);
    auto* text = new QLabel(resDisplay(txt::Version10Warning), this);
    text->setObjectName(QStringLiteral("LblWarning"));
    text->setWordWrap(true);
    text->setMinimumWidth(360);

    m_chkNext = new QCheckBox(res(txt::DontShowNextTime), this);
    m_chkNext->setObjectName(QStringLiteral("ChkNext"));
    m_chkNext->setChecked(m_flags.version10DontShow);

    auto* cmdOk = new QPushButton(res(txt::OkButton), this);
    cmdOk->setObjectName(QStringLiteral("CmdOK"));
    cmdOk->setDefault(true);
    auto* cmdCancel = new QPushButton(res(txt::CancelButton), this);
    cmdCancel->setObjectName(QStringLiteral("CmdCancel"));

    connect(m_chkNext, &QCheckBox::toggled, this,
            [this](bool ticked) { m_flags.version10DontShow = ticked; });
    connect(cmdOk, &QPushButton::clicked, this, [this] {
        m_flags.skipVersion10Check = true;
        m_flags.version10Continue = true;
        accept();
    });
    connect(cmdCancel, &QPushButton::clicked, this, [this] {
        m_flags.skipVersion10Check = false;
        m_flags.version10Continue = false;
        m_flags.version10DontShow = false;
        done(QDialog::Rejected);
    });

    auto* message = new QHBoxLayout;
    message->addWidget(icon);
    message->addWidget(text, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(message);
    layout->addWidget(m_chkNext);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

} // namespace zr310::ui
