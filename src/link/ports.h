#pragma once

// Serial ports of the radio link.
//
// A port is named as the system names it ("COM7", "/dev/ttyUSB0", "ttyUSB0"),
// as one of the program's COM1..COM4 (mapped to the platform's ports, see
// docs/ports.md), or "sim": the emulated radio this process serves on a
// pseudo-terminal (Linux and macOS).

#include "string_table.h"

#include <QSerialPort>
#include <QString>
#include <QStringList>

namespace zr310 {

inline const QString kSimulatedPortName = QStringLiteral("sim");

// The device for the program's port number 1..4 (COM1..COM4): the same name
// on Windows, /dev/ttyS0../dev/ttyS3 on Linux, and on macOS the n-th serial
// device the system reports. Empty when there is none.
QString portNameForSelectedPort(int n);

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

// Why a port could not be opened.
enum class PortProblemKind { None, NoSuchPort, PermissionDenied, OtherError };

struct PortProblem {
    PortProblemKind kind = PortProblemKind::None;
    QString systemMessage; // the system's words, for OtherError

    explicit operator bool() const { return kind != PortProblemKind::None; }
};

// The kind of problem an error of QSerialPort::open() is. A port that is in
// use by another program gives PermissionError too.
PortProblemKind portProblemKind(QSerialPort::SerialPortError error);

// Whether the port exists and can be opened: opens it at 19200 8N1, sends
// the modem identification command "ATI1" + CR, lets events run for 200 ms,
// and closes it. Nothing received is looked at.
bool probePort(const QString& name);

// "COM1Port has no response, ..." : the port name run straight into the
// text, as the program reports a radio that never answered.
QString noResponseText(const QString& portName, Language language);

// Why nothing answered on the port: the port's problem when it could not be
// opened ("No such port: /dev/ttyUSB0 does not exist."; for a port it may not use,
// on Linux, how to join the dialout group), otherwise noResponseText().
QString unreachableText(const QString& portName, const PortProblem& problem, Language language);

} // namespace zr310
