#pragma once

#include <QDialog>
#include <QString>
#include <QStringList>

#include <array>

class QButtonGroup;
class QRadioButton;

namespace zr310::ui {

// The ports the dialog offers: COM1 to COM4 (with the device each stands
// for and whether it could be opened), then the other serial ports the
// system reports, then the simulated radio.
struct PortChoices {
    std::array<QString, 4> comDevices;
    std::array<bool, 4> comUsable{};
    QStringList systemPorts;
};

// `frmPort`: chooses the port the radio is reached on. The option buttons
// are `OptPort_0` .. `OptPort_3` (COM1 .. COM4), `OptPortSystem_k` for the
// system's other ports and `OptPortSim`; a COM port that could not be opened
// is disabled but may still be the checked one.
class FrmPort : public QDialog {
    Q_OBJECT
public:
    FrmPort(const QString& currentPort, const PortChoices& choices, QWidget* parent = nullptr);

    // The port of the checked option ("sim" for the simulated radio).
    QString selectedPort() const;

    static QString simulatedRadioCaption();

private:
    QRadioButton* addOption(const QString& name, const QString& caption, const QString& port);

    QButtonGroup* m_group = nullptr;
    QList<QString> m_ports; // by button id
};

} // namespace zr310::ui
