#include "port_problem.h"

#include "link_types.h"
#include "ports.h"
#include "sizes.h"

#include <QFile>

#ifdef Q_OS_UNIX
#include <grp.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <vector>
#endif

namespace zr310 {

namespace {

// "No such port: %1 does not exist.", "The port %1 is in use by another
// program. ...", "... join the %1 group ...", "The port %1 cannot be opened:
// %2" (the system's words), "You are not allowed to use the port %1.", "The
// port %1 cannot be opened: it is not a serial port."

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

#ifdef Q_OS_LINUX
// The group of the device when it may read and write the device and the
// user is not in it: joining it would help. Root may open any device.
QString groupThatWouldHelp(const QByteArray& path) {
    struct stat info {};
    if (::geteuid() == 0 || ::stat(path.constData(), &info) != 0)
        return {};
    if ((info.st_mode & (S_IRGRP | S_IWGRP)) != (S_IRGRP | S_IWGRP) || ::getegid() == info.st_gid)
        return {};
    // getgroups() gives -1 when it fails: no groups then.
    std::vector<gid_t> groups(toCount(std::max(0, ::getgroups(0, nullptr))));
    groups.resize(toCount(std::max(0, ::getgroups(int(groups.size()), groups.data()))));
    if (std::find(groups.begin(), groups.end(), info.st_gid) != groups.end())
        return {};
    const struct group* entry = ::getgrgid(info.st_gid);
    return entry != nullptr ? QString::fromLocal8Bit(entry->gr_name) : QString();
}
#endif

} // namespace

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

PortProblem portPathProblem(const QString& resolvedName) {
#ifdef Q_OS_UNIX
    struct stat info {};
    const QByteArray path = QFile::encodeName(portFilePath(resolvedName));
    if (::stat(path.constData(), &info) == 0 && !S_ISCHR(info.st_mode))
        return {PortProblemKind::NotSerialPort, {}, {}};
#else
    (void)resolvedName;
#endif
    return {};
}

PortProblem openProblem(const QString& resolvedName, QSerialPort::SerialPortError error,
                        const QString& errorString) {
    PortProblem problem{portProblemKind(error), errorString, {}};
    if (problem.kind != PortProblemKind::PermissionDenied)
        return problem;
#ifdef Q_OS_UNIX
    // Qt refuses a port another program has locked or holds exclusively with
    // the same error as one the user may not open; only the second is
    // refused by the device's permissions.
    const QByteArray path = QFile::encodeName(portFilePath(resolvedName));
    if (::access(path.constData(), R_OK | W_OK) == 0)
        problem.kind = PortProblemKind::InUse;
#ifdef Q_OS_LINUX
    else
        problem.groupToJoin = groupThatWouldHelp(path);
#endif
#else
    (void)resolvedName;
    problem.kind = PortProblemKind::InUse;
#endif
    return problem;
}

QString noResponseText(const QString& portName, Language language) {
    const auto text = ResString(txt::PortHasNoResponse, language);
    return portName + QString::fromUtf8(text.data(), qsizetype(text.size()));
}

QString unreachableText(const QString& portName, const PortProblem& problem, Language language) {
    const QString port = portCaption(portName);
    switch (problem.kind) {
    case PortProblemKind::None:
        break;
    case PortProblemKind::NoSuchPort:
        return tableText(txt::NoSuchPort, language).arg(port);
    case PortProblemKind::InUse:
        return tableText(txt::PortInUse, language).arg(port);
    case PortProblemKind::PermissionDenied: {
        QString text = tableText(txt::PortNotAllowed, language).arg(port);
        if (!problem.groupToJoin.isEmpty())
            text += QLatin1Char('\n') +
                    tableText(txt::JoinPortGroup, language).arg(problem.groupToJoin);
        return text;
    }
    case PortProblemKind::NotSerialPort:
        return tableText(txt::NotSerialPort, language).arg(port);
    case PortProblemKind::OtherError:
        return tableText(txt::PortNotOpened, language).arg(port, problem.systemMessage);
    }
    return noResponseText(portName, language);
}

} // namespace zr310
