#include "cancel_signal.h"

#include <atomic>
#include <csignal>

#ifndef _WIN32
#include <signal.h>
#endif

namespace zr310 {

namespace {

constexpr int kPollMs = 20;

std::atomic<bool> g_signalled{false};

extern "C" void onCancelSignal(int) {
    g_signalled = true;
}

} // namespace

void watchCancelSignals() {
    static bool installed = false;
    if (installed)
        return;
    installed = true;
#ifdef _WIN32
    std::signal(SIGINT, onCancelSignal);
    std::signal(SIGTERM, onCancelSignal);
#else
    // Without SA_RESTART: a question waiting on the terminal returns at once.
    struct sigaction action = {};
    action.sa_handler = onCancelSignal;
    sigemptyset(&action.sa_mask);
    for (const int signal : {SIGINT, SIGTERM, SIGHUP})
        sigaction(signal, &action, nullptr);
#endif
}

bool cancelSignalled() {
    return g_signalled.load();
}

CancelOnSignal::CancelOnSignal(std::function<void()> cancel) : m_cancel(std::move(cancel)) {
    watchCancelSignals();
    m_poll.setInterval(kPollMs);
    QObject::connect(&m_poll, &QTimer::timeout, [this] { check(); });
    m_poll.start();
    QTimer::singleShot(0, &m_poll, [this] { check(); });
}

void CancelOnSignal::check() {
    if (m_cancelled || !cancelSignalled())
        return;
    m_cancelled = true;
    m_poll.stop();
    m_cancel();
}

} // namespace zr310
