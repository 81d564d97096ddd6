#include "link_session.h"

#include "ports.h"
#include "serial_trace.h"

#include <algorithm>
#include <utility>

namespace zr310 {

namespace {

constexpr qint64 kReadBufferSize = 1024;

void applyTimer(QTimer& timer, const TimerCommand& command) {
    switch (command.mode) {
    case TimerCommand::Mode::Keep:
        break;
    case TimerCommand::Mode::Stop:
        timer.stop();
        break;
    case TimerCommand::Mode::Start:
        timer.start(command.interval);
        break;
    }
}

} // namespace

LinkSession::LinkSession(LinkEngine& engine, const QString& portName, QObject* parent)
    : QObject(parent), m_engine(engine), m_portName(portName) {
    m_clock.start();
    for (QTimer* timer : {&m_sendTimer, &m_watchdog}) {
        timer->setTimerType(Qt::PreciseTimer);
        timer->setSingleShot(true);
    }
    connect(&m_sendTimer, &QTimer::timeout, this, [this] { apply(m_engine.onSendTick()); });
    connect(&m_watchdog, &QTimer::timeout, this, [this] { apply(m_engine.onWatchdog()); });
    connect(&m_port, &QSerialPort::readyRead, this, &LinkSession::onReadyRead);
    connect(&m_port, &QSerialPort::errorOccurred, this, [this](QSerialPort::SerialPortError e) {
        // A cable pulled out: stop using the port; the watchdog ends the
        // exchange as it would for a radio that stopped answering.
        if (e == QSerialPort::ResourceError && m_port.isOpen())
            m_port.close();
    });
}

LinkSession::~LinkSession() {
    m_port.close();
}

void LinkSession::start() {
    if (m_running)
        return;
    m_running = true;
    if (m_port.isOpen()) {
        // Left open by an earlier exchange: a late byte is not this one's.
        m_port.clear(QSerialPort::Input);
        m_received.clear();
    } else {
        m_port.setPortName(resolvePortName(m_portName));
    }
    apply(m_engine.start());
    reportProgress();
}

void LinkSession::cancel() {
    if (m_running)
        m_engine.requestCancel();
}

void LinkSession::openPort() {
    if (m_port.isOpen())
        return;
    m_portProblem = {};
    m_port.setReadBufferSize(kReadBufferSize);
    // Nothing will answer a port that is not open: the engine's watchdog ends
    // the exchange, and the problem tells why. A file or a folder given as
    // the port is not opened at all.
    const QString resolved = resolvePortName(m_portName);
    m_portProblem = portPathProblem(resolved);
    if (m_portProblem)
        return;
    if (!m_port.open(QIODevice::ReadWrite)) {
        m_portProblem = openProblem(resolved, m_port.error(), m_port.errorString());
        return;
    }
    const bool configured =
        m_port.setBaudRate(QSerialPort::Baud9600) && m_port.setDataBits(QSerialPort::Data8) &&
        m_port.setParity(QSerialPort::NoParity) && m_port.setStopBits(QSerialPort::TwoStop) &&
        m_port.setFlowControl(QSerialPort::NoFlowControl);
    if (!configured) {
        m_portProblem = {PortProblemKind::OtherError, m_port.errorString(), {}};
        m_port.close();
        return;
    }
    m_port.clear(QSerialPort::AllDirections);
    m_received.clear();
}

void LinkSession::apply(const LinkAction& action) {
    if (!m_running)
        return;
    if (action.openPort)
        openPort();
    if (!action.send.empty()) {
        if (!m_port.isOpen())
            openPort();
        send(action.send);
    }
    // The holds keep this exchange still (no reply is handed over, no timer
    // of it fires) without stopping the event loop, so that other sessions
    // of the process go on meanwhile.
    holdThen(action.holdAfterSend, [this, action] {
        if (action.closePort && m_port.isOpen()) {
            m_port.flush();
            m_port.close();
        }
        holdThen(action.pauseAfterClose, [this, action] { settle(action); });
    });
}

void LinkSession::send(const Packet& packet) {
    if (!m_port.isOpen())
        return;
    const auto bytes = packet.view();
    const QByteArrayView sent(bytes.data(), qsizetype(bytes.size()));
    m_port.write(sent.data(), sent.size());
    m_port.flush();
    if (SerialTrace* trace = SerialTrace::active())
        trace->record(true, sent);
}

void LinkSession::holdThen(std::chrono::milliseconds hold, std::function<void()> next) {
    if (hold.count() <= 0) {
        next();
        return;
    }
    if (!m_holding) {
        m_holding = true;
        m_sendDeadline = suspend(m_sendTimer);
        m_watchdogDeadline = suspend(m_watchdog);
    }
    QTimer::singleShot(hold, Qt::PreciseTimer, this, [this, next = std::move(next)] {
        next();
        if (!m_holding && m_running)
            deliverWaiting(); // bytes that came in during the hold
    });
}

std::optional<qint64> LinkSession::suspend(QTimer& timer) {
    if (!timer.isActive())
        return std::nullopt;
    const qint64 deadline = m_clock.elapsed() + timer.remainingTime();
    timer.stop();
    return deadline;
}

void LinkSession::resume(QTimer& timer, std::optional<qint64> deadline) {
    if (deadline)
        timer.start(std::chrono::milliseconds(std::max<qint64>(0, *deadline - m_clock.elapsed())));
}

void LinkSession::settle(const LinkAction& action) {
    if (m_holding) {
        // A timer the action keeps runs on as if the hold had not stopped it.
        m_holding = false;
        resume(m_sendTimer, std::exchange(m_sendDeadline, std::nullopt));
        resume(m_watchdog, std::exchange(m_watchdogDeadline, std::nullopt));
    }
    if (!m_running)
        return;
    m_threshold = action.receiveThreshold;
    applyTimer(m_sendTimer, action.sendTimer);
    applyTimer(m_watchdog, action.watchdog);
    reportProgress();

    if (action.needVersion10Warning) {
        QElapsedTimer open;
        open.start();
        if (m_warning)
            m_warning();
        apply(m_engine.resumeAfterWarning(std::chrono::milliseconds(open.elapsed())));
        return;
    }
    if (action.finished) {
        if (SerialTrace* trace = SerialTrace::active())
            trace->flushReceived();
        m_sendTimer.stop();
        m_watchdog.stop();
        if (m_closeWhenFinished)
            m_port.close();
        m_running = false;
        emit finished();
    }
}

void LinkSession::onReadyRead() {
    const QByteArray bytes = m_port.readAll();
    if (SerialTrace* trace = SerialTrace::active())
        trace->record(false, bytes);
    m_received += bytes;
    deliverWaiting();
}

void LinkSession::deliverWaiting() {
    // A reply that asks for more bytes gets those already waiting; otherwise
    // bytes left over wait for the next arrival, as a receive event would.
    while (m_running && !m_holding && m_threshold > 0 && m_received.size() >= m_threshold) {
        const QByteArray reply = m_received.left(m_threshold);
        m_received.remove(0, m_threshold);
        m_threshold = 0;
        const auto* data = reinterpret_cast<const std::uint8_t*>(reply.constData());
        apply(m_engine.onReply({data, std::size_t(reply.size())}));
    }
}

void LinkSession::reportProgress() {
    const int value = m_engine.progressValue();
    if (value == m_reportedProgress)
        return;
    m_reportedProgress = value;
    emit progress(value, m_engine.progressMaximum());
}

} // namespace zr310
