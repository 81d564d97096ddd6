#pragma once

// Why a serial port could not be opened, and the message that says so. The
// windows and zr310-cli show the same text (unreachableText).

#include "string_table.h"

#include <QSerialPort>
#include <QString>

namespace zr310 {

enum class PortProblemKind {
    None,
    NoSuchPort,
    PermissionDenied, // the user may not open the device
    InUse,            // another program holds the port
    NotSerialPort,    // a regular file, a folder, a FIFO
    OtherError,
};

struct PortProblem {
    PortProblemKind kind = PortProblemKind::None;
    QString systemMessage; // the system's words, for OtherError
    // PermissionDenied on Linux: the group that may use the device and that
    // the user is not in (joining it would help); empty otherwise.
    QString groupToJoin;

    explicit operator bool() const { return kind != PortProblemKind::None; }
};

// The kind of problem an error of QSerialPort::open() is, taken alone: Qt
// reports a port held by another program as PermissionError too, which
// openProblem() tells apart.
PortProblemKind portProblemKind(QSerialPort::SerialPortError error);

// Before a port is opened: a path that exists but is no character device
// is not a serial port, and is not opened at all. `resolvedName` as
// resolvePortName() gives it (a bare name stands for one under /dev).
PortProblem portPathProblem(const QString& resolvedName);

// After QSerialPort::open() failed: the problem, with a permission error
// told apart from a port in use (on Linux and macOS by whether the user may
// read and write the device; on Windows a COM port that is refused is in
// use, as every user may open one).
PortProblem openProblem(const QString& resolvedName, QSerialPort::SerialPortError error,
                        const QString& errorString);

// "COM1Port has no response, ..." : the port name run straight into the
// text, as the program reports a radio that never answered.
QString noResponseText(const QString& portName, Language language);

// Why nothing answered on the port: the port's problem when it could not be
// opened ("No such port: /dev/ttyUSB0 does not exist.", "... is in use by
// another program", for a port the user may not open the group to join
// where that helps), otherwise noResponseText().
QString unreachableText(const QString& portName, const PortProblem& problem, Language language);

} // namespace zr310
