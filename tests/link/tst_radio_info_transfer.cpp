#include "link_test_util.h"
#include "radio_info_transfer.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;
using namespace std::chrono;

Q_DECLARE_METATYPE(zr310::TransferKind)
Q_DECLARE_METATYPE(zr310::TransferOutcome)

class TestRadioInfoTransfer : public QObject {
    Q_OBJECT

private slots:
    void completeTransfer_data();
    void completeTransfer();
    void stops_data();
    void stops();
    void tuningKindsRefused();
};

void TestRadioInfoTransfer::completeTransfer_data() {
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<int>("lastBlock");
    QTest::newRow("read") << TransferKind::Read << 0x3F0;
    QTest::newRow("write") << TransferKind::Write << 0x3C0;
}

void TestRadioInfoTransfer::completeTransfer() {
    QFETCH(TransferKind, kind);
    QFETCH(int, lastBlock);

    const auto radioBefore = patternedMemory(11);
    EmulatedRadio radio(radioBefore, {true, {}}); // the version is not looked at here
    const RadioImage pcBefore = patternedImage(77);
    RadioImage image = pcBefore;
    LinkFlags flags;
    flags.skipVersion10Check = true;
    RadioInfoTransfer transfer(kind, image, flags);
    VirtualLink link(transfer);
    link.setRadio(radio);
    QVERIFY(link.run());

    QCOMPARE(transfer.outcome(), TransferOutcome::Completed);
    QCOMPARE(transfer.windowMessageId(), kind == TransferKind::Read ? 1530 : 1531);
    QCOMPARE(blockAddressesSent(link), addressRange(0x300, lastBlock));
    QCOMPARE(link.sendIntervals().front(), 10ms);
    QVERIFY(!flags.radioIsVersion10);
    QCOMPARE(flags.skipVersion10Check, kind == TransferKind::Read);
    // The result is given 100 ms after the watchdog closed the port.
    QCOMPARE(*link.finishedAt() - link.sent().back().at, nanoseconds(30ms + 20ms + 100ms));
    for (int a = 0; a < 1024; ++a) {
        if (kind == TransferKind::Read) {
            const bool stored = a >= 0x300 && a < 0x3F0; // 0x3F0.. fetched, not kept
            QCOMPARE(image.atAddress(a), stored ? radioBefore[a] : pcBefore.atAddress(a));
        } else {
            const bool written = a >= 0x300 && a < 0x3C8; // never the radio ID
            QCOMPARE(radio.memory()[a], written ? pcBefore.atAddress(a) : radioBefore[a]);
        }
    }
}

void TestRadioInfoTransfer::stops_data() {
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<int>("silentFrom"); // packet index from which the radio is silent
    QTest::addColumn<TransferOutcome>("outcome");
    QTest::addColumn<int>("windowMessage");
    QTest::newRow("read, no response")
        << TransferKind::Read << 0 << TransferOutcome::NoResponse << 0;
    QTest::newRow("write, no response")
        << TransferKind::Write << 0 << TransferOutcome::NoResponse << 0;
    QTest::newRow("read stops after ident")
        << TransferKind::Read << 2 << TransferOutcome::Interrupted << 1530;
    QTest::newRow("write stops in blocks")
        << TransferKind::Write << 10 << TransferOutcome::Interrupted << 1531;
}

void TestRadioInfoTransfer::stops() {
    QFETCH(TransferKind, kind);
    QFETCH(int, silentFrom);
    QFETCH(TransferOutcome, outcome);
    QFETCH(int, windowMessage);

    EmulatedRadio radio(patternedMemory(1));
    RadioImage image;
    LinkFlags flags;
    RadioInfoTransfer transfer(kind, image, flags);
    VirtualLink link(transfer);
    link.setResponder([&](int index, std::span<const std::uint8_t> packet) {
        Bytes reply;
        for (const std::uint8_t byte : packet) {
            const auto part = radio.receive(byte);
            reply.insert(reply.end(), part.begin(), part.end());
        }
        return index >= silentFrom ? Bytes{} : reply;
    });
    QVERIFY(link.run());
    QCOMPARE(transfer.outcome(), outcome);
    QCOMPARE(transfer.windowMessageId(), windowMessage);
    QCOMPARE(int(link.sent().size()), silentFrom + 1);
    QVERIFY(!link.portOpen());
}

void TestRadioInfoTransfer::tuningKindsRefused() {
    RadioImage image;
    LinkFlags flags;
    QVERIFY_THROWS_EXCEPTION(std::invalid_argument,
                             RadioInfoTransfer(TransferKind::EnterTuning, image, flags));
}

QTEST_APPLESS_MAIN(TestRadioInfoTransfer)
#include "tst_radio_info_transfer.moc"
