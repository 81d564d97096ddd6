#include "link_test_util.h"
#include "packets.h"
#include "programming_transfer.h"
#include "radio_info_transfer.h"

#include <QtTest>
#include <random>

using namespace zr310;
using namespace zr310::test;
using namespace std::chrono;

Q_DECLARE_METATYPE(zr310::TransferKind)
Q_DECLARE_METATYPE(zr310::TransferOutcome)

namespace {

enum class Fault { Missing, BadLead, Short, Long };

// Answers like the radio, except for packet `index`.
VirtualLink::Responder faultyRadio(EmulatedRadio& radio, int faultIndex, Fault fault) {
    return [&radio, faultIndex, fault](int index, std::span<const std::uint8_t> packet) {
        Bytes reply;
        for (const std::uint8_t byte : packet) {
            const auto part = radio.receive(byte);
            reply.insert(reply.end(), part.begin(), part.end());
        }
        if (index != faultIndex)
            return reply;
        switch (fault) {
        case Fault::Missing:
            return Bytes{};
        case Fault::BadLead:
            if (!reply.empty())
                reply[0] = 0x15;
            return reply;
        case Fault::Short:
            if (!reply.empty())
                reply.pop_back();
            return reply;
        case Fault::Long:
            reply.push_back(0xEE);
            return reply;
        }
        return reply;
    };
}

DateTime fixedClock() {
    return {2008, 3, 7, 9, 5, 3};
}

std::vector<int> expectedAddresses(TransferKind kind) {
    std::vector<int> list;
    switch (kind) {
    case TransferKind::Read:
        return addressRange(0x000, 0x3F8);
    case TransferKind::Write:
        list = addressRange(0x000, 0x0F8);
        list.insert(list.end(), {0x2B0, 0x2B8, 0x2D0, 0x2D8, 0x3C0, 0x3C8});
        return list;
    case TransferKind::EnterTuning:
        list = addressRange(0x100, 0x1A8);
        list.insert(list.end(), {0x2F0, 0x2F8});
        return list;
    case TransferKind::WriteTuning:
        return addressRange(0x100, 0x1A8);
    }
    return list;
}

bool inBlocks(int address, const std::vector<int>& blocks) {
    return std::find(blocks.begin(), blocks.end(), address & ~7) != blocks.end();
}

} // namespace

class TestProgrammingTransfer : public QObject {
    Q_OBJECT

private slots:
    void completeTransfer_data();
    void completeTransfer();
    void pacing_data();
    void pacing();
    void badOrMissingReply_data();
    void badOrMissingReply();
    void version10Write_data();
    void version10Write();
    void writeStampsEveryBlock();
    void randomReplies();
};

void TestProgrammingTransfer::completeTransfer_data() {
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<QByteArray>("closing");
    QTest::addColumn<int>("progressMax");
    QTest::newRow("read") << TransferKind::Read << QByteArray("END") << 127;
    QTest::newRow("write") << TransferKind::Write << QByteArray("END") << 37;
    QTest::newRow("enter tuning") << TransferKind::EnterTuning << QByteArray("\x06QZVTUNE") << 24;
    QTest::newRow("write tuning") << TransferKind::WriteTuning << QByteArray("QZVTUNE") << 22;
}

void TestProgrammingTransfer::completeTransfer() {
    QFETCH(TransferKind, kind);
    QFETCH(QByteArray, closing);
    QFETCH(int, progressMax);

    const auto radioBefore = patternedMemory(1);
    EmulatedRadio radio(radioBefore);
    const RadioImage pcBefore = patternedImage(100);
    RadioImage image = pcBefore;
    LinkFlags flags;
    ProgrammingTransfer transfer(kind, image, flags, fixedClock);
    VirtualLink link(transfer);
    link.setRadio(radio);
    link.setLineDelay(true);
    QVERIFY(link.run());

    QCOMPARE(transfer.outcome(), TransferOutcome::Completed);
    QCOMPARE(transfer.blockCounter(), 200);
    QCOMPARE(transfer.messageId(), 0);
    QCOMPARE(transfer.progressValue(), progressMax);
    QCOMPARE(transfer.progressMaximum(), progressMax);
    QVERIFY(!link.portOpen());
    const auto blocks = expectedAddresses(kind);
    QCOMPARE(blockAddressesSent(link), blocks);

    QByteArray tail;
    const auto& sent = link.sent();
    for (auto it = sent.end() - (kind == TransferKind::EnterTuning ? 2 : 1); it != sent.end(); ++it)
        tail.append(reinterpret_cast<const char*>(it->bytes.data()), it->bytes.size());
    QCOMPARE(tail, closing);

    const bool reads = kind == TransferKind::Read || kind == TransferKind::EnterTuning;
    for (int a = 0; a < 1024; ++a) {
        if (reads) {
            // The last block of a full read is fetched but not kept.
            const bool stored = inBlocks(a, blocks) && a < 0x3F8;
            QCOMPARE(image.atAddress(a), stored ? radioBefore[a] : pcBefore.atAddress(a));
            QCOMPARE(radio.memory()[a], radioBefore[a]);
        } else {
            const bool written = inBlocks(a, blocks);
            QCOMPARE(radio.memory()[a], written ? image.atAddress(a) : radioBefore[a]);
        }
    }
    if (kind == TransferKind::Write) {
        const std::string stamp(reinterpret_cast<const char*>(&radio.memory()[0x3C0]), 14);
        QCOMPARE(stamp, std::string("20080307090503"));
    }
    const bool tuningMode = kind == TransferKind::EnterTuning || kind == TransferKind::WriteTuning;
    QCOMPARE(radio.mode() == EmulatedRadio::Mode::Tuning, tuningMode);
}

void TestProgrammingTransfer::pacing_data() {
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<int>("blockPause");
    QTest::addColumn<int>("closeAfterLastPacket"); // ms from the last packet to the end
    QTest::newRow("read") << TransferKind::Read << 20 << 30 + 20;
    QTest::newRow("write") << TransferKind::Write << 5 << 30 + 20;
    QTest::newRow("enter tuning") << TransferKind::EnterTuning << 20 << 200 + 30 + 300;
    QTest::newRow("write tuning") << TransferKind::WriteTuning << 5 << 50 + 30 + 20;
}

void TestProgrammingTransfer::pacing() {
    QFETCH(TransferKind, kind);
    QFETCH(int, blockPause);
    QFETCH(int, closeAfterLastPacket);

    EmulatedRadio radio(patternedMemory(1));
    RadioImage image;
    LinkFlags flags;
    ProgrammingTransfer transfer(kind, image, flags, fixedClock);
    VirtualLink link(transfer);
    link.setRadio(radio);
    QVERIFY(link.run());

    const int blocks = blockCount(kind);
    std::vector<milliseconds> expected{30ms, 2ms, 1ms, 10ms};
    expected.insert(expected.end(), blocks - 1, milliseconds(blockPause));
    expected.push_back(10ms);
    if (kind == TransferKind::EnterTuning)
        expected.insert(expected.end(), {80ms, 200ms}); // before the command, then the hold
    QCOMPARE(link.sendIntervals(), expected);
    QCOMPARE(*link.finishedAt() - link.sent().back().at, nanoseconds(closeAfterLastPacket * 1ms));
}

void TestProgrammingTransfer::badOrMissingReply_data() {
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<int>("packet"); // index in the exchange, 0 = wake-up
    QTest::addColumn<int>("fault");
    QTest::addColumn<TransferOutcome>("outcome");
    QTest::addColumn<int>("message");
    QTest::addColumn<int>("closesAfter"); // ms from that packet to the end; -1: not checked

    const auto R = TransferKind::Read, W = TransferKind::Write;
    const auto E = TransferKind::EnterTuning, T = TransferKind::WriteTuning;
    const auto none = TransferOutcome::NoResponse, cut = TransferOutcome::Interrupted;
    const auto done = TransferOutcome::Completed;
    const int missing = int(Fault::Missing), bad = int(Fault::BadLead);
    const int shortReply = int(Fault::Short), longReply = int(Fault::Long);

    QTest::newRow("wake-up unanswered") << R << 0 << missing << none << 0 << 300;
    QTest::newRow("wake-up answered wrong") << W << 0 << bad << none << 0 << 300;
    QTest::newRow("ident unanswered") << R << 1 << missing << cut << 1534 << 300;
    QTest::newRow("ident of 7 bytes") << W << 1 << shortReply << cut << 1535 << 300;
    QTest::newRow("ident of 9 bytes") << R << 1 << longReply << cut << 1534 << -1;
    QTest::newRow("confirm unanswered") << E << 2 << missing << cut << 1535 << 300;
    QTest::newRow("confirm answered wrong") << R << 2 << bad << cut << 1534 << 300;
    QTest::newRow("first read block, bad lead") << R << 3 << bad << cut << 1534 << 3;
    QTest::newRow("first read block, unanswered") << R << 3 << missing << cut << 1534 << 300;
    QTest::newRow("read block short") << R << 40 << shortReply << cut << 1534 << 300;
    QTest::newRow("last read block, bad lead") << R << 130 << bad << cut << 1534 << 3;
    QTest::newRow("END answered anyway") << R << 131 << longReply << done << 0 << 50;
    QTest::newRow("write block, bad ACK") << W << 3 << bad << cut << 1535 << 3;
    QTest::newRow("last write block unanswered") << W << 40 << missing << cut << 1535 << 300;
    QTest::newRow("tuning block, bad lead") << E << 10 << bad << cut << 1535 << 3;
    QTest::newRow("tuning confirm unanswered") << E << 27 << missing << cut << 1535 << 300;
    QTest::newRow("tuning confirm wrong") << E << 27 << bad << cut << 1535 << 300;
    QTest::newRow("tuning command unanswered") << E << 28 << missing << done << 0 << 530;
    QTest::newRow("tuning command wrong") << E << 28 << bad << cut << 1535 << 5;
    QTest::newRow("tuning write block, bad ACK") << T << 24 << bad << cut << 1535 << 3;
    QTest::newRow("tuning write command unanswered") << T << 25 << missing << done << 0 << 100;
}

void TestProgrammingTransfer::badOrMissingReply() {
    QFETCH(TransferKind, kind);
    QFETCH(int, packet);
    QFETCH(int, fault);
    QFETCH(TransferOutcome, outcome);
    QFETCH(int, message);
    QFETCH(int, closesAfter);

    EmulatedRadio radio(patternedMemory(3));
    RadioImage image;
    LinkFlags flags;
    ProgrammingTransfer transfer(kind, image, flags, fixedClock);
    VirtualLink link(transfer);
    link.setResponder(faultyRadio(radio, packet, Fault(fault)));
    QVERIFY(link.run());

    QCOMPARE(transfer.outcome(), outcome);
    QCOMPARE(transfer.messageId(), message);
    QCOMPARE(transfer.blockCounter() == 200, outcome == TransferOutcome::Completed);
    QVERIFY(!link.portOpen());
    QVERIFY(int(link.sent().size()) > packet);
    if (outcome != TransferOutcome::Completed && Fault(fault) != Fault::Long)
        QCOMPARE(int(link.sent().size()), packet + 1); // no retries, nothing after the fault
    if (closesAfter >= 0) {
        const auto sentAt = link.sent()[packet].at;
        QCOMPARE(duration_cast<milliseconds>(*link.finishedAt() - sentAt).count(), closesAfter);
    }
}

void TestProgrammingTransfer::version10Write_data() {
    QTest::addColumn<bool>("version10");
    QTest::addColumn<bool>("dontShow");
    QTest::addColumn<bool>("continueBefore");
    QTest::addColumn<QString>("answer"); // what the user does with the warning
    QTest::addColumn<int>("warnings");
    QTest::addColumn<TransferOutcome>("outcome");

    const auto done = TransferOutcome::Completed, declined = TransferOutcome::Declined;
    QTest::newRow("current radio") << false << false << false << "" << 0 << done;
    QTest::newRow("OK") << true << false << false << "ok" << 1 << done;
    QTest::newRow("OK, box ticked") << true << false << false << "ok+tick" << 1 << done;
    QTest::newRow("cancel") << true << false << false << "cancel" << 1 << declined;
    // Closing the warning leaves the check in force: it is asked before every block.
    QTest::newRow("closed, earlier OK") << true << false << true << "close" << 38 << done;
    QTest::newRow("closed, never OK") << true << false << false << "close" << 1 << declined;
    QTest::newRow("don't show, continue") << true << true << true << "" << 0 << done;
    QTest::newRow("don't show, not continue") << true << true << false << "" << 0 << declined;
}

void TestProgrammingTransfer::version10Write() {
    QFETCH(bool, version10);
    QFETCH(bool, dontShow);
    QFETCH(bool, continueBefore);
    QFETCH(QString, answer);
    QFETCH(int, warnings);
    QFETCH(TransferOutcome, outcome);

    const auto radioBefore = patternedMemory(5);
    EmulatedRadio radio(radioBefore, {version10, {}});
    RadioImage image = patternedImage(9);
    const std::uint8_t option = image.atAddress(0x2B0);
    LinkFlags flags;
    flags.version10DontShow = dontShow;
    flags.version10Continue = continueBefore;
    ProgrammingTransfer transfer(TransferKind::Write, image, flags, fixedClock);
    VirtualLink link(transfer);
    link.setRadio(radio);
    link.setWarningHandler([&] {
        if (answer.startsWith("ok")) {
            flags.skipVersion10Check = flags.version10Continue = true;
            flags.version10DontShow = answer.endsWith("tick");
        } else if (answer == "cancel") {
            flags.skipVersion10Check = flags.version10Continue = flags.version10DontShow = false;
        }
    });
    QVERIFY(link.run());

    QCOMPARE(link.warningsShown(), warnings);
    QCOMPARE(transfer.outcome(), outcome);
    QCOMPARE(transfer.messageId(), 0);
    QCOMPARE(flags.radioIsVersion10, version10);
    QVERIFY(!flags.skipVersion10Check); // cleared after a completed write, never set otherwise
    // The option byte is converted at the identification, before the warning.
    const std::uint8_t converted = static_cast<std::uint8_t>((option & 0x78) << 1);
    QCOMPARE(image.atAddress(0x2B0), version10 ? converted : option);
    if (outcome == TransferOutcome::Declined) {
        QCOMPARE(link.sent().size(), std::size_t(3)); // wake-up, identify, confirm only
        QCOMPARE(radio.memory(), radioBefore);
    } else {
        QCOMPARE(radio.memory()[0x2B0], image.atAddress(0x2B0));
        QCOMPARE(radio.blocksWritten(), 38);
    }
    QCOMPARE(flags.version10DontShow, answer == "ok+tick" || dontShow);
}

void TestProgrammingTransfer::writeStampsEveryBlock() {
    EmulatedRadio radio(patternedMemory(2));
    RadioImage image;
    LinkFlags flags;
    int calls = 0;
    auto ticking = [&calls] {
        ++calls;
        return DateTime{2024, 12, 31, 23, 59, calls % 60};
    };
    ProgrammingTransfer transfer(TransferKind::Write, image, flags, ticking);
    VirtualLink link(transfer);
    link.setRadio(radio);
    QVERIFY(link.run());
    QCOMPARE(calls, 38);
    // Blocks 37 (0x3C0) and 38 (0x3C8) carry the stamp of the moment each was built.
    const auto& memory = radio.memory();
    QCOMPARE(std::string(reinterpret_cast<const char*>(&memory[0x3C0]), 8),
             std::string("20241231"));
    QCOMPARE(std::string(reinterpret_cast<const char*>(&memory[0x3C8]), 6), std::string("235938"));
}

void TestProgrammingTransfer::randomReplies() {
    std::mt19937 random(20240601);
    const std::array kinds{TransferKind::Read, TransferKind::Write, TransferKind::EnterTuning,
                           TransferKind::WriteTuning};
    for (int round = 0; round < 500; ++round) {
        const TransferKind kind = kinds[round % 4];
        EmulatedRadio radio(patternedMemory(round), {round % 3 == 0, {}});
        RadioImage image;
        LinkFlags flags;
        flags.version10DontShow = round % 2;
        // Every fifth round runs the radio-information transfer instead.
        std::unique_ptr<LinkEngine> engine;
        if (round % 5 == 4)
            engine = std::make_unique<RadioInfoTransfer>(
                kind == TransferKind::Read ? TransferKind::Read : TransferKind::Write, image,
                flags);
        else
            engine = std::make_unique<ProgrammingTransfer>(kind, image, flags, fixedClock);
        VirtualLink link(*engine);
        const int sanity = int(random() % 8); // 0: all random; else mostly the radio's answers
        link.setResponder([&](int, std::span<const std::uint8_t> packet) {
            Bytes reply;
            for (const std::uint8_t byte : packet) {
                const auto part = radio.receive(byte);
                reply.insert(reply.end(), part.begin(), part.end());
            }
            if (sanity != 0 && random() % 40 != 0)
                return reply;
            Bytes noise(random() % 15);
            for (auto& b : noise)
                b = random() % 4 == 0 ? 0x06 : (random() % 4 == 0 ? 0x57 : random() & 0xFF);
            return noise;
        });
        link.setWarningHandler([&] { flags.version10Continue = random() % 2; });
        QVERIFY2(link.run(seconds(120)), qPrintable(QString("round %1 did not end").arg(round)));
        QVERIFY(engine->outcome() != TransferOutcome::Running);
        QVERIFY(!link.portOpen());
    }
}

QTEST_APPLESS_MAIN(TestProgrammingTransfer)
#include "tst_programming_transfer.moc"
