// The radio probe on a virtual line against the emulated radio: what it
// finds, the packets it sends, and that the radio's memory is untouched.

#include "link_test_util.h"
#include "packets.h"
#include "radio_probe.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;
using namespace std::chrono;

Q_DECLARE_METATYPE(zr310::RadioProbe::Radio)
Q_DECLARE_METATYPE(zr310::TransferOutcome)

namespace {

QByteArray hex(const Bytes& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()))
        .toHex(' ');
}

} // namespace

class TestRadioProbe : public QObject {
    Q_OBJECT

private slots:
    // The radio's version or fault; what the probe finds, and every packet
    // it sent, in hex.
    void probe_data() {
        QTest::addColumn<bool>("version10");
        QTest::addColumn<QString>("fault");
        QTest::addColumn<TransferOutcome>("outcome");
        QTest::addColumn<RadioProbe::Radio>("radio");
        QTest::addColumn<QByteArrayList>("sent");
        const QByteArray wakeUp = "02 50 52 4f 47 52 41 4d";
        const QByteArrayList whole{wakeUp, "02", "06", "45 4e 44"}; // ... "END"
        const auto completed = TransferOutcome::Completed;
        QTest::newRow("current") << false << "none" << completed << RadioProbe::Radio::Current
                                 << whole;
        QTest::newRow("version 1.0")
            << true << "none" << completed << RadioProbe::Radio::Version10 << whole;
        QTest::newRow("silent") << false << "silent" << TransferOutcome::NoResponse
                                << RadioProbe::Radio::None << QByteArrayList{wakeUp};
        QTest::newRow("unreadable wake-up answer")
            << false << "noise" << TransferOutcome::NoResponse << RadioProbe::Radio::None
            << QByteArrayList{wakeUp};
        QTest::newRow("short identification")
            << true << "short-ident" << TransferOutcome::Interrupted << RadioProbe::Radio::None
            << QByteArrayList{wakeUp, "02"};
    }

    void probe() {
        QFETCH(bool, version10);
        QFETCH(QString, fault);
        QFETCH(TransferOutcome, outcome);
        QFETCH(RadioProbe::Radio, radio);
        QFETCH(QByteArrayList, sent);
        const auto memory = patternedMemory(5);
        EmulatedRadio emulated(memory, {version10, *RadioFault::parse(fault.toStdString())});
        RadioProbe probe;
        VirtualLink link(probe);
        link.setRadio(emulated);
        link.setLineDelay(true);
        QVERIFY(link.run(1s)); // every port is given up within a second

        QCOMPARE(probe.outcome(), outcome);
        QCOMPARE(probe.radio(), radio);
        QByteArrayList packets;
        for (const auto& packet : link.sent())
            packets << hex(packet.bytes);
        QCOMPARE(packets, sent);
        QVERIFY(!link.portOpen());
        // Nothing read or written: the memory as it was, no session committed,
        // and after "END" the radio is back in normal operation.
        QVERIFY(emulated.memory() == memory);
        QCOMPARE(emulated.blocksWritten(), 0);
        QCOMPARE(emulated.commits(), 0);
        if (outcome == TransferOutcome::Completed)
            QCOMPARE(emulated.mode(), EmulatedRadio::Mode::Idle);
    }
};

QTEST_APPLESS_MAIN(TestRadioProbe)
#include "tst_radio_probe.moc"
