// Both transfer engines on a virtual line against the emulated radio: what
// is sent and when, what ends up stored, and how each bad or missing reply
// ends the exchange. Then one tuning exchange per command, with the answers
// a radio may give.

#include "link_test_util.h"
#include "packets.h"
#include "programming_transfer.h"
#include "radio_info_transfer.h"
#include "tuning_exchange.h"

#include <QtTest>
#include <random>

using namespace zr310;
using namespace zr310::test;
using namespace std::chrono;

Q_DECLARE_METATYPE(zr310::TransferKind)
Q_DECLARE_METATYPE(zr310::TransferOutcome)
Q_DECLARE_METATYPE(std::vector<int>)
Q_DECLARE_METATYPE(zr310::TuneCommand)
Q_DECLARE_METATYPE(zr310::TuningExchange::Result)

enum class Fault { Missing, BadLead, Short, Long };
Q_DECLARE_METATYPE(Fault)

namespace {

enum Engine { Programming, Info };

DateTime fixedClock() {
    return {2008, 3, 7, 9, 5, 3};
}

std::unique_ptr<BlockTransfer> makeTransfer(Engine engine, TransferKind kind, RadioImage& image,
                                            LinkFlags& flags,
                                            ProgrammingTransfer::Clock clock = fixedClock) {
    if (engine == Info)
        return std::make_unique<RadioInfoTransfer>(kind, image, flags);
    return std::make_unique<ProgrammingTransfer>(kind, image, flags, std::move(clock));
}

// The text the transfer's window shows.
int messageOf(const BlockTransfer& transfer) {
    if (const auto* info = dynamic_cast<const RadioInfoTransfer*>(&transfer))
        return info->windowMessageId();
    return static_cast<const ProgrammingTransfer&>(transfer).messageId();
}

// Radio addresses of the block packets ("R" or "W" with length 8) sent.
std::vector<int> blockAddressesSent(const VirtualLink& link) {
    std::vector<int> addresses;
    for (const auto& s : link.sent()) {
        if ((s.bytes.size() == 4 && s.bytes[0] == 'R') ||
            (s.bytes.size() == 12 && s.bytes[0] == 'W'))
            addresses.push_back(s.bytes[1] * 256 + s.bytes[2]);
    }
    return addresses;
}

// Answers like the radio, except for packet `faultIndex`.
VirtualLink::Responder faultyRadio(EmulatedRadio& radio, int faultIndex, Fault fault) {
    return [&radio, faultIndex, fault](int index, std::span<const std::uint8_t> packet) {
        Bytes reply = radioAnswer(radio, packet);
        if (index != faultIndex)
            return reply;
        switch (fault) {
        case Fault::Missing:
            return Bytes{};
        case Fault::BadLead:
            reply.at(0) = 0x15;
            break;
        case Fault::Short:
            reply.pop_back();
            break;
        case Fault::Long:
            reply.push_back(0xEE);
            break;
        }
        return reply;
    };
}

} // namespace

class TestBlockTransfer : public QObject {
    Q_OBJECT

private slots:
    void completeTransfer_data();
    void completeTransfer();
    void badOrMissingReply_data();
    void badOrMissingReply();
    void version10Write_data();
    void version10Write();
    void version10SlowAnswer();
    void randomReplies();
    void tuningExchange_data();
    void tuningExchange();
};

void TestBlockTransfer::completeTransfer_data() {
    QTest::addColumn<int>("engine");
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<std::vector<int>>("blocks"); // in the order sent
    QTest::addColumn<int>("notKept");             // the block fetched but not stored; -1 none
    QTest::addColumn<QByteArray>("closing");      // the packets after the last block
    QTest::addColumn<QList<int>>("pauses");       // ms: start, between blocks, after them
    QTest::addColumn<int>("closeAfter");          // ms from the last packet to the end
    QTest::addColumn<int>("message");
    QTest::addColumn<int>("progress");

    const auto R = TransferKind::Read, W = TransferKind::Write;
    const auto E = TransferKind::EnterTuning, T = TransferKind::WriteTuning;
    auto tuningRead = addressRange(0x100, 0x1A8);
    tuningRead.insert(tuningRead.end(), {0x2F0, 0x2F8});
    QTest::newRow("read") << int(Programming) << R << addressRange(0x000, 0x3F8) << 0x3F8
                          << QByteArray("END") << QList<int>{30, 20, 10} << 30 + 20 << 0 << 127;
    QTest::newRow("write") << int(Programming) << W << writeBlocks() << -1 << QByteArray("END")
                           << QList<int>{30, 5, 10} << 30 + 20 << 0 << 37;
    QTest::newRow("enter tuning") << int(Programming) << E << tuningRead << -1
                                  << QByteArray("\x06QZVTUNE") << QList<int>{30, 20, 10, 80, 200}
                                  << 200 + 30 + 300 << 0 << 24;
    QTest::newRow("write tuning") << int(Programming) << T << addressRange(0x100, 0x1A8) << -1
                                  << QByteArray("QZVTUNE") << QList<int>{30, 5, 10} << 50 + 30 + 20
                                  << 0 << 22;
    QTest::newRow("info read") << int(Info) << R << addressRange(0x300, 0x3F0) << 0x3F0
                               << QByteArray("END") << QList<int>{10, 20, 10} << 30 + 20 + 100
                               << kMsgReadCompleted << 0;
    QTest::newRow("info write") << int(Info) << W << addressRange(0x300, 0x3C0) << -1
                                << QByteArray("END") << QList<int>{10, 5, 10} << 30 + 20 + 100
                                << kMsgWriteCompleted << 0;
}

void TestBlockTransfer::completeTransfer() {
    QFETCH(int, engine);
    QFETCH(TransferKind, kind);
    QFETCH(std::vector<int>, blocks);
    QFETCH(int, notKept);
    QFETCH(QByteArray, closing);
    QFETCH(QList<int>, pauses);
    QFETCH(int, closeAfter);
    QFETCH(int, message);
    QFETCH(int, progress);

    const auto radioBefore = patternedMemory(1);
    // A version-1.0 radio for the information transfer, which does not look.
    EmulatedRadio radio(radioBefore, {engine == Info, {}});
    const RadioImage pcBefore = patternedImage(100);
    RadioImage image = pcBefore;
    LinkFlags flags;
    flags.skipVersion10Check = true;
    int clockReads = 0;
    auto transfer = makeTransfer(Engine(engine), kind, image, flags, [&clockReads] {
        ++clockReads;
        return DateTime{2008, 3, 7, 9, 5, clockReads};
    });
    VirtualLink link(*transfer);
    link.setRadio(radio);
    link.setLineDelay(true);
    QVERIFY(link.run());

    QCOMPARE(transfer->outcome(), TransferOutcome::Completed);
    QCOMPARE(transfer->blockCounter(), 200);
    QCOMPARE(messageOf(*transfer), message);
    QCOMPARE(transfer->progressValue(), progress);
    QVERIFY(!flags.radioIsVersion10);
    QCOMPARE(flags.skipVersion10Check, kind != TransferKind::Write); // a write asks again
    QVERIFY(!link.portOpen());

    QCOMPARE(blockAddressesSent(link), blocks);
    QByteArray tail;
    for (auto it = link.sent().begin() + 3 + qsizetype(blocks.size()); it != link.sent().end();
         ++it)
        tail.append(reinterpret_cast<const char*>(it->bytes.data()), qsizetype(it->bytes.size()));
    QCOMPARE(tail, closing);
    std::vector<milliseconds> intervals{milliseconds(pauses[0]), 2ms, 1ms, 10ms};
    intervals.insert(intervals.end(), blocks.size() - 1, milliseconds(pauses[1]));
    for (int i = 2; i < pauses.size(); ++i)
        intervals.push_back(milliseconds(pauses[i]));
    QCOMPARE(link.sendIntervals(), intervals);
    QCOMPARE(*link.finishedAt() - link.sent().back().at, nanoseconds(closeAfter * 1ms));

    // Every write block is stamped as it is built: the last one at the 38th reading.
    const bool stamped = engine == Programming && kind == TransferKind::Write;
    QCOMPARE(clockReads, stamped ? 38 : 0);
    if (stamped) {
        const std::string stamp(reinterpret_cast<const char*>(&radio.memory()[0x3C0]), 14);
        QCOMPARE(stamp, std::string("20080307090538"));
    }
    const bool reads = kind == TransferKind::Read || kind == TransferKind::EnterTuning;
    for (int a = 0; a < 1024; ++a) {
        const bool listed = inBlocks(a, blocks) && (a & ~7) != notKept;
        if (reads)
            QCOMPARE(image.atAddress(a), listed ? radioBefore[a] : pcBefore.atAddress(a));
        else if (!stamped || a < 0x3C0 || a >= 0x3CE)
            QCOMPARE(radio.memory()[a], listed ? pcBefore.atAddress(a) : radioBefore[a]);
    }
}

void TestBlockTransfer::badOrMissingReply_data() {
    QTest::addColumn<int>("engine");
    QTest::addColumn<TransferKind>("kind");
    QTest::addColumn<int>("packet"); // index in the exchange, 0 = wake-up
    QTest::addColumn<Fault>("fault");
    QTest::addColumn<TransferOutcome>("outcome");
    QTest::addColumn<int>("message");
    QTest::addColumn<int>("closesAfter"); // ms from that packet to the end; -1: not checked

    const int P = Programming, I = Info;
    const auto R = TransferKind::Read, W = TransferKind::Write;
    const auto E = TransferKind::EnterTuning, T = TransferKind::WriteTuning;
    const auto none = TransferOutcome::NoResponse, cut = TransferOutcome::Interrupted;
    const auto done = TransferOutcome::Completed;
    const auto missing = Fault::Missing, bad = Fault::BadLead;
    const auto shortReply = Fault::Short, longReply = Fault::Long;

    QTest::newRow("wake-up unanswered") << P << R << 0 << missing << none << 0 << 300;
    QTest::newRow("wake-up answered wrong") << P << W << 0 << bad << none << 0 << 300;
    QTest::newRow("ident unanswered") << P << R << 1 << missing << cut << 1534 << 300;
    QTest::newRow("ident of 7 bytes") << P << W << 1 << shortReply << cut << 1535 << 300;
    QTest::newRow("ident of 9 bytes") << P << R << 1 << longReply << cut << 1534 << -1;
    QTest::newRow("confirm unanswered") << P << E << 2 << missing << cut << 1535 << 300;
    QTest::newRow("confirm answered wrong") << P << R << 2 << bad << cut << 1534 << 300;
    QTest::newRow("first read block, bad lead") << P << R << 3 << bad << cut << 1534 << 3;
    QTest::newRow("read block short") << P << R << 40 << shortReply << cut << 1534 << 300;
    QTest::newRow("last read block, bad lead") << P << R << 130 << bad << cut << 1534 << 3;
    QTest::newRow("END answered anyway") << P << R << 131 << longReply << done << 0 << 50;
    QTest::newRow("write block, bad ACK") << P << W << 3 << bad << cut << 1535 << 3;
    QTest::newRow("last write block unanswered") << P << W << 40 << missing << cut << 1535 << 300;
    QTest::newRow("tuning confirm unanswered") << P << E << 27 << missing << cut << 1535 << 300;
    QTest::newRow("tuning confirm wrong") << P << E << 27 << bad << cut << 1535 << 300;
    QTest::newRow("tuning command unanswered") << P << E << 28 << missing << done << 0 << 530;
    QTest::newRow("tuning command wrong") << P << E << 28 << bad << cut << 1535 << 5;
    QTest::newRow("tuning write block, bad ACK") << P << T << 24 << bad << cut << 1535 << 3;
    QTest::newRow("tuning write command unanswered") << P << T << 25 << missing << done << 0 << 100;
    // The information window shows its completion text after any answered wake-up.
    QTest::newRow("info, wake-up unanswered") << I << W << 0 << missing << none << 0 << 400;
    QTest::newRow("info, last block bad lead") << I << R << 33 << bad << cut << 1530 << 103;
    QTest::newRow("info, write block unanswered") << I << W << 10 << missing << cut << 1531 << 400;
}

void TestBlockTransfer::badOrMissingReply() {
    QFETCH(int, engine);
    QFETCH(TransferKind, kind);
    QFETCH(int, packet);
    QFETCH(Fault, fault);
    QFETCH(TransferOutcome, outcome);
    QFETCH(int, message);
    QFETCH(int, closesAfter);

    EmulatedRadio radio(patternedMemory(3));
    RadioImage image;
    LinkFlags flags;
    auto transfer = makeTransfer(Engine(engine), kind, image, flags);
    VirtualLink link(*transfer);
    link.setResponder(faultyRadio(radio, packet, fault));
    QVERIFY(link.run());

    QCOMPARE(transfer->outcome(), outcome);
    QCOMPARE(messageOf(*transfer), message);
    QCOMPARE(transfer->blockCounter() == 200, outcome == TransferOutcome::Completed);
    QVERIFY(!link.portOpen());
    QVERIFY(int(link.sent().size()) > packet);
    if (outcome != TransferOutcome::Completed && fault != Fault::Long)
        QCOMPARE(int(link.sent().size()), packet + 1); // no retries, nothing after the fault
    if (closesAfter >= 0) {
        const auto sentAt = link.sent()[packet].at;
        QCOMPARE(duration_cast<milliseconds>(*link.finishedAt() - sentAt).count(), closesAfter);
    }
}

void TestBlockTransfer::version10Write_data() {
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
    // Closing the warning leaves the flags as they were: an earlier OK goes on,
    // and the answer holds for the rest of the write.
    QTest::newRow("closed, earlier OK") << true << false << true << "close" << 1 << done;
    QTest::newRow("closed, never OK") << true << false << false << "close" << 1 << declined;
    QTest::newRow("don't show, continue") << true << true << true << "" << 0 << done;
    QTest::newRow("don't show, not continue") << true << true << false << "" << 0 << declined;
}

void TestBlockTransfer::version10Write() {
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
    QCOMPARE(flags.version10DontShow, answer == "ok+tick" || dontShow);
    // The option byte is converted at the identification, before the warning.
    const std::uint8_t converted = static_cast<std::uint8_t>((option & 0x78) << 1);
    QCOMPARE(image.atAddress(0x2B0), version10 ? converted : option);
    if (outcome == TransferOutcome::Declined) {
        QCOMPARE(link.sent().size(), std::size_t(3)); // wake-up, identify, confirm only
        QCOMPARE(radio.memory(), radioBefore);
    } else {
        QCOMPARE(radio.memory()[0x2B0], image.atAddress(0x2B0));
        QCOMPARE(radio.blocksWritten(), 38);
        QCOMPARE(blockAddressesSent(link), writeBlocks());
        // After a warning the exchange started again from the wake-up.
        const Bytes wakeUp(kWakeUp.begin(), kWakeUp.end());
        const auto wakeUps = std::count_if(link.sent().begin(), link.sent().end(),
                                           [&](const auto& s) { return s.bytes == wakeUp; });
        QCOMPARE(int(wakeUps), warnings > 0 ? 2 : 1);
    }
}

// The warning answered after the radio dropped the half-finished session (as
// it does after 2 s of silence): the write starts again from the wake-up, on
// the port opened again, is not asked again and completes.
void TestBlockTransfer::version10SlowAnswer() {
    const auto radioBefore = patternedMemory(5);
    EmulatedRadio radio(radioBefore, {true, {}});
    RadioImage image = patternedImage(9);
    const std::uint8_t option = image.atAddress(0x2B0);
    LinkFlags flags;
    ProgrammingTransfer transfer(TransferKind::Write, image, flags, fixedClock);
    VirtualLink link(transfer);
    link.setRadio(radio);
    link.setWarningHandler([&] {
        radio.lineIdle(); // the session is gone
        QVERIFY(link.portOpen());
        flags.skipVersion10Check = flags.version10Continue = true;
    });
    QVERIFY(link.run());

    QCOMPARE(link.warningsShown(), 1);
    QCOMPARE(transfer.outcome(), TransferOutcome::Completed);
    QCOMPARE(transfer.messageId(), 0);
    QVERIFY(!flags.skipVersion10Check);
    QVERIFY(!link.portOpen());
    // wake-up, identify, confirm; the warning; again wake-up, identify,
    // confirm, then the 38 blocks and END.
    const auto& sent = link.sent();
    QCOMPARE(int(sent.size()), 3 + 3 + 38 + 1);
    const Bytes wakeUp(kWakeUp.begin(), kWakeUp.end());
    QCOMPARE(sent[0].bytes, wakeUp);
    QCOMPARE(sent[3].bytes, wakeUp);
    QCOMPARE(sent[4].bytes, Bytes{kStx});
    QCOMPARE(sent[5].bytes, Bytes{kAck});
    // The port is closed for 30 ms, then the start delay of a new transfer.
    QVERIFY(sent[3].at - sent[2].at >= milliseconds(60));
    QCOMPARE(blockAddressesSent(link), writeBlocks());
    QCOMPARE(radio.blocksWritten(), 38);
    QCOMPARE(radio.commits(), 1);
    // The option byte is converted once, though the radio identified twice.
    const std::uint8_t converted = static_cast<std::uint8_t>((option & 0x78) << 1);
    QCOMPARE(image.atAddress(0x2B0), converted);
    QCOMPARE(radio.memory()[0x2B0], converted);
    for (int a = 0; a < 0x100; ++a)
        QCOMPARE(radio.memory()[a], image.atAddress(a));
}

// Whatever the radio answers, every transfer ends with the port closed.
void TestBlockTransfer::randomReplies() {
    std::mt19937 random(20240601);
    for (int round = 0; round < 200; ++round) {
        const auto kind = TransferKind(round % 4);
        // Every fifth round runs the radio-information transfer instead.
        const bool info = round % 5 == 4;
        EmulatedRadio radio(patternedMemory(round), {round % 3 == 0, {}});
        RadioImage image;
        LinkFlags flags;
        flags.version10DontShow = round % 2;
        auto transfer = makeTransfer(
            info ? Info : Programming,
            info && kind != TransferKind::Read ? TransferKind::Write : kind, image, flags);
        VirtualLink link(*transfer);
        const int sanity = int(random() % 8); // 0: all random; else mostly the radio's answers
        link.setResponder([&](int, std::span<const std::uint8_t> packet) {
            Bytes reply = radioAnswer(radio, packet);
            if (sanity != 0 && random() % 40 != 0)
                return reply;
            Bytes noise(random() % 15);
            for (auto& b : noise)
                b = random() % 4 == 0 ? 0x06 : (random() % 4 == 0 ? 0x57 : random() & 0xFF);
            return noise;
        });
        link.setWarningHandler([&] { flags.version10Continue = random() % 2; });
        QVERIFY2(link.run(seconds(120)), qPrintable(QString("round %1 did not end").arg(round)));
        QVERIFY(transfer->outcome() != TransferOutcome::Running);
        QVERIFY(!link.portOpen());
    }
}

void TestBlockTransfer::tuningExchange_data() {
    QTest::addColumn<TuneCommand>("command");
    QTest::addColumn<int>("item");
    QTest::addColumn<QByteArray>("reply"); // empty: the radio stays silent
    QTest::addColumn<QByteArray>("frame"); // what was sent
    QTest::addColumn<TuningExchange::Result>("result");
    QTest::addColumn<int>("reported");
    using R = TuningExchange::Result;
    using C = TuneCommand;
    const auto row = [](const char* name, C command, int item, const char* reply, const char* frame,
                        R result, int reported = 0) {
        QTest::newRow(name) << command << item << QByteArray::fromHex(reply)
                            << QByteArray::fromHex(frame) << result << reported;
    };
    row("enter", C::Enter, 0x33, "4720", "330000", R::ValueReported, 0x20);
    row("enter, refused", C::Enter, 0x22, "62", "220000", R::Refused);
    row("enter, silence", C::Enter, 0x33, "", "330000", R::NoAnswer);
    row("enter, ACK is no answer", C::Enter, 0x33, "06", "330000", R::NoAnswer);
    row("enter, value byte missing", C::Enter, 0x33, "47", "330000", R::NoAnswer);
    row("value", C::Value, 0x55, "06", "6d4401", R::Acknowledged);
    row("value, 'G' is no answer", C::Value, 0x77, "4720", "514401", R::NoAnswer);
    row("value of no item: nothing sent", C::Value, 0xBB, "06", "", R::Invalid);
    row("confirm", C::Confirm, 0x99, "06", "444402", R::Acknowledged);
    row("cancel", C::Cancel, 0x33, "06", "330003", R::Acknowledged);
    row("cancel switching items", C::Cancel, 0x55, "4730", "550003", R::ValueReported, 0x30);
    row("cancel, refused", C::Cancel, 0x55, "62", "550003", R::Refused);
    row("leave", C::Leave, 0xBB, "06", "06", R::Acknowledged);
    row("leave, silence", C::Leave, 0xBB, "", "06", R::NoAnswer);
}

void TestBlockTransfer::tuningExchange() {
    QFETCH(TuneCommand, command);
    QFETCH(int, item);
    QFETCH(QByteArray, reply);
    QFETCH(QByteArray, frame);
    QFETCH(TuningExchange::Result, result);
    QFETCH(int, reported);
    TuningEngine engine;
    engine.frame = {command, std::uint8_t(item), 0x44};
    VirtualLink link(engine);
    link.setResponder([&](int, auto) { return Bytes(reply.begin(), reply.end()); });
    QVERIFY(link.run());

    const auto& sent = link.sent();
    QCOMPARE(sent.empty() ? Bytes{} : sent[0].bytes, Bytes(frame.begin(), frame.end()));
    QCOMPARE(engine.exchange.result(), result);
    QCOMPARE(int(engine.exchange.reportedValue()), reported);
    // Sent after 20 ms; the answer ends it at once, the 300 ms watchdog otherwise.
    const int endMs = sent.empty() ? 0 : result == TuningExchange::Result::NoAnswer ? 320 : 20;
    QCOMPARE(duration_cast<milliseconds>(*link.finishedAt()).count(), endMs);
    // The port stays open for the next exchange until leaving was acknowledged.
    const bool left = command == TuneCommand::Leave && engine.exchange.answered();
    QCOMPARE(link.portOpen(), !sent.empty() && !left);
}

QTEST_APPLESS_MAIN(TestBlockTransfer)
#include "tst_block_transfer.moc"
