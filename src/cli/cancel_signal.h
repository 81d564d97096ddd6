#pragma once

// Ctrl+C (SIGINT), SIGTERM and SIGHUP stop the radio commands of zr310-cli
// cleanly: the transfer running then ends at its next packet boundary and
// ends the radio's session, instead of the process dying in the middle of
// it. A signal between two transfers of one command (the write and its
// read-back) stops the next one before it sends anything.

#include <QObject>
#include <QTimer>

#include <functional>

namespace zr310 {

// Installs the handlers, once per process.
void watchCancelSignals();
// Whether one of the signals has arrived.
bool cancelSignalled();

// While it lives, calls `cancel` once when a signal arrives (checked every
// 20 ms on the event loop, also at once if one came before).
class CancelOnSignal {
public:
    explicit CancelOnSignal(std::function<void()> cancel);

private:
    void check();

    std::function<void()> m_cancel;
    QTimer m_poll;
    bool m_cancelled = false;
};

} // namespace zr310
