#pragma once

#include <QByteArray>
#include <QElapsedTimer>
#include <QFile>
#include <QString>

namespace zr310 {

// A record of the bytes on the serial line, for finding out what a radio
// does: after a heading line starting with '#', one line for each packet
// written and one for the bytes received before the next packet (or the end
// of the exchange), with the seconds since the trace began and the
// direction, in hex:
//   12.031 > 02 50 52 4F 47 52 41 4D
//   12.045 < 06
// While a trace is active, every LinkSession of the process writes to it.
class SerialTrace {
public:
    // Replaces the file and writes the heading, so that a file that opens but
    // takes no bytes (a full disk, /dev/full) is found out before anything
    // is sent.
    explicit SerialTrace(const QString& path);
    ~SerialTrace(); // no longer active
    SerialTrace(const SerialTrace&) = delete;
    SerialTrace& operator=(const SerialTrace&) = delete;

    // Open, and every line so far on disk. Once a line fails, the trace stops.
    bool isOpen() const { return m_error.isEmpty(); }
    // Why the file could not be opened or a line written.
    QString errorString() const { return m_error; }
    void record(bool sent, QByteArrayView bytes);
    // Writes the line of the bytes received so far.
    void flushReceived();

    static SerialTrace* active();
    static void setActive(SerialTrace* trace); // null: no trace

private:
    void writeLine(qint64 ms, char direction, QByteArrayView bytes);
    void write(const QByteArray& text);

    QFile m_file;
    QString m_error;
    QElapsedTimer m_clock;
    QByteArray m_received;
    qint64 m_receivedAt = 0; // ms of the first byte in m_received
};

} // namespace zr310
