// bench_transfer: a full read and a full write against zr310-sim over a real
// pseudo-terminal, with the 9600 baud line pacing on. For each it prints the
// measured time, the bound (the line time of every packet and awaited reply
// at 9600 baud 8N2, plus the pauses the protocol holds) and their ratio.
//
// The bound is what the same transfer takes on a virtual clock against a
// radio that answers at once over an ideal line: the protocol's own waits
// and nothing else.

#include "emulated_radio.h"
#include "programming_transfer.h"
#include "serial_transfer.h"
#include "virtual_link.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>
#include <QProcess>
#include <QTemporaryDir>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <vector>

using namespace zr310;
using namespace std::chrono;

namespace {

constexpr int kRuns = 3;

DateTime fixedClock() {
    return {2008, 3, 7, 9, 5, 3};
}

double virtualMilliseconds(TransferKind kind, bool lineDelay) {
    EmulatedRadio radio(EmulatedRadio::Memory{});
    RadioImage image;
    LinkFlags flags;
    ProgrammingTransfer transfer(kind, image, flags, fixedClock);
    test::VirtualLink link(transfer);
    link.setRadio(radio);
    link.setLineDelay(lineDelay);
    link.run();
    return duration<double, std::milli>(*link.finishedAt()).count();
}

double measure(TransferKind kind, const QString& port, bool& completed) {
    RadioImage image;
    LinkFlags flags;
    SerialTransfer transfer(kind, port, image, flags);
    transfer.setClock(fixedClock);
    QEventLoop loop;
    QObject::connect(&transfer, &SerialTransfer::finished, &loop, &QEventLoop::quit);
    QElapsedTimer clock;
    clock.start();
    transfer.start();
    loop.exec();
    const double ms = static_cast<double>(clock.nsecsElapsed()) / 1e6;
    completed = transfer.result().outcome == TransferOutcome::Completed;
    return ms;
}

} // namespace

int main(int argc, char** argv) {
    QCoreApplication app(argc, argv);
    QTemporaryDir dir;
    QProcess sim;
    sim.setProgram(QStringLiteral(ZR310_SIM_EXE));
    sim.setArguments({"--memory", dir.filePath("radio.bin")});
    sim.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    sim.start();
    while (!sim.canReadLine() && sim.waitForReadyRead(5000)) {
    }
    const QString line = QString::fromUtf8(sim.readLine()).trimmed();
    if (!line.startsWith("PTY ")) {
        std::fprintf(stderr, "bench_transfer: zr310-sim did not start\n");
        return 1;
    }
    const QString port = line.mid(4);

    int status = 0;
    std::printf("%-6s %12s %12s %12s %12s %8s\n", "", "measured ms", "bound ms", "line ms",
                "pauses ms", "ratio");
    for (const auto& [kind, name] :
         {std::pair{TransferKind::Read, "read"}, std::pair{TransferKind::Write, "write"}}) {
        const double pauses = virtualMilliseconds(kind, false);
        const double bound = virtualMilliseconds(kind, true);
        std::vector<double> runs;
        for (int i = 0; i < kRuns; ++i) {
            bool completed = false;
            runs.push_back(measure(kind, port, completed));
            if (!completed) {
                std::fprintf(stderr, "bench_transfer: the %s did not complete\n", name);
                status = 1;
            }
        }
        std::sort(runs.begin(), runs.end());
        const double median = runs[runs.size() / 2];
        std::printf("%-6s %12.1f %12.1f %12.1f %12.1f %8.4f\n", name, median, bound, bound - pauses,
                    pauses, median / bound);
    }
    std::printf("(median of %d runs each; target ratio <= 1.03)\n", kRuns);
    sim.terminate();
    sim.waitForFinished(5000);
    return status;
}
