#include "ports.h"

#include "link_types.h"

#include <QEventLoop>
#include <QFileInfo>
#include <QRegularExpression>
#include <QSerialPort>
#include <QSerialPortInfo>
#include <QTimer>

#ifdef Q_OS_UNIX
#include "simulated_radio.h"
#endif

#include <algorithm>
#include <chrono>

namespace zr310 {

QStringList availablePortNames() {
    QStringList names;
    for (const auto& info : QSerialPortInfo::availablePorts())
        names << info.portName();
    std::sort(names.begin(), names.end());
    return names;
}

QString portNameForSelectedPort(int n) {
    if (n < 1)
        return {};
#if defined(Q_OS_WIN)
    return QStringLiteral("COM%1").arg(n);
#elif defined(Q_OS_MACOS)
    QStringList devices;
    for (const auto& info : QSerialPortInfo::availablePorts()) {
        if (info.portName().startsWith(QStringLiteral("cu.")))
            devices << info.systemLocation();
    }
    std::sort(devices.begin(), devices.end());
    return n <= devices.size() ? devices[n - 1] : QString();
#else
    return QStringLiteral("/dev/ttyS%1").arg(n - 1);
#endif
}

QString resolvePortName(const QString& name) {
    if (name == kSimulatedPortName) {
#ifdef Q_OS_UNIX
        if (auto* radio = SimulatedRadio::shared())
            return QString::fromStdString(radio->devicePath());
#endif
        return name;
    }
#ifndef Q_OS_WIN
    static const QRegularExpression comPort(QStringLiteral("^COM([1-9][0-9]*)$"));
    if (const auto match = comPort.match(name); match.hasMatch())
        return portNameForSelectedPort(match.captured(1).toInt());
#endif
    return name;
}

QString portDevice(const QString& name) {
    if (name == kSimulatedPortName)
        return name;
    const QString resolved = resolvePortName(name);
    if (resolved.isEmpty())
        return resolved;
#ifdef Q_OS_WIN
    QString device = resolved.toUpper();
    if (device.startsWith(QStringLiteral("\\\\.\\")))
        device.remove(0, 4);
    return device;
#else
    // QSerialPort opens a bare name under /dev.
    const bool isPath = resolved.startsWith(QLatin1Char('/')) ||
                        resolved.startsWith(QStringLiteral("./")) ||
                        resolved.startsWith(QStringLiteral("../"));
    const QString path = isPath ? resolved : QStringLiteral("/dev/") + resolved;
    const QString target = QFileInfo(path).canonicalFilePath();
    return target.isEmpty() ? path : target;
#endif
}

bool isSamePort(const QString& a, const QString& b) {
    if (a == b)
        return true;
    const QString device = portDevice(a);
    return !device.isEmpty() && device == portDevice(b);
}

PortProblemKind portProblemKind(QSerialPort::SerialPortError error) {
    switch (error) {
    case QSerialPort::NoError:
        return PortProblemKind::None;
    case QSerialPort::DeviceNotFoundError:
        return PortProblemKind::NoSuchPort;
    case QSerialPort::PermissionError:
        return PortProblemKind::PermissionDenied;
    default:
        return PortProblemKind::OtherError;
    }
}

bool probePort(const QString& name) {
    using namespace std::chrono_literals;
    QSerialPort port;
    port.setPortName(resolvePortName(name));
    if (!port.open(QIODevice::ReadWrite))
        return false;
    const bool configured = port.setBaudRate(19200) && port.setDataBits(QSerialPort::Data8) &&
                            port.setParity(QSerialPort::NoParity) &&
                            port.setStopBits(QSerialPort::OneStop);
    if (configured) {
        port.write("ATI1\r");
        port.flush();
        QEventLoop wait;
        QTimer::singleShot(200ms, &wait, &QEventLoop::quit);
        wait.exec();
    }
    port.close();
    return configured;
}

QString noResponseText(const QString& portName, Language language) {
    const auto text = ResString(kMsgNoResponse, language);
    return portName + QString::fromUtf8(text.data(), qsizetype(text.size()));
}

namespace {

// "No such port: %1 does not exist.", "... cannot be opened: another program is
// using it, or you are not allowed to use it.", "... join the dialout group
// ...", "The port %1 cannot be opened: %2" (the system's words).
constexpr int kMsgNoSuchPort = 1155;
constexpr int kMsgPortNotAllowed = 1156;
constexpr int kMsgJoinDialout = 1157;
constexpr int kMsgPortNotOpened = 1158;

QString tableText(int id, Language language) {
    const auto text = ResString(id, language);
    return QString::fromUtf8(text.data(), qsizetype(text.size()));
}

// "COM1 (/dev/ttyS0)" when the name stands for a device of another name.
QString portCaption(const QString& portName) {
    if (portName == kSimulatedPortName)
        return portName;
    const QString device = resolvePortName(portName);
    return device.isEmpty() || device == portName ? portName
                                                  : portName + QStringLiteral(" (%1)").arg(device);
}

} // namespace

QString unreachableText(const QString& portName, const PortProblem& problem, Language language) {
    const QString port = portCaption(portName);
    switch (problem.kind) {
    case PortProblemKind::None:
        break;
    case PortProblemKind::NoSuchPort:
        return tableText(kMsgNoSuchPort, language).arg(port);
    case PortProblemKind::PermissionDenied: {
        QString text = tableText(kMsgPortNotAllowed, language).arg(port);
#ifdef Q_OS_LINUX
        text += QLatin1Char('\n') + tableText(kMsgJoinDialout, language);
#endif
        return text;
    }
    case PortProblemKind::OtherError:
        return tableText(kMsgPortNotOpened, language).arg(port, problem.systemMessage);
    }
    return noResponseText(portName, language);
}

} // namespace zr310
