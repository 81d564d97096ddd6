#include "frm_port.h"

#include "common/message_box.h"
#include "common/texts.h"
#include "ports.h"
#include "sizes.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

#include <algorithm>

namespace zr310::ui {

namespace {} // namespace

QString FrmPort::simulatedRadioCaption() {
    return currentLanguage() == Language::Chinese ? QStringLiteral("模拟对讲机")
                                                  : QStringLiteral("Simulated radio");
}

FrmPort::FrmPort(const QString& currentPort, const PortChoices& choices, QWidget* parent)
    : QDialog(parent), m_systemPorts(choices.systemPorts) {
    setObjectName(QStringLiteral("frmPort"));
    setWindowTitle(res(txt::CommunicationPort));

    auto* frame = new QGroupBox(res(txt::ToolSelectPort), this);
    frame->setObjectName(QStringLiteral("Fraport"));
    frame->setLayout(new QVBoxLayout);
    m_group = new QButtonGroup(this);

    for (int n = 1; n <= 4; ++n) {
        addOption(QStringLiteral("OptPort_%1").arg(n - 1), QStringLiteral("COM%1").arg(n))
            ->setEnabled(choices.comUsable[toIndex(n - 1)]);
    }
    addSystemPorts();
    checkCurrent(currentPort);
    QRadioButton* sim = addOption(QStringLiteral("OptPortSim"), kSimulatedPortName);
    if (currentPort == kSimulatedPortName) {
        sim->setChecked(true);
    } else if (m_group->checkedId() < 0) {
        m_group->button(0)->setChecked(true); // no port in use: COM1, as the program starts
    }
    m_lblFindRadio = new QLabel(this);
    m_lblFindRadio->setObjectName(QStringLiteral("LblFindRadio"));
    m_lblFindRadio->hide(); // until Find Radio has something to say
    frame->layout()->addWidget(m_lblFindRadio);

    auto* cmdOk = new QPushButton(res(txt::OkButton), this);
    cmdOk->setObjectName(QStringLiteral("CmdOK"));
    cmdOk->setDefault(true);
    auto* cmdCancel = new QPushButton(res(txt::CancelButton), this);
    cmdCancel->setObjectName(QStringLiteral("CmdCancel"));
    m_cmdFindRadio = new QPushButton(res(txt::FindRadio), this);
    m_cmdFindRadio->setObjectName(QStringLiteral("CmdFindRadio"));
    connect(cmdOk, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdCancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_cmdFindRadio, &QPushButton::clicked, this, &FrmPort::findRadio);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(cmdOk);
    buttons->addWidget(cmdCancel);
    buttons->addWidget(m_cmdFindRadio);
    buttons->addStretch();
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(frame, 1);
    layout->addLayout(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

// Each device once: a system port that is COM1..COM4 (ttyS0 on Linux) or
// one listed already is left out.
void FrmPort::addSystemPorts() {
    int k = 0;
    for (const PortInfo& info : m_systemPorts) {
        const bool listed = std::any_of(m_ports.begin(), m_ports.end(),
                                        [&](const QString& p) { return isSamePort(p, info.name); });
        if (!listed) {
            addOption(QStringLiteral("OptPortSystem_%1").arg(k++), info.name);
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
        addOption(QStringLiteral("OptPortCurrent"), currentPort)->setChecked(true);
        return;
    }
    const auto id = static_cast<int>(same - m_ports.begin());
    *same = currentPort;
    m_group->button(id)->setChecked(true);
}

// Captioned with the port's name, and the system's description of its
// device beside it when there is one.
QRadioButton* FrmPort::addOption(const QString& name, const QString& port) {
    QString caption = port == kSimulatedPortName ? simulatedRadioCaption() : port;
    const auto info = std::find_if(m_systemPorts.begin(), m_systemPorts.end(),
                                   [&](const PortInfo& p) { return isSamePort(p.device, port); });
    if (port != kSimulatedPortName && info != m_systemPorts.end() && !info->description.isEmpty()) {
        caption += QStringLiteral("  (%1)").arg(info->description);
    }
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

// Every enabled option but the simulated radio, at once.
void FrmPort::findRadio() {
    QStringList ports;
    for (qsizetype id = 0; id < m_ports.size(); ++id) {
        if (m_ports[id] != kSimulatedPortName && m_group->button(int(id))->isEnabled()) {
            ports << m_ports[id];
        }
    }
    m_cmdFindRadio->setEnabled(false);
    m_lblFindRadio->setText(res(txt::FindingRadio));
    m_lblFindRadio->show();
    auto* search = new RadioSearch(ports, this);
    connect(search, &RadioSearch::finished, this, [this, search] {
        search->deleteLater();
        radioSearchDone(search->results());
    });
    search->start();
}

void FrmPort::radioSearchDone(const QList<ProbeResult>& results) {
    QStringList found;
    for (const ProbeResult& result : results) {
        if (result.found()) {
            found << result.port;
        }
    }
    if (found.isEmpty()) {
        m_lblFindRadio->clear();
        m_lblFindRadio->hide();
        showMessageBox(this, QMessageBox::Warning, res(txt::FindRadio), res(txt::NoRadioFound));
    } else {
        m_group->button(int(m_ports.indexOf(found.first())))->setChecked(true);
        m_lblFindRadio->setText(
            found.size() == 1
                ? res(txt::RadioFound).arg(found.first())
                : res(txt::RadiosFound).arg(found.join(QStringLiteral(", ")), found.first()));
    }
    m_cmdFindRadio->setEnabled(true);
}

} // namespace zr310::ui
