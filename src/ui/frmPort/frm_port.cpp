#include "frm_port.h"

#include "common/texts.h"
#include "ports.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

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

    for (int n = 1; n <= 4; ++n) {
        const QString com = QStringLiteral("COM%1").arg(n);
        addOption(QStringLiteral("OptPort_%1").arg(n - 1), com, com)
            ->setEnabled(choices.comUsable[n - 1]);
    }
    addSystemPorts(choices.systemPorts);
    checkCurrent(currentPort);
    QRadioButton* sim =
        addOption(QStringLiteral("OptPortSim"), simulatedRadioCaption(), kSimulatedPortName);
    if (currentPort == kSimulatedPortName) {
        sim->setChecked(true);
    } else if (m_group->checkedId() < 0) {
        m_group->button(0)->setChecked(true); // no port in use: COM1, as the program starts
    }

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

// Each device once: a system port that is COM1..COM4 (ttyS0 on Linux) or
// one listed already is left out.
void FrmPort::addSystemPorts(const QStringList& systemPorts) {
    int k = 0;
    for (const QString& port : systemPorts) {
        const bool listed = std::any_of(m_ports.begin(), m_ports.end(),
                                        [&](const QString& p) { return isSamePort(p, port); });
        if (!listed) {
            addOption(QStringLiteral("OptPortSystem_%1").arg(k++), port, port);
        }
    }
}

// Checks the option of the port in use, which answers with the name as it
// was given; a port none of the options opens gets an option of its own.
// The simulated radio is checked by its own option.
void FrmPort::checkCurrent(const QString& currentPort) {
    if (currentPort.isEmpty() || currentPort == kSimulatedPortName) {
        return;
    }
    const auto same = std::find_if(m_ports.begin(), m_ports.end(), [&](const QString& port) {
        return isSamePort(port, currentPort);
    });
    if (same == m_ports.end()) {
        addOption(QStringLiteral("OptPortCurrent"), currentPort, currentPort)->setChecked(true);
        return;
    }
    const auto id = static_cast<int>(same - m_ports.begin());
    *same = currentPort;
    m_group->button(id)->setChecked(true);
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
