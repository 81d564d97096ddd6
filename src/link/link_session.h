#pragma once

#include "link_types.h"

#include <QByteArray>
#include <QObject>
#include <QSerialPort>
#include <QTimer>

#include <functional>

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
    // Whether the port is closed when the engine has finished (default: yes).
    void setClosePortWhenFinished(bool close) { m_closeWhenFinished = close; }
    void closePort() { m_port.close(); }
    // The device actually opened (the emulated radio's for "sim").
    QString devicePath() const { return m_port.portName(); }

signals:
    void progress(int value, int maximum);
    void finished();

private:
    void apply(const LinkAction& action);
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
    bool m_closeWhenFinished = true;
    int m_reportedProgress = -1;
    std::function<void()> m_warning;
};

} // namespace zr310
