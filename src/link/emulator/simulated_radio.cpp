#include "simulated_radio.h"

#include "demo_radio.h"

#include <mutex>

namespace zr310 {

SimulatedRadio::SimulatedRadio(const EmulatedRadio::Memory& memory, EmulatedRadioOptions options,
                               PtyServerOptions server)
    : m_radio(memory, options), m_server(m_radio, server) {}

SimulatedRadio::~SimulatedRadio() {
    stop();
}

bool SimulatedRadio::start(std::string& error) {
    if (m_thread.joinable())
        return true;
    if (!m_server.open(error))
        return false;
    m_stop = false;
    m_thread = std::thread([this] { m_server.run(m_stop); });
    return true;
}

void SimulatedRadio::stop() {
    m_stop = true;
    if (m_thread.joinable())
        m_thread.join();
}

const std::string& SimulatedRadio::devicePath() const {
    return m_server.devicePath();
}

EmulatedRadio::Memory SimulatedRadio::memory() const {
    return m_server.memory();
}

void SimulatedRadio::withRadio(const std::function<void(EmulatedRadio&)>& fn) {
    m_server.withRadio(fn);
}

SimulatedRadio* SimulatedRadio::shared() {
    static std::mutex mutex;
    static std::unique_ptr<SimulatedRadio> radio;
    static bool failed = false;
    std::lock_guard lock(mutex);
    if (!radio && !failed) {
        auto candidate = std::make_unique<SimulatedRadio>(makeDemoRadioImage().toRadioOrder());
        std::string error;
        if (candidate->start(error))
            radio = std::move(candidate);
        else
            failed = true;
    }
    return radio.get();
}

} // namespace zr310
