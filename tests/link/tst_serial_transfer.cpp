// The serial layer end to end: QSerialPort on one side of a pseudo-terminal,
// the emulated radio on the other, served by a thread of this process. The
// faults and the radio-information transfer are run end to end against
// zr310-sim by the zr310-cli tests.

#include "link_test_util.h"
#include "packets.h"
#include "ports.h"
#include "serial_transfer.h"
#include "simulated_radio.h"
#include "tuning_session.h"

#include <QSignalSpy>
#include <QtTest>

using namespace zr310;
using namespace zr310::test;

Q_DECLARE_METATYPE(zr310::TransferKind)
Q_DECLARE_METATYPE(zr310::TransferOutcome)

namespace {

// Waiting for the end is generous: a loaded machine may be slow, but every
// path ends by the engine's own watchdog.
constexpr int kPatience = 60'000;

std::vector<int> writeBlocks() {
    auto blocks = addressRange(0x000, 0x0F8);
    blocks.insert(blocks.end(), {0x2B0, 0x2B8, 0x2D0, 0x2D8, 0x3C0, 0x3C8});
    return blocks;
}

bool inBlocks(int address, const std::vector<int>& blocks) {
    return std::find(blocks.begin(), blocks.end(), address & ~7) != blocks.end();
}

struct Bench {
    std::unique_ptr<SimulatedRadio> radio;
    QString port;
};

Bench startRadio(const EmulatedRadio::Memory& memory, const QString& fault = "none",
                 bool version10 = false, bool lineDelay = false) {
    const auto parsed = RadioFault::parse(fault.toStdString());
    Bench bench;
    bench.radio = std::make_unique<SimulatedRadio>(memory, EmulatedRadioOptions{version10, *parsed},
                                                   PtyServerOptions{lineDelay});
    std::string error;
    if (bench.radio->start(error))
        bench.port = QString::fromStdString(bench.radio->devicePath());
    else
        qWarning("no pseudo-terminal: %s", error.c_str());
    return bench;
}

template <typename Transfer> TransferResult run(Transfer& transfer) {
    QSignalSpy finished(&transfer, &Transfer::finished);
    transfer.start();
    if (!finished.wait(kPatience))
        return {};
    return finished.first().first().template value<TransferResult>();
}

} // namespace

class TestSerialTransfer : public QObject {
    Q_OBJECT

private slots:
    void transfers_data();
    void transfers();
    void declinedWriteSendsNothing();
    void tuning();
    void missingPort();
    void ports();
};

void TestSerialTransfer::transfers_data() {
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<bool>("lineDelay");
    QTest::newRow("read, paced line") << TransferKind::Read << true;
    QTest::newRow("write") << TransferKind::Write << false;
    QTest::newRow("write, paced line") << TransferKind::Write << true;
    QTest::newRow("enter tuning") << TransferKind::EnterTuning << false;
    QTest::newRow("write tuning") << TransferKind::WriteTuning << false;
}

void TestSerialTransfer::transfers() {
    QFETCH(TransferKind, kind);
    QFETCH(bool, lineDelay);
    const auto radioBefore = patternedMemory(21);
    auto bench = startRadio(radioBefore, "none", false, lineDelay);
    QVERIFY(!bench.port.isEmpty());

    const RadioImage pcBefore = patternedImage(55);
    RadioImage image = pcBefore;
    LinkFlags flags;
    SerialTransfer transfer(kind, bench.port, image, flags);
    transfer.setClock([] { return DateTime{2008, 3, 7, 9, 5, 3}; });
    QSignalSpy progress(&transfer, &SerialTransfer::progress);
    const auto result = run(transfer);

    QCOMPARE(result.outcome, TransferOutcome::Completed);
    QCOMPARE(result.blockCounter, 200);
    QCOMPARE(result.messageId, 0);
    QVERIFY(!progress.isEmpty());
    QCOMPARE(progress.last().at(0).toInt(), progressMaximum(kind));
    QCOMPARE(progress.last().at(1).toInt(), progressMaximum(kind));

    const auto radioAfter = bench.radio->memory();
    for (int a = 0; a < 1024; ++a) {
        switch (kind) {
        case TransferKind::Read: // all but the last block, fetched and not kept
            QCOMPARE(image.atAddress(a), a < 0x3F8 ? radioBefore[a] : pcBefore.atAddress(a));
            break;
        case TransferKind::Write:
            QCOMPARE(radioAfter[a],
                     inBlocks(a, writeBlocks()) ? image.atAddress(a) : radioBefore[a]);
            break;
        case TransferKind::EnterTuning: {
            const bool stored = (a >= 0x100 && a < 0x1B0) || (a >= 0x2F0 && a < 0x300);
            QCOMPARE(image.atAddress(a), stored ? radioBefore[a] : pcBefore.atAddress(a));
            break;
        }
        case TransferKind::WriteTuning:
            QCOMPARE(radioAfter[a],
                     a >= 0x100 && a < 0x1B0 ? pcBefore.atAddress(a) : radioBefore[a]);
            break;
        }
    }
    if (kind == TransferKind::Write) {
        const std::string stamp(reinterpret_cast<const char*>(&radioAfter[0x3C0]), 14);
        QCOMPARE(stamp, std::string("20080307090503"));
    }
}

void TestSerialTransfer::declinedWriteSendsNothing() {
    const auto radioBefore = patternedMemory(3);
    auto bench = startRadio(radioBefore, "none", true);
    QVERIFY(!bench.port.isEmpty());
    RadioImage image = patternedImage(4);
    LinkFlags flags;
    flags.version10Continue = true; // an earlier OK, then Cancel now
    int asked = 0;
    SerialTransfer transfer(TransferKind::Write, bench.port, image, flags);
    transfer.setVersion10Warning([&](LinkFlags& f) {
        ++asked;
        f.skipVersion10Check = f.version10Continue = f.version10DontShow = false;
    });
    const auto result = run(transfer);
    QCOMPARE(asked, 1);
    QCOMPARE(result.outcome, TransferOutcome::Declined);
    QCOMPARE(result.messageId, 0);
    QVERIFY(flags.radioIsVersion10);
    QCOMPARE(bench.radio->memory(), radioBefore);
    int written = -1;
    bench.radio->withRadio([&](EmulatedRadio& r) { written = r.blocksWritten(); });
    QCOMPARE(written, 0);
}

void TestSerialTransfer::tuning() {
    auto memory = patternedMemory(6);
    memory[0x2F1] = 0x20; // 9th squelch level
    auto bench = startRadio(memory);
    QVERIFY(!bench.port.isEmpty());
    RadioImage image;
    LinkFlags flags;
    SerialTransfer enter(TransferKind::EnterTuning, bench.port, image, flags);
    QCOMPARE(run(enter).outcome, TransferOutcome::Completed);

    using Result = TuningExchange::Result;
    TuningSession tuning(bench.port);
    QSignalSpy finished(&tuning, &TuningSession::finished);
    const struct {
        TuneCommand command;
        int value;
        Result result;
    } steps[] = {
        {TuneCommand::Enter, 0, Result::ValueReported},
        {TuneCommand::Value, 0x44, Result::Acknowledged},
        {TuneCommand::Confirm, 0x45, Result::Acknowledged},
        {TuneCommand::Value, 1, Result::Refused},
        {TuneCommand::Leave, 0, Result::Acknowledged},
        {TuneCommand::Enter, 0, Result::NoAnswer},
    };
    for (const auto& step : steps) {
        finished.clear();
        QVERIFY(tuning.run(step.command, 0x33, std::uint8_t(step.value)));
        QVERIFY(finished.wait(kPatience));
        QCOMPARE(finished.first().first().value<Result>(), step.result);
        if (step.result == Result::ValueReported)
            QCOMPARE(finished.first().at(1).toInt(), 0x20);
    }
    QCOMPARE(bench.radio->memory()[0x2F1], std::uint8_t(0x45));
}

void TestSerialTransfer::missingPort() {
    RadioImage image;
    LinkFlags flags;
    SerialTransfer transfer(TransferKind::Read, "/dev/zr310-no-such-port", image, flags);
    const auto result = run(transfer);
    QCOMPARE(result.outcome, TransferOutcome::NoResponse);
    QCOMPARE(noResponseText("COM1", Language::English),
             QString("COM1Port has no response, please check connection \r\r\nand Power!"));
}

void TestSerialTransfer::ports() {
    auto bench = startRadio(patternedMemory(0));
    QVERIFY(!bench.port.isEmpty());
    QVERIFY(probePort(bench.port));
    QVERIFY(!probePort("/dev/zr310-no-such-port"));
    // The probe's modem command means nothing to the radio: a read still works.
    RadioImage image;
    LinkFlags flags;
    SerialTransfer transfer(TransferKind::WriteTuning, bench.port, image, flags);
    QCOMPARE(run(transfer).outcome, TransferOutcome::Completed);
#ifdef Q_OS_LINUX
    QCOMPARE(portNameForSelectedPort(1), QString("/dev/ttyS0"));
    QCOMPARE(resolvePortName("COM4"), QString("/dev/ttyS3"));
    QCOMPARE(resolvePortName("/dev/ttyUSB0"), QString("/dev/ttyUSB0"));
#endif
    QVERIFY(resolvePortName(kSimulatedPortName).startsWith("/dev/"));
}

QTEST_GUILESS_MAIN(TestSerialTransfer)
#include "tst_serial_transfer.moc"
