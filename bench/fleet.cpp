// bench_fleet: one data file written into one emulated radio, then into
// eight at once from one process, each radio a zr310-sim on its own
// pseudo-terminal with the 9600 baud line pacing on. Prints both times and
// their ratio: a fleet should take about as long as one radio.

#include "cli_common.h"
#include "demo_radio.h"
#include "fleet_write.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <cstdio>
#include <memory>
#include <sstream>
#include <vector>

using namespace zr310;

namespace {

constexpr int kRadios = 8;
constexpr int kRuns = 3;

// A zr310-sim process; port() is empty when it did not start.
class Sim {
public:
    explicit Sim(const QString& memory) {
        m_process.setProgram(QStringLiteral(ZR310_SIM_EXE));
        m_process.setArguments({"--memory", memory});
        m_process.start();
        while (!m_process.canReadLine() && m_process.waitForReadyRead(5000)) {
        }
        const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
        if (line.startsWith("PTY "))
            m_port = line.mid(4).toStdString();
    }
    ~Sim() {
        m_process.terminate();
        m_process.waitForFinished(5000);
    }
    const std::string& port() const { return m_port; }

private:
    QProcess m_process;
    std::string m_port;
};

// Milliseconds of one writeFleet over ports; negative when a radio failed.
double timeWrite(const std::vector<std::string>& ports, const RadioImage& image) {
    std::ostringstream lines;
    QElapsedTimer clock;
    clock.start();
    const int status = writeFleet(ports, image, {}, lines);
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    if (status != kExitOk) {
        std::fprintf(stderr, "bench_fleet: %s", lines.str().c_str());
        return -1;
    }
    return ms;
}

double median(std::vector<double> runs) {
    std::sort(runs.begin(), runs.end());
    return runs[runs.size() / 2];
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    std::vector<std::unique_ptr<Sim>> sims;
    std::vector<std::string> ports;
    for (int i = 0; i < kRadios; ++i) {
        sims.push_back(std::make_unique<Sim>(dir.filePath(QStringLiteral("radio%1.bin").arg(i))));
        if (sims.back()->port().empty()) {
            std::fprintf(stderr, "bench_fleet: zr310-sim did not start\n");
            return 1;
        }
        ports.push_back(sims.back()->port());
    }
    const RadioImage image = makeDemoRadioImage();
    std::vector<double> one, fleet;
    for (int i = 0; i < kRuns; ++i) {
        one.push_back(timeWrite({ports.front()}, image));
        fleet.push_back(timeWrite(ports, image));
    }
    if (std::min(*std::min_element(one.begin(), one.end()),
                 *std::min_element(fleet.begin(), fleet.end())) < 0)
        return 1;
    const double ratio = median(fleet) / median(one);
    std::printf("%-10s %12s\n", "", "measured ms");
    std::printf("%-10s %12.1f\n", "1 radio", median(one));
    std::printf("%d radios  %12.1f\n", kRadios, median(fleet));
    std::printf("ratio %.4f (median of %d runs each; target <= 1.10)\n", ratio, kRuns);
    return 0;
}
