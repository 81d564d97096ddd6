#pragma once

// Serial ports of the radio link.
//
// A port is named as the system names it ("COM7", "/dev/ttyUSB0", "ttyUSB0"),
// as one of the program's COM1..COM4 (mapped to the platform's ports, see
// docs/ports.md), or "sim": the emulated radio this process serves on a
// pseudo-terminal (Linux and macOS).

#include "port_problem.h"

#include <QList>
#include <QSerialPort>
#include <QString>
#include <QStringList>

namespace zr310 {

inline const QString kSimulatedPortName = QStringLiteral("sim");

// The device for the program's port number 1..4 (COM1..COM4): the same name
// on Windows, /dev/ttyS0../dev/ttyS3 on Linux, and on macOS the n-th serial
// device the system reports. Empty when there is none.
QString portNameForSelectedPort(int n);

// A port the system reports and what the system knows of it. A field the
// system does not know is empty.
struct PortInfo {
    QString name;         // as the system names it: "ttyUSB0", "COM7"
    QString device;       // the device opened: "/dev/ttyUSB0", \\.\COM7 on Windows
    QString description;  // "FT232R USB UART"
    QString manufacturer; // "FTDI"
    QString usbId;        // USB vendor and product id in hex, "0403:6001"
    QString serialNumber;
};

// The ports the system reports, sorted by name.
QList<PortInfo> systemPorts();

// The ports the system reports, by their system names.
QStringList availablePortNames();

// What QSerialPort opens for a port name: "sim" becomes the emulated radio's
// device, "COMn" on Linux and macOS becomes portNameForSelectedPort(n), any
// other name is used as given.
QString resolvePortName(const QString& name);

// The device a port name opens, to tell whether two names are one port:
// "COM1", "/dev/ttyS0" and "ttyS0" are all /dev/ttyS0 on Linux, and a link
// such as /dev/serial/by-id/... is the device it leads to. "sim" is itself.
QString portDevice(const QString& name);
bool isSamePort(const QString& a, const QString& b);

// The file QSerialPort opens for a resolved name on Linux and macOS: a bare
// name is looked for under /dev.
QString portFilePath(const QString& resolvedName);

// Whether the port exists and can be opened: opens it at 19200 8N1, sends
// the modem identification command "ATI1" + CR, lets events run for 200 ms,
// and closes it. Nothing received is looked at.
bool probePort(const QString& name);

} // namespace zr310
