#include "pty_radio_server.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <sys/select.h>
#include <termios.h>
#include <unistd.h>

#ifdef __linux__
#include <sys/prctl.h>
#endif

namespace zr310 {

namespace {

constexpr auto kPollInterval = std::chrono::milliseconds(50);

std::string systemError(const char* what) {
    return std::string(what) + ": " + std::strerror(errno);
}

} // namespace

PtyRadioServer::PtyRadioServer(EmulatedRadio& radio, PtyServerOptions options)
    : m_radio(radio), m_options(options), m_pacer(options.lineDelay) {}

PtyRadioServer::~PtyRadioServer() {
    if (m_slave >= 0)
        ::close(m_slave);
    if (m_master >= 0)
        ::close(m_master);
}

bool PtyRadioServer::open(std::string& error) {
    m_master = ::posix_openpt(O_RDWR | O_NOCTTY);
    if (m_master < 0) {
        error = systemError("posix_openpt");
        return false;
    }
    if (::grantpt(m_master) != 0 || ::unlockpt(m_master) != 0) {
        error = systemError("grantpt/unlockpt");
        return false;
    }
    const char* name = ::ptsname(m_master);
    if (!name) {
        error = systemError("ptsname");
        return false;
    }
    m_devicePath = name;
    m_slave = ::open(m_devicePath.c_str(), O_RDWR | O_NOCTTY);
    if (m_slave < 0) {
        error = systemError("open pty");
        return false;
    }
    termios raw{};
    if (::tcgetattr(m_slave, &raw) == 0) {
        ::cfmakeraw(&raw);
        ::cfsetispeed(&raw, B9600);
        ::cfsetospeed(&raw, B9600);
        raw.c_cflag |= CSTOPB | CLOCAL | CREAD;
        ::tcsetattr(m_slave, TCSANOW, &raw);
    }
    ::fcntl(m_master, F_SETFL, ::fcntl(m_master, F_GETFL) | O_NONBLOCK);
    return true;
}

void PtyRadioServer::run(const std::atomic<bool>& stop, const std::function<void()>& onCommit) {
#ifdef __linux__
    // Wake up on time for each paced byte rather than up to 50 us late.
    ::prctl(PR_SET_TIMERSLACK, 1UL, 0UL, 0UL, 0UL);
#endif
    int commits = 0;
    {
        std::lock_guard lock(m_mutex);
        commits = m_radio.commits();
    }
    while (!stop.load()) {
        auto now = LinePacer::Clock::now();
        auto wait = std::chrono::duration_cast<std::chrono::microseconds>(kPollInterval);
        {
            std::lock_guard lock(m_mutex);
            writeDue(now);
            if (const auto next = m_pacer.nextDue())
                wait = std::min(wait, std::chrono::duration_cast<std::chrono::microseconds>(
                                          *next - now + std::chrono::microseconds(1)));
            const auto dropAfter = m_radio.dropsSessionAfterMs();
            if (!m_sessionQuiet && dropAfter) {
                const auto idleAt = m_lastInput + std::chrono::milliseconds(*dropAfter);
                if (idleAt <= now) {
                    m_radio.lineIdle();
                    m_sessionQuiet = true;
                }
            }
        }
        wait = std::max(wait, std::chrono::microseconds(0));
        fd_set readable;
        FD_ZERO(&readable);
        FD_SET(m_master, &readable);
        timeval timeout{static_cast<time_t>(wait.count() / 1'000'000),
                        static_cast<suseconds_t>(wait.count() % 1'000'000)};
        const int ready = ::select(m_master + 1, &readable, nullptr, nullptr, &timeout);
        if (ready < 0 && errno != EINTR)
            break;
        if (ready > 0 && FD_ISSET(m_master, &readable)) {
            std::lock_guard lock(m_mutex);
            readInput(LinePacer::Clock::now());
        }
        int nowCommits = 0;
        {
            std::lock_guard lock(m_mutex);
            nowCommits = m_radio.commits();
        }
        if (nowCommits != commits) {
            commits = nowCommits;
            if (onCommit)
                onCommit();
        }
    }
}

void PtyRadioServer::readInput(LinePacer::TimePoint now) {
    std::uint8_t buffer[256];
    const ssize_t n = ::read(m_master, buffer, sizeof buffer);
    if (n <= 0)
        return;
    m_lastInput = now;
    m_sessionQuiet = false;
    for (ssize_t i = 0; i < n; ++i) {
        const auto arrived = m_pacer.arrival(now);
        const auto reply = m_radio.receive(buffer[i]);
        if (!reply.empty())
            m_pacer.queue(reply, arrived);
    }
    writeDue(LinePacer::Clock::now());
}

void PtyRadioServer::writeDue(LinePacer::TimePoint now) {
    const auto due = m_pacer.takeDue(now);
    std::size_t written = 0;
    while (written < due.size()) {
        const ssize_t n = ::write(m_master, due.data() + written, due.size() - written);
        if (n <= 0)
            break; // the line is full: the PC is not reading; the rest is lost
        written += static_cast<std::size_t>(n);
    }
}

EmulatedRadio::Memory PtyRadioServer::memory() const {
    std::lock_guard lock(m_mutex);
    return m_radio.memory();
}

void PtyRadioServer::withRadio(const std::function<void(EmulatedRadio&)>& fn) {
    std::lock_guard lock(m_mutex);
    fn(m_radio);
}

} // namespace zr310
