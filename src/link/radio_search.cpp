#include "radio_search.h"

#include "link_session.h"

namespace zr310 {

struct RadioSearch::Probe {
    explicit Probe(const QString& name) : port(name), session(engine, name) {}

    QString port;
    RadioProbe engine;
    LinkSession session;
};

RadioSearch::RadioSearch(const QStringList& ports, QObject* parent) : QObject(parent) {
    for (const QString& port : ports) {
        m_probes.push_back(std::make_unique<Probe>(port));
        connect(&m_probes.back()->session, &LinkSession::finished, this, &RadioSearch::probeDone);
    }
}

RadioSearch::~RadioSearch() = default;

void RadioSearch::start() {
    if (m_started)
        return;
    m_started = true;
    m_waiting = int(m_probes.size());
    if (m_probes.empty()) {
        QMetaObject::invokeMethod(this, &RadioSearch::finished, Qt::QueuedConnection);
        return;
    }
    for (auto& probe : m_probes)
        probe->session.start();
}

void RadioSearch::probeDone() {
    if (--m_waiting == 0)
        emit finished();
}

QList<ProbeResult> RadioSearch::results() const {
    QList<ProbeResult> results;
    for (const auto& probe : m_probes) {
        results.append({probe->port, probe->engine.radio(), probe->engine.outcome(),
                        probe->session.portProblem()});
    }
    return results;
}

} // namespace zr310
