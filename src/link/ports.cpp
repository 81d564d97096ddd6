#include "ports.h"

#include "link_types.h"

#include <QEventLoop>
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

} // namespace zr310
