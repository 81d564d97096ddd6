#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

#include <array>

class QButtonGroup;
class QRadioButton;

namespace zr310::ui {

// What the dialog needs to know of the system: whether COM1 to COM4 could be
// opened, and the serial ports the system reports, by their system names.
struct PortChoices {
    std::array<bool, 4> comUsable{};
    QStringList systemPorts;
};

// `frmPort`: chooses the port the radio is reached on. The options are
// `OptPort_0` .. `OptPort_3` (COM1 .. COM4; one that could not be opened is
// disabled but may still be the checked one), `OptPortSystem_k` for the
// system's ports that are none of those, `OptPortCurrent` for the port in
// use when it is none of the others either (captioned with its name as
// given), and `OptPortSim`. Ports are told apart by the device they open
// (isSamePort), so "/dev/ttyS0" checks COM1 on Linux.
//
// The port in use is checked, and its option answers with that name as it
// was given: OK with it untouched keeps the port as it was.
class FrmPort : public QDialog {
    Q_OBJECT
public:
    FrmPort(const QString& currentPort, const PortChoices& choices, QWidget* parent = nullptr);

    // The port of the checked option ("sim" for the simulated radio).
    QString selectedPort() const;

    static QString simulatedRadioCaption();

private:
    QRadioButton* addOption(const QString& name, const QString& caption, const QString& port);
    void addSystemPorts(const QStringList& systemPorts);
    void checkCurrent(const QString& currentPort);

    QButtonGroup* m_group = nullptr;
    QList<QString> m_ports; // by button id
};

} // namespace zr310::ui
