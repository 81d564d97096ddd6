#pragma once

// An emulated radio served on a pseudo-terminal by a thread of this process,
// for the port named "sim" and for tests. Linux and macOS only.

#include "emulated_radio.h"
#include "pty_radio_server.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace zr310 {

class SimulatedRadio {
public:
    explicit SimulatedRadio(const EmulatedRadio::Memory& memory, EmulatedRadioOptions options = {},
                            PtyServerOptions server = {});
    ~SimulatedRadio();
    SimulatedRadio(const SimulatedRadio&) = delete;
    SimulatedRadio& operator=(const SimulatedRadio&) = delete;

    // Opens the pseudo-terminal and starts serving it.
    bool start(std::string& error);
    void stop();
    // The device the PC side opens, e.g. /dev/pts/3.
    const std::string& devicePath() const;

    EmulatedRadio::Memory memory() const;
    void withRadio(const std::function<void(EmulatedRadio&)>& fn);

    // The radio behind the port name "sim": the demo radio, started on first
    // use and kept until the process ends. Null where it cannot run.
    static SimulatedRadio* shared();

private:
    EmulatedRadio m_radio;
    PtyRadioServer m_server;
    std::atomic<bool> m_stop{false};
    std::thread m_thread;
};

} // namespace zr310
