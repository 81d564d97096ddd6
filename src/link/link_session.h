#pragma once

#include "link_types.h"
#include "ports.h"

#include <QByteArray>
#include <QElapsedTimer>
#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include <functional>
#include <optional>

namespace zr310 {

// Carries out a link engine's actions on a serial port with two timers: the
// send timer (`ctrTimer`) and the watchdog (`MessageTimer`), both precise
// single-shot timers that the engine re-arms itself. The port is opened with
// 9600 baud, 8 data bits, no parity, 2 stop bits, no flow control, a 1024-byte
// read buffer, and both directions cleared before the first byte. Replies are
// handed to the engine whole: when as many bytes as it awaits have arrived.
// The only waits that hold the event loop are the pauses the engine asks for.
class LinkSession : public QObject {
    Q_OBJECT

public:
    LinkSession(LinkEngine& engine, const QString& portName, QObject* parent = nullptr);
    ~LinkSession() override;

    // Called when the engine needs the version-1.0 warning answered; the
    // engine resumes when it returns.
    void setWarningHandler(std::function<void()> handler) { m_warning = std::move(handler); }

    // Starts the engine. A session may be started again once finished (the
    // tuning exchanges run one after another on one session).
    void start();
    bool isRunning() const { return m_running; }
    // Asks the engine to stop at the next packet boundary (LinkEngine::requestCancel).
    void cancel();
    // Whether the port is closed when the engine has finished (default: yes).
    void setClosePortWhenFinished(bool close) { m_closeWhenFinished = close; }
    void closePort() { m_port.close(); }
    // The device actually opened (the emulated radio's for "sim").
    QString devicePath() const { return m_port.portName(); }
    // Why the port could not be opened the last time it was tried (none when
    // it could). The engine then hears nothing and ends as for a silent radio.
    const PortProblem& portProblem() const { return m_portProblem; }

signals:
    void progress(int value, int maximum);
    void finished();

private:
    void apply(const LinkAction& action);
    void send(const Packet& packet);
    // Runs next after the hold (at once when there is none).
    void holdThen(std::chrono::milliseconds hold, std::function<void()> next);
    std::optional<qint64> suspend(QTimer& timer); // its deadline, if it was running
    void resume(QTimer& timer, std::optional<qint64> deadline);
    // Sets the threshold and timers of an action and reports its end.
    void settle(const LinkAction& action);
    void openPort();
    void onReadyRead();
    void deliverWaiting();
    void reportProgress();

    LinkEngine& m_engine;
    QString m_portName;
    QSerialPort m_port;
    QTimer m_sendTimer;
    QTimer m_watchdog;
    QByteArray m_received;
    int m_threshold = 0;
    bool m_running = false;
    bool m_holding = false;
    QElapsedTimer m_clock;
    std::optional<qint64> m_sendDeadline;
    std::optional<qint64> m_watchdogDeadline;
    bool m_closeWhenFinished = true;
    PortProblem m_portProblem;
    int m_reportedProgress = -1;
    std::function<void()> m_warning;
};

} // namespace zr310
