#pragma once

// Looking for the radio on several ports at once: one RadioProbe and one
// LinkSession per port, all on the caller's event loop, so the search takes
// about as long as the slowest port (under a second) however many there are.
//
//   auto* search = new RadioSearch({"COM1", "/dev/ttyUSB0"}, this);
//   connect(search, &RadioSearch::finished, this, [search] {
//       for (const ProbeResult& r : search->results()) ...
//       search->deleteLater();
//   });
//   search->start();
//
// `finished` is emitted from inside a session's own event handling: dispose
// of the search with deleteLater(), not delete. It is emitted (from the
// event loop) also when there is no port to look at.

#include "port_problem.h"
#include "radio_probe.h"

#include <QList>
#include <QObject>
#include <QString>
#include <QStringList>

#include <memory>
#include <vector>

namespace zr310 {

struct ProbeResult {
    QString port; // as given
    RadioProbe::Radio radio = RadioProbe::Radio::None;
    TransferOutcome outcome = TransferOutcome::Running;
    PortProblem problem; // why the port could not be opened, if it could not

    bool found() const { return radio != RadioProbe::Radio::None; }
};

class RadioSearch : public QObject {
    Q_OBJECT

public:
    explicit RadioSearch(const QStringList& ports, QObject* parent = nullptr);
    ~RadioSearch() override;

    // Starts every probe at once; a search runs once.
    void start();
    bool isRunning() const { return m_waiting > 0; }
    // One per port, in the order given; final once finished.
    QList<ProbeResult> results() const;

signals:
    void finished();

private:
    struct Probe;
    void probeDone();

    std::vector<std::unique_ptr<Probe>> m_probes;
    bool m_started = false;
    int m_waiting = 0;
};

} // namespace zr310
