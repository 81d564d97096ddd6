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

using namespace zr310;
using namespace zr310::test;
using namespace std::chrono;

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

// What a fault makes of the radio's reply.
using Fault = void (*)(Bytes&);
const Fault missing = [](Bytes& reply) { reply.clear(); };
const Fault badLead = [](Bytes& reply) { reply.at(0) = 0x15; };
const Fault shortReply = [](Bytes& reply) { reply.pop_back(); };
const Fault longReply = [](Bytes& reply) { reply.push_back(0xEE); };

// Answers like the radio, except for packet `faultIndex`.
VirtualLink::Responder faultyRadio(EmulatedRadio& radio, int faultIndex, Fault fault) {
    return [&radio, faultIndex, fault](int index, std::span<const std::uint8_t> packet) {
        Bytes reply = radioAnswer(radio, packet);
        if (index == faultIndex)
            fault(reply);
        return reply;
    };
}

} // namespace

class TestBlockTransfer : public QObject {
    Q_OBJECT

private slots:
    // Each engine and kind against the radio: the blocks sent in order (the one
    // fetched but not stored: notKept), the packets after the last block, the
    // send pauses in ms (start, between blocks, after them), the time from the
    // last packet to the end, the window's message and the progress bar.
    void completeTransfer() {
        const auto row = [](Engine engine, TransferKind kind, const std::vector<int>& blocks,
                            int notKept, const QByteArray& closing, const QList<int>& pauses,
                            int closeAfter, int message, int progress) {
            const auto radioBefore = patternedMemory(1);
            // A version-1.0 radio for the information transfer, which does not look.
            EmulatedRadio radio(radioBefore, {engine == Info, {}});
            const RadioImage pcBefore = patternedImage(100);
            RadioImage image = pcBefore;
            LinkFlags flags;
            flags.skipVersion10Check = true;
            int clockReads = 0;
            auto transfer = makeTransfer(engine, kind, image, flags, [&clockReads] {
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
            for (auto it = link.sent().begin() + 3 + qsizetype(blocks.size());
                 it != link.sent().end(); ++it)
                tail.append(reinterpret_cast<const char*>(it->bytes.data()),
                            qsizetype(it->bytes.size()));
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
                const bool listed = std::ranges::count(blocks, a & ~7) && (a & ~7) != notKept;
                if (reads)
                    QCOMPARE(image.atAddress(a),
                             listed ? radioBefore[toIndex(a)] : pcBefore.atAddress(a));
                else if (!stamped || a < 0x3C0 || a >= 0x3CE)
                    QCOMPARE(radio.memory()[toIndex(a)],
                             listed ? pcBefore.atAddress(a) : radioBefore[toIndex(a)]);
            }
        };
        const auto R = TransferKind::Read, W = TransferKind::Write;
        auto tuningRead = addressRange(0x100, 0x1A8);
        tuningRead.insert(tuningRead.end(), {0x2F0, 0x2F8});
        row(Programming, R, addressRange(0x000, 0x3F8), 0x3F8, "END", {30, 20, 10}, 30 + 20, 0,
            127);
        row(Programming, W, writeBlocks(), -1, "END", {30, 5, 10}, 30 + 20, 0, 37);
        row(Programming, TransferKind::EnterTuning, tuningRead, -1, "\x06QZVTUNE",
            {30, 20, 10, 80, 200}, 200 + 30 + 300, 0, 24);
        row(Programming, TransferKind::WriteTuning, addressRange(0x100, 0x1A8), -1, "QZVTUNE",
            {30, 5, 10}, 50 + 30 + 20, 0, 22);
        row(Info, R, addressRange(0x300, 0x3F0), 0x3F0, "END", {10, 20, 10}, 30 + 20 + 100,
            txt::ReadCompleted, 0);
        row(Info, W, addressRange(0x300, 0x3C0), -1, "END", {10, 5, 10}, 30 + 20 + 100,
            txt::WriteCompleted, 0);
    }

    // A fault at one packet (its index in the exchange, 0 = wake-up): the
    // outcome, the message and the ms from that packet to the end (-1: not checked).
    void badOrMissingReply() {
        const auto row = [](Engine engine, TransferKind kind, int packet, Fault fault,
                            TransferOutcome outcome, int message, int closesAfter) {
            EmulatedRadio radio(patternedMemory(3));
            RadioImage image;
            LinkFlags flags;
            auto transfer = makeTransfer(engine, kind, image, flags);
            VirtualLink link(*transfer);
            link.setResponder(faultyRadio(radio, packet, fault));
            QVERIFY(link.run());

            QCOMPARE(transfer->outcome(), outcome);
            QCOMPARE(messageOf(*transfer), message);
            QCOMPARE(transfer->blockCounter() == 200, outcome == TransferOutcome::Completed);
            QVERIFY(!link.portOpen());
            QVERIFY(int(link.sent().size()) > packet);
            if (outcome != TransferOutcome::Completed && fault != longReply)
                QCOMPARE(int(link.sent().size()), packet + 1); // no retries, nothing after it
            if (closesAfter >= 0) {
                const auto sentAt = link.sent()[toIndex(packet)].at;
                QCOMPARE(duration_cast<milliseconds>(*link.finishedAt() - sentAt).count(),
                         closesAfter);
            }
        };
        const Engine P = Programming, I = Info;
        const auto R = TransferKind::Read, W = TransferKind::Write;
        const auto E = TransferKind::EnterTuning, T = TransferKind::WriteTuning;
        const auto none = TransferOutcome::NoResponse, cut = TransferOutcome::Interrupted;
        const auto done = TransferOutcome::Completed;
        row(P, R, 0, missing, none, 0, 300);   // wake-up
        row(P, R, 1, missing, cut, 1534, 300); // identification
        row(P, R, 1, longReply, cut, 1534, -1);
        row(P, E, 2, missing, cut, 1535, 300);     // confirmation
        row(P, R, 40, shortReply, cut, 1534, 300); // read blocks
        row(P, R, 130, badLead, cut, 1534, 3);
        row(P, R, 131, longReply, done, 0, 50); // END answered anyway
        row(P, W, 3, badLead, cut, 1535, 3);    // write blocks
        row(P, E, 27, badLead, cut, 1535, 300); // tuning confirmation
        row(P, E, 28, missing, done, 0, 530);   // tuning command
        row(P, E, 28, badLead, cut, 1535, 5);
        row(P, T, 25, missing, done, 0, 100); // tuning write command
        // The information window shows its completion text after any answered wake-up.
        row(I, W, 0, missing, none, 0, 400);
        row(I, R, 33, badLead, cut, 1530, 103);
        row(I, W, 10, missing, cut, 1531, 400);
    }

    // A write to a version-1.0 radio that does only what the protocol says:
    // the flags before, the answer to the warning and how long it took, what
    // the radio did meanwhile; how often the warning shows, the outcome and
    // the packets on the wire (W: a write block, E: END, S: the three packets
    // that open a session). The first block follows the answer in the same
    // session. Only after a long wait, when that block goes unanswered, does
    // the write say END and start once more, without asking again.
    void version10Write() {
        enum Radio { Waits, GaveUp, GaveUpThenCurrent, GaveUpThenSilent };
        const auto row = [](bool dontShow, bool continueBefore, const QString& answer,
                            milliseconds openFor, Radio behaviour, TransferOutcome outcome,
                            const QString& wire) {
            const auto radioBefore = patternedMemory(5);
            EmulatedRadio radio(radioBefore, {.version10 = true, .strict = true});
            EmulatedRadio current(radioBefore, {.strict = true});
            RadioImage image = patternedImage(9);
            const std::uint8_t option = image.atAddress(0x2B0);
            LinkFlags flags;
            flags.version10DontShow = dontShow;
            flags.version10Continue = continueBefore;
            ProgrammingTransfer transfer(TransferKind::Write, image, flags, fixedClock);
            VirtualLink link(transfer);
            bool gaveUp = false;
            link.setResponder([&](int, std::span<const std::uint8_t> packet) {
                if (!gaveUp)
                    return radioAnswer(radio, packet);
                if (behaviour == GaveUpThenSilent)
                    return Bytes{};
                return radioAnswer(behaviour == GaveUpThenCurrent ? current : radio, packet);
            });
            link.setWarningOpenFor(openFor);
            link.setWarningHandler([&] {
                QVERIFY(link.portOpen());
                if (behaviour != Waits) {
                    radio.lineIdle();
                    gaveUp = true;
                }
                if (answer == "ok")
                    flags.skipVersion10Check = flags.version10Continue = true;
                if (answer == "cancel")
                    flags.skipVersion10Check = flags.version10Continue = false;
            });
            QVERIFY(link.run(minutes(5)));

            QCOMPARE(link.warningsShown(), dontShow ? 0 : 1);
            QCOMPARE(transfer.outcome(), outcome);
            QCOMPARE(transfer.messageId(),
                     outcome == TransferOutcome::Interrupted ? txt::WriteInterrupted : 0);
            QVERIFY(!link.portOpen());
            QCOMPARE(flags.version10DontShow, dontShow);
            // The option byte is converted once, at the first identification.
            QCOMPARE(image.atAddress(0x2B0), static_cast<std::uint8_t>((option & 0x78) << 1));

            QString sent;
            for (std::size_t i = 0; i < link.sent().size(); ++i) {
                const Bytes& bytes = link.sent()[i].bytes;
                const bool opensSession = bytes == Bytes(kWakeUp.begin(), kWakeUp.end());
                sent += opensSession ? "S" : bytes[0] == 'W' ? "W" : bytes[0] == 'E' ? "E" : "";
                if (opensSession)
                    i += 2; // identify and confirm
            }
            sent.replace(QString(38, 'W'), "38W");
            QCOMPARE(sent, wire);
            if (outcome != TransferOutcome::Completed)
                return;
            QCOMPARE(blockAddressesSent(link).size(), std::size_t(wire.startsWith("SW") ? 39 : 38));
            QCOMPARE(radio.commits(), 1);
            QVERIFY(!flags.skipVersion10Check); // the next write asks again
            for (int a : writeBlocks()) {
                for (int i = 0; i < 8; ++i)
                    QCOMPARE(radio.memory()[toIndex(a + i)], image.atAddress(a + i));
            }
        };
        using enum TransferOutcome;
        const milliseconds quick = 200ms, minute = 60s;
        row(false, false, "ok", quick, Waits, Completed, "S38WE");
        row(false, false, "ok", minute, Waits, Completed, "S38WE");
        row(false, true, "close", minute, Waits, Completed, "S38WE"); // an earlier OK holds
        row(false, false, "close", quick, Waits, Declined, "S");
        row(false, false, "cancel", minute, Waits, Declined, "S");
        row(true, false, "", 0ms, Waits, Declined, "S"); // "don't show" ticked, no OK before
        row(true, true, "", 0ms, Waits, Completed, "S38WE");
        row(false, false, "ok", minute, GaveUp, Completed, "SWES38WE");
        row(false, false, "ok", quick, GaveUp, Interrupted, "SW"); // too quick to have given up
        row(false, false, "ok", minute, GaveUpThenCurrent, Interrupted, "SWESE");
        row(false, false, "ok", minute, GaveUpThenSilent, Interrupted, "SWES");
    }

    // Cancelled while packet N is on the line: the packet gets its reply, then
    // END goes out (once the radio is in a session) and nothing more.
    void cancel() {
        const auto row = [](TransferKind kind, int cancelDuring, int packets, bool endSent) {
            EmulatedRadio radio(patternedMemory(5), {.strict = true});
            RadioImage image = patternedImage(9);
            const RadioImage before = image;
            LinkFlags flags;
            ProgrammingTransfer transfer(kind, image, flags, fixedClock);
            VirtualLink link(transfer);
            link.setResponder([&](int index, std::span<const std::uint8_t> packet) {
                if (index == cancelDuring)
                    transfer.requestCancel();
                return radioAnswer(radio, packet);
            });
            QVERIFY(link.run());

            QCOMPARE(transfer.outcome(), TransferOutcome::Cancelled);
            QCOMPARE(transfer.messageId(),
                     kind == TransferKind::Read ? txt::ReadCancelled : txt::WriteCancelled);
            QCOMPARE(int(link.sent().size()), packets);
            QCOMPARE(link.sent().back().bytes == Bytes(kEnd.begin(), kEnd.end()), endSent);
            QVERIFY(!link.portOpen());
            QCOMPARE(radio.mode(), EmulatedRadio::Mode::Idle); // ready for the next session
            if (kind == TransferKind::Write)
                QCOMPARE(radio.blocksWritten(), packets - 4);
            else // the blocks read are kept (the window puts its data back itself)
                QCOMPARE(image.atAddress(0), packets > 4 ? radio.memory()[0] : before.atAddress(0));
        };
        row(TransferKind::Read, 0, 4, true);   // during the wake-up: identify, confirm, END
        row(TransferKind::Read, 40, 42, true); // during a block
        row(TransferKind::Write, 10, 12, true);
    }

    // One exchange per command, with the answers a radio may give (empty:
    // silence): the frame sent and the result.
    void tuningExchange() {
        using R = TuningExchange::Result;
        using C = TuneCommand;
        const auto row = [](C command, int item, const char* reply, const char* frame, R result,
                            int reported = 0) {
            TuningEngine engine;
            engine.frame = {command, std::uint8_t(item), 0x44};
            VirtualLink link(engine);
            const QByteArray answer = QByteArray::fromHex(reply),
                             sentFrame = QByteArray::fromHex(frame);
            link.setResponder([&](int, auto) { return Bytes(answer.begin(), answer.end()); });
            QVERIFY(link.run());

            const auto& sent = link.sent();
            QCOMPARE(sent.empty() ? Bytes{} : sent[0].bytes,
                     Bytes(sentFrame.begin(), sentFrame.end()));
            QCOMPARE(engine.exchange.result(), result);
            QCOMPARE(int(engine.exchange.reportedValue()), reported);
            // Sent after 20 ms; the answer ends it at once, the 300 ms watchdog otherwise.
            const int endMs = sent.empty() ? 0 : result == R::NoAnswer ? 320 : 20;
            QCOMPARE(duration_cast<milliseconds>(*link.finishedAt()).count(), endMs);
            // The port stays open for the next exchange until leaving was acknowledged.
            const bool left = command == C::Leave && engine.exchange.answered();
            QCOMPARE(link.portOpen(), !sent.empty() && !left);
        };
        row(C::Enter, 0x33, "4720", "330000", R::ValueReported, 0x20);
        row(C::Enter, 0x33, "47", "330000", R::NoAnswer);   // the value byte missing
        row(C::Value, 0x77, "4720", "514401", R::NoAnswer); // 'G' is no answer to a value
        row(C::Value, 0xBB, "06", "", R::Invalid);          // no item: nothing sent
        row(C::Leave, 0xBB, "06", "06", R::Acknowledged);
        row(C::Leave, 0xBB, "", "06", R::NoAnswer);
    }
};

QTEST_APPLESS_MAIN(TestBlockTransfer)
#include "tst_block_transfer.moc"
