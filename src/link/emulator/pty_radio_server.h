#pragma once

// Serves an EmulatedRadio on a pseudo-terminal (Linux and macOS): the PC
// side opens devicePath() as it would a serial port. Replies are paced like
// a 9600 baud 8N2 line unless told not to. A radio with the drop-after
// fault is told when the line has been quiet that long (lineIdle).

#include "emulated_radio.h"
#include "line_pacer.h"

#include <atomic>
#include <chrono>
#include <functional>
#include <mutex>
#include <string>

namespace zr310 {

struct PtyServerOptions {
    bool lineDelay = true;
};

class PtyRadioServer {
public:
    PtyRadioServer(EmulatedRadio& radio, PtyServerOptions options = {});
    ~PtyRadioServer();
    PtyRadioServer(const PtyRadioServer&) = delete;
    PtyRadioServer& operator=(const PtyRadioServer&) = delete;

    // Creates the pseudo-terminal. On failure returns false with a reason.
    bool open(std::string& error);
    const std::string& devicePath() const { return m_devicePath; }

    // Serves until `stop` is set (looked at every 50 ms at least). Calls
    // `onCommit` after each change the radio commits to its memory (a completed
    // write, a confirmed tuning value; see EmulatedRadio::commits()), on the
    // serving thread.
    void run(const std::atomic<bool>& stop, const std::function<void()>& onCommit = {});

    // The radio's memory, safe to call from another thread while serving.
    EmulatedRadio::Memory memory() const;
    // Runs `fn` on the radio with serving held off.
    void withRadio(const std::function<void(EmulatedRadio&)>& fn);

private:
    void readInput(LinePacer::TimePoint now);
    void writeDue(LinePacer::TimePoint now);

    EmulatedRadio& m_radio;
    PtyServerOptions m_options;
    LinePacer m_pacer;
    mutable std::mutex m_mutex;
    int m_master = -1;
    int m_slave = -1; // held open so the master never sees a hang-up between sessions
    std::string m_devicePath;
    LinePacer::TimePoint m_lastInput{};
    bool m_sessionQuiet = true;
};

} // namespace zr310
