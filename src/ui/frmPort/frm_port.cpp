#include "frm_port.h"

#include "common/texts.h"
#include "ports.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace zr310::ui {

QString FrmPort::simulatedRadioCaption() {
    return currentLanguage() == Language::Chinese ? QStringLiteral("模拟对讲机")
                                                  : QStringLiteral("Simulated radio");
}

FrmPort::FrmPort(const QString& currentPort, const PortChoices& choices, QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("frmPort"));
    setWindowTitle(res(1412));

    auto* frame = new QGroupBox(res(1055), this);
    frame->setObjectName(QStringLiteral("Fraport"));
    frame->setLayout(new QVBoxLayout);
    m_group = new QButtonGroup(this);

    QRadioButton* toCheck = nullptr;
    for (int n = 1; n <= 4; ++n) {
        QRadioButton* option = addOption(QStringLiteral("OptPort_%1").arg(n - 1),
                                         QStringLiteral("COM%1").arg(n), choices.comDevices[n - 1]);
        option->setEnabled(choices.comUsable[n - 1]);
        if (choices.comDevices[n - 1] == currentPort) {
            toCheck = option;
        }
    }
    int k = 0;
    for (const QString& port : choices.systemPorts) {
        if (std::find(choices.comDevices.begin(), choices.comDevices.end(), port) !=
            choices.comDevices.end()) {
            continue;
        }
        QRadioButton* option = addOption(QStringLiteral("OptPortSystem_%1").arg(k++), port, port);
        if (port == currentPort) {
            toCheck = option;
        }
    }
    QRadioButton* sim =
        addOption(QStringLiteral("OptPortSim"), simulatedRadioCaption(), kSimulatedPortName);
    if (currentPort == kSimulatedPortName) {
        toCheck = sim;
    }
    if (toCheck == nullptr) {
        toCheck = qobject_cast<QRadioButton*>(m_group->button(0));
    }
    toCheck->setChecked(true);

    auto* cmdOk = new QPushButton(res(1102), this);
    cmdOk->setObjectName(QStringLiteral("CmdOK"));
    cmdOk->setDefault(true);
    auto* cmdCancel = new QPushButton(res(1103), this);
    cmdCancel->setObjectName(QStringLiteral("CmdCancel"));
    connect(cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    buttons->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(frame, 1);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

QRadioButton* FrmPort::addOption(const QString& name, const QString& caption, const QString& port) {
    auto* option = new QRadioButton(caption, this);
    option->setObjectName(name);
    m_group->addButton(option, static_cast<int>(m_ports.size()));
    m_ports.append(port);
    findChild<QGroupBox*>(QStringLiteral("Fraport"))->layout()->addWidget(option);
    return option;
}

QString FrmPort::selectedPort() const {
    const int id = m_group->checkedId();
    return id >= 0 ? m_ports[id] : m_ports.constFirst();
}

} // namespace zr310::ui
