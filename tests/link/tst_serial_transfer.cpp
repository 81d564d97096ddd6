// The serial layer end to end: QSerialPort on one side of a pseudo-terminal,
// the emulated radio on the other, served by a thread of this process. The
// transfers, the faults and tuning are run end to end against zr310-sim by the
// zr310-cli tests and from the window by the ui tests; here the tuning
// session's queue of frames, the port probe and the kinds of port problem.

#include "link_test_util.h"
#include "ports.h"
#include "serial_transfer.h"
#include "simulated_radio.h"
#include "tuning_session.h"

#include <QSignalSpy>
#include <QtTest>

using namespace zr310;
using namespace zr310::test;

Q_DECLARE_METATYPE(zr310::PortProblemKind)

namespace {

// Waiting for the end is generous: a loaded machine may be slow, but every
// path ends by the engine's own watchdog.
constexpr int kPatience = 60'000;

std::unique_ptr<SimulatedRadio> startRadio(const EmulatedRadio::Memory& memory,
                                           bool lineDelay = false) {
    auto radio = std::make_unique<SimulatedRadio>(memory, EmulatedRadioOptions{},
                                                  PtyServerOptions{lineDelay});
    std::string error;
    if (!radio->start(error))
        qFatal("no pseudo-terminal: %s", error.c_str());
    return radio;
}

QString port(const SimulatedRadio& radio) {
    return QString::fromStdString(radio.devicePath());
}

TransferResult run(SerialTransfer& transfer) {
    QSignalSpy finished(&transfer, &SerialTransfer::finished);
    transfer.start();
    if (!finished.wait(kPatience))
        return {};
    return finished.first().first().value<TransferResult>();
}

} // namespace

class TestSerialTransfer : public QObject {
    Q_OBJECT

private slots:
    void submittedFrames_data();
    void submittedFrames();
    void ports();
    void problemKinds_data();
    void problemKinds();
};

// Frames handed in while others run, as hex: command, item code, value
// (E 00, V 01, K 02, C 03, L 04). `first` at once, `during` as the first value
// goes out. 0x2F1 (item 0x33) holds 0x20, 0x2F2 (item 0x55) 0x30.
void TestSerialTransfer::submittedFrames_data() {
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("during");
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<int>("live");          // the value being tried at the end
    QTest::addColumn<QByteArray>("stored"); // 0x2F1, 0x2F2 at the end
    const auto row = [](const char* name, const char* first, const char* during, const char* sent,
                        int live, const char* stored) {
        QTest::newRow(name) << QByteArray::fromHex(first) << QByteArray::fromHex(during)
                            << QByteArray::fromHex(sent) << live << QByteArray::fromHex(stored);
    };
    row("values while a value is in flight: the newest next", "003300 013301",
        "013302 013303 013304", "003300 013301 013304", 4, "2030");
    row("confirm waits behind the last value", "003300 013301 013302 023302", "",
        "003300 013302 023302", 2, "0230");
    row("a refusal drops what waits but a leave", "013301 013302 003300 04bb00 013303", "",
        "013301 04bb00", 0, "2030");
}

void TestSerialTransfer::submittedFrames() {
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, during);
    QFETCH(QByteArray, sent);
    QFETCH(int, live);
    QFETCH(QByteArray, stored);
    auto memory = patternedMemory(2);
    memory[0x2F1] = 0x20;
    memory[0x2F2] = 0x30;
    auto radio = startRadio(memory, true);
    radio->withRadio([](EmulatedRadio& r) { // wake-up, identify, confirm, tuning command
        radioAnswer(r, std::array<std::uint8_t, 17>{2, 'P', 'R', 'O', 'G', 'R', 'A', 'M', 2, 6, 'Q',
                                                    'Z', 'V', 'T', 'U', 'N', 'E'});
    });

    TuningSession tuning(port(*radio));
    const auto submit = [&](const QByteArray& frames) {
        for (qsizetype i = 0; i + 2 < frames.size(); i += 3)
            tuning.submit(TuneCommand(frames[i]), static_cast<std::uint8_t>(frames[i + 1]),
                          static_cast<std::uint8_t>(frames[i + 2]));
    };
    QByteArray sentFrames;
    connect(&tuning, &TuningSession::frameSent, this, [&](const TuningFrame& f) {
        sentFrames += QByteArray(1, char(f.command)) + char(f.itemCode) + char(f.value);
        if (f.command == TuneCommand::Value)
            submit(std::exchange(during, {}));
    });
    submit(first);
    QTRY_VERIFY_WITH_TIMEOUT(tuning.isIdle(), kPatience);
    QCOMPARE(sentFrames.toHex(), sent.toHex());
    const auto after = radio->memory();
    QCOMPARE((QByteArray(1, char(after[0x2F1])) + char(after[0x2F2])).toHex(), stored.toHex());
    radio->withRadio([&](EmulatedRadio& r) { QCOMPARE(int(r.liveTuningValue()), live); });
}

void TestSerialTransfer::ports() {
    const auto radioBefore = patternedMemory(0);
    auto radio = startRadio(radioBefore);
    QVERIFY(probePort(port(*radio)));
    QVERIFY(!probePort("/dev/zr310-no-such-port"));
    // The probe's modem command means nothing to the radio: a transfer still works.
    const RadioImage image = patternedImage(55);
    RadioImage sent = image;
    LinkFlags flags;
    SerialTransfer write(TransferKind::WriteTuning, port(*radio), sent, flags);
    QCOMPARE(run(write).outcome, TransferOutcome::Completed);
    for (int a = 0; a < 0x400; ++a)
        QCOMPARE(radio->memory()[toIndex(a)],
                 a >= 0x100 && a < 0x1B0 ? image.atAddress(a) : radioBefore[toIndex(a)]);
#ifdef Q_OS_LINUX
    QCOMPARE(resolvePortName("COM4"), QString("/dev/ttyS3"));
#endif
}

// The errors Qt gives that have no text of their own (a missing port and one
// held by another program are taken end to end by tst_transfers).
void TestSerialTransfer::problemKinds_data() {
    QTest::addColumn<QSerialPort::SerialPortError>("error");
    QTest::addColumn<PortProblemKind>("kind");
    QTest::newRow("open") << QSerialPort::OpenError << PortProblemKind::OtherError;
    QTest::newRow("resource") << QSerialPort::ResourceError << PortProblemKind::OtherError;
    QTest::newRow("unknown") << QSerialPort::UnknownError << PortProblemKind::OtherError;
}

void TestSerialTransfer::problemKinds() {
    QFETCH(QSerialPort::SerialPortError, error);
    QFETCH(PortProblemKind, kind);
    QCOMPARE(portProblemKind(error), kind);
}

QTEST_GUILESS_MAIN(TestSerialTransfer)
#include "tst_serial_transfer.moc"
