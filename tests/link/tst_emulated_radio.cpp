#include "line_pacer.h"
#include "link_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

const QByteArray kWake("\x02PROGRAM", 8);
const QByteArray kOpen = kWake + QByteArray("\x02\x06", 2); // wake-up, identify, confirm

} // namespace

class TestEmulatedRadio : public QObject {
    Q_OBJECT

private slots:
    // A fault name zr310-sim does not know is refused, not taken as no fault.
    void unknownFaultNames() {
        for (const char* bad :
             {"", "drop", "drop:0", "bad-lead:x", "drop:3x", "loud:3", "drop-after"})
            QVERIFY2(!RadioFault::parse(bad), bad);
    }

    // What the radio answers to a whole conversation, forgiving or strict
    // ("strict"), with a fault. Plain reads and writes are checked byte for
    // byte through the transfer engines.
    void answers() {
        const auto row = [](const char* fault, const QByteArray& sent, const QByteArray& hex) {
            const bool strict = QByteArray(fault) == "strict";
            EmulatedRadio radio(
                patternedMemory(0),
                {.fault = *RadioFault::parse(strict ? "none" : fault), .strict = strict});
            const Bytes answer =
                radioAnswer(radio, {reinterpret_cast<const std::uint8_t*>(sent.data()),
                                    std::size_t(sent.size())});
            QCOMPARE(
                QByteArray(reinterpret_cast<const char*>(answer.data()), qsizetype(answer.size()))
                    .toHex(),
                hex);
        };
        const QByteArray write2 = QByteArray("W\x00\x00\x08", 4) + QByteArray(8, 'a') +
                                  QByteArray("W\x00\x08\x08", 4) + QByteArray(8, 'b');
        const QByteArray ident = "5a52333130000200";
        const QByteArray opened = "06" + ident + "06";
        row("short-ident", kOpen, "06" + ident.left(14) + "06");
        row("bad-lead:2", kOpen + write2, opened + "0615");
        row("noise:2", kOpen + write2, opened + "06000006");
        row("none", QByteArray("xyz\x06R") + kWake, "06"); // garbage before the wake-up
        row("none", kOpen + "END" + write2, opened);       // END closes the session
        // A new wake-up starts over, also in the middle of a write or in tuning mode.
        row("none", kOpen + write2 + kWake + "\x02", opened + "0606" + "06" + ident);
        row("none", kOpen + "QZVTUNE" + kWake + "\x02", opened + "06" + "06" + ident);
        // A strict radio hears a wake-up only between sessions: after END, or
        // after leaving tuning mode; a session answers only its own packets.
        row("strict", kOpen + write2 + kWake + "\x02" + "END" + kWake, opened + "0606" + "06");
        row("strict", kOpen + "QZVTUNE\x06" + kWake + "\x02", opened + "06" + "06" + "06" + ident);
        row("strict", kWake + "END\x02\x06", "06" + ident + "06");
        // Tuning mode (stored: 0x2F1 = 0x97, 0x2F2 = 0x9e): 'G' + value, 0x06, or 'b'.
        const QByteArray tune = kOpen + "QZVTUNE", tuned = opened + "06";
        const QByteArray enter33("\x33\x00\x00", 3), cancel33("\x33\x00\x03", 3),
            cancel55("\x55\x00\x03", 3), try44("M\x44\x01", 3), try10("m\x10\x01", 3);
        // A cancel with another item switches to it.
        row("none", tune + enter33 + try44 + cancel55 + try10 + try44,
            tuned + "4797" + "06479e" + "0662");
        row("none", tune + enter33 + cancel33 + try44, tuned + "4797" + "06" + "62");
        row("none", tune + cancel55 + try10, tuned + "06" + "62"); // a cancel with no item
        row("none", tune + QByteArray("\x22\x00\x00\x06", 4) + enter33, tuned + "62" + "06");
    }

    // 11 bits a byte at 9600 baud; a reply byte is due when its stop bits are through.
    void pacing() {
        QCOMPARE(
            std::chrono::duration_cast<std::chrono::microseconds>(LinePacer::kByteTime).count(),
            1145);
        const auto t0 = LinePacer::Clock::now();
        LinePacer pacer;
        pacer.queue(Bytes(12, 0x57), t0);
        QCOMPARE(pacer.takeDue(t0 + 2 * LinePacer::kByteTime - std::chrono::nanoseconds(1)).size(),
                 std::size_t(1));
        QCOMPARE(pacer.takeDue(t0 + 12 * LinePacer::kByteTime).size(), std::size_t(11));
    }
};

QTEST_APPLESS_MAIN(TestEmulatedRadio)
#include "tst_emulated_radio.moc"
