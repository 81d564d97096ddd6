#pragma once

#include "ports.h"
#include "radio_search.h"

#include <QDialog>
#include <QList>
#include <QString>

#include <array>

class QButtonGroup;
class QLabel;
class QPushButton;
class QRadioButton;

namespace zr310::ui {

// What the dialog needs to know of the system: whether COM1 to COM4 could be
// opened, and the serial ports the system reports with what it knows of them.
struct PortChoices {
    std::array<bool, 4> comUsable{};
    QList<PortInfo> systemPorts;
};

// `frmPort`: chooses the port the radio is reached on. The options are
// `OptPort_0` .. `OptPort_3` (COM1 .. COM4; one that could not be opened is
// disabled but may still be the checked one), `OptPortSystem_k` for the
// system's ports that are none of those, `OptPortCurrent` for the port in
// use when it is none of the others either (captioned with its name as
// given), and `OptPortSim`. Ports are told apart by the device they open
// (isSamePort), so "/dev/ttyS0" checks COM1 on Linux. An option whose device
// the system describes shows the description beside the name.
//
// The port in use is checked, and its option answers with that name as it
// was given: OK with it untouched keeps the port as it was.
//
// `CmdFindRadio` asks on every enabled option but the simulated radio at once
// whether a radio answers (RadioSearch), and checks the first option where
// one did; `LblFindRadio` says where, or that several answered. When none
// did, a box says to check the cable and the power. The button is disabled
// while the ports are asked; the dialog stays responsive.
class FrmPort : public QDialog {
    Q_OBJECT
public:
    FrmPort(const QString& currentPort, const PortChoices& choices, QWidget* parent = nullptr);

    // The port of the checked option ("sim" for the simulated radio).
    QString selectedPort() const;

    static QString simulatedRadioCaption();

private:
    QRadioButton* addOption(const QString& name, const QString& port);
    void addSystemPorts();
    void checkCurrent(const QString& currentPort);
    void findRadio();
    void radioSearchDone(const QList<ProbeResult>& results);

    QList<PortInfo> m_systemPorts;
    QButtonGroup* m_group = nullptr;
    QList<QString> m_ports; // by button id
    QPushButton* m_cmdFindRadio = nullptr;
    QLabel* m_lblFindRadio = nullptr;
};

} // namespace zr310::ui
