#include "ports.h"

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

QList<PortInfo> systemPorts() {
    QList<PortInfo> ports;
    for (const auto& info : QSerialPortInfo::availablePorts()) {
        PortInfo port{
            info.portName(),    info.systemLocation(), info.description(), info.manufacturer(), {},
            info.serialNumber()};
        if (info.hasVendorIdentifier() && info.hasProductIdentifier()) {
            const auto hex = [](quint16 id) {
                return QString::number(id, 16).rightJustified(4, '0');
            };
            port.usbId =
                hex(info.vendorIdentifier()) + QLatin1Char(':') + hex(info.productIdentifier());
        }
        ports << port;
    }
    std::sort(ports.begin(), ports.end(),
              [](const PortInfo& a, const PortInfo& b) { return a.name < b.name; });
    return ports;
}

QStringList availablePortNames() {
    QStringList names;
    for (const PortInfo& port : systemPorts())
        names << port.name;
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

QString portFilePath(const QString& resolvedName) {
    // QSerialPort opens a bare name under /dev.
    const bool isPath = resolvedName.startsWith(QLatin1Char('/')) ||
                        resolvedName.startsWith(QStringLiteral("./")) ||
                        resolvedName.startsWith(QStringLiteral("../"));
    return isPath ? resolvedName : QStringLiteral("/dev/") + resolvedName;
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
    const QString path = portFilePath(resolved);
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

} // namespace zr310
