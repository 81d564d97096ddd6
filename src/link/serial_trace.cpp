#include "serial_trace.h"

namespace zr310 {

namespace {

SerialTrace* g_activeTrace = nullptr;

constexpr char kHeading[] =
    "# ZR-310 serial trace: seconds since the start, > sent or < received, the bytes in hex\n";

} // namespace

SerialTrace::SerialTrace(const QString& path) : m_file(path) {
    if (m_file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Text))
        write(kHeading);
    else
        m_error = m_file.errorString();
    m_clock.start();
}

SerialTrace::~SerialTrace() {
    flushReceived();
    if (g_activeTrace == this)
        g_activeTrace = nullptr;
}

void SerialTrace::record(bool sent, QByteArrayView bytes) {
    if (!isOpen() || bytes.isEmpty())
        return;
    if (!sent) {
        if (m_received.isEmpty())
            m_receivedAt = m_clock.elapsed();
        m_received += bytes;
        return;
    }
    flushReceived();
    writeLine(m_clock.elapsed(), '>', bytes);
}

void SerialTrace::flushReceived() {
    if (m_received.isEmpty())
        return;
    writeLine(m_receivedAt, '<', m_received);
    m_received.clear();
}

void SerialTrace::writeLine(qint64 ms, char direction, QByteArrayView bytes) {
    write(QByteArray::number(ms / 1000) + '.' +
          QByteArray::number(ms % 1000).rightJustified(3, '0') + ' ' + direction + ' ' +
          bytes.toByteArray().toHex(' ').toUpper() + '\n');
}

void SerialTrace::write(const QByteArray& text) {
    if (!isOpen())
        return;
    // Flushed: whole lines on disk, also when the program stops.
    if (m_file.write(text) != text.size() || !m_file.flush()) {
        m_error = m_file.errorString();
        m_file.close();
    }
}

SerialTrace* SerialTrace::active() {
    return g_activeTrace;
}

void SerialTrace::setActive(SerialTrace* trace) {
    g_activeTrace = trace;
}

} // namespace zr310
