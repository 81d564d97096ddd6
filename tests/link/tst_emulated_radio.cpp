#include "emulated_radio.h"
#include "line_pacer.h"
#include "link_test_util.h"
#include "packets.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

Bytes feed(EmulatedRadio& radio, const QByteArray& bytes) {
    Bytes reply;
    for (const char c : bytes) {
        const auto part = radio.receive(static_cast<std::uint8_t>(c));
        reply.insert(reply.end(), part.begin(), part.end());
    }
    return reply;
}

QByteArray hex(const Bytes& bytes) {
    return QByteArray(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size())).toHex();
}

const QByteArray kWake("\x02PROGRAM", 8);
const QByteArray kOpen = kWake + QByteArray("\x02\x06", 2); // wake-up, identify, confirm

} // namespace

class TestEmulatedRadio : public QObject {
    Q_OBJECT

private slots:
    void faultNames_data();
    void faultNames();
    void answers_data();
    void answers();
    void newWakeUpRestartsSession();
    void lineIdleEndsHalfDoneSession();
    void pacing();
};

void TestEmulatedRadio::faultNames_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    for (const char* ok : {"silent", "short-ident", "noise", "noise:4", "bad-lead:1", "drop:128"})
        QTest::newRow(ok) << QString(ok) << true;
    for (const char* bad :
         {"", "drop", "drop:", "drop:0", "drop:-2", "bad-lead:x", "loud", "drop:3x"})
        QTest::newRow(bad[0] ? bad : "empty") << QString(bad) << false;
}

void TestEmulatedRadio::faultNames() {
    QFETCH(QString, text);
    QFETCH(bool, valid);
    const auto fault = RadioFault::parse(text.toStdString());
    QCOMPARE(fault.has_value(), valid);
    if (fault)
        QCOMPARE(QString::fromStdString(fault->toString()), text);
}

// What the radio answers to a whole conversation, with an option or fault.
void TestEmulatedRadio::answers_data() {
    QTest::addColumn<QString>("fault");
    QTest::addColumn<bool>("version10");
    QTest::addColumn<QByteArray>("sent");
    QTest::addColumn<QByteArray>("expectedHex");

    const QByteArray read2 = QByteArray("R\x00\x08\x08R\x00\x10\x08", 8);
    const QByteArray write2 = QByteArray("W\x00\x00\x08", 4) + QByteArray(8, 'a') +
                              QByteArray("W\x00\x08\x08", 4) + QByteArray(8, 'b');
    // Memory byte a is (a * 7 + 0) & 0xFF: block 0x08 is 38 3f 46 4d 54 5b 62 69.
    const QByteArray block08 = "57000808383f464d545b6269";
    const QByteArray block10 = "5700100870777e858c939aa1";
    const QByteArray ident = "5a52333130000200";
    const QByteArray opened = "06" + ident + "06";
    auto row = [](const char* name, const char* fault, bool version10, const QByteArray& sent,
                  const QByteArray& expected) {
        QTest::newRow(name) << QString(fault) << version10 << sent << expected;
    };
    row("open and read", "none", false, kOpen + read2, opened + block08 + block10);
    row("version 1.0", "none", true, kOpen,
        "06"
        "5a52333130000100"
        "06");
    row("write", "none", false, kOpen + write2, opened + "0606");
    row("silent", "silent", false, kOpen + read2, "");
    row("short ident", "short-ident", false, kOpen,
        "06"
        "5a523331300002"
        "06");
    row("bad lead", "bad-lead:2", false, kOpen + write2, opened + "0615");
    row("drop", "drop:2", false, kOpen + read2, opened + block08);
    row("noise everywhere", "noise", false, kWake, "000006");
    row("noise at block 2", "noise:2", false, kOpen + write2, opened + "06000006");
    row("garbage before wake-up", "none", false, QByteArray("xyz\x06R") + kWake, "06");
    row("END closes the session", "none", false, kOpen + "END" + read2, opened);
    row("bad length is ignored", "none", false, kOpen + QByteArray("R\x00\x08\x09", 4), opened);
    row("address past the end", "none", false, kOpen + QByteArray("R\x03\xF9\x08", 4), opened);
}

void TestEmulatedRadio::answers() {
    QFETCH(QString, fault);
    QFETCH(bool, version10);
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, expectedHex);
    EmulatedRadio radio(patternedMemory(0), {version10, *RadioFault::parse(fault.toStdString())});
    QCOMPARE(hex(feed(radio, sent)), expectedHex);
}

void TestEmulatedRadio::newWakeUpRestartsSession() {
    EmulatedRadio radio(patternedMemory(0));
    feed(radio, kOpen + QByteArray("W\x00\x00\x08", 4) + QByteArray(8, 'a'));
    QCOMPARE(radio.commits(), 0); // the write never ended
    // A new wake-up in the middle of a session, and again in tuning mode.
    QCOMPARE(hex(feed(radio, kWake)), QByteArray("06"));
    feed(radio, QByteArray("\x02\x06", 2) + "QZVTUNE");
    QCOMPARE(radio.mode(), EmulatedRadio::Mode::Tuning);
    QCOMPARE(hex(feed(radio, kWake)), QByteArray("06"));
    QCOMPARE(radio.mode(), EmulatedRadio::Mode::AwaitIdentify);
}

void TestEmulatedRadio::lineIdleEndsHalfDoneSession() {
    EmulatedRadio radio(patternedMemory(0));
    feed(radio, kWake);
    QCOMPARE(radio.mode(), EmulatedRadio::Mode::AwaitIdentify);
    radio.lineIdle();
    QCOMPARE(radio.mode(), EmulatedRadio::Mode::Idle);
    QCOMPARE(hex(feed(radio, "\x02")), QByteArray()); // a lone identify means nothing now
    radio.lineIdle();
    QCOMPARE(hex(feed(radio, kOpen)), QByteArray("06"
                                                 "5a52333130000200"
                                                 "06"));
}

void TestEmulatedRadio::pacing() {
    using namespace std::chrono;
    const auto t0 = LinePacer::Clock::now();
    LinePacer pacer;
    // A 4-byte packet: the radio has it after 4 byte times.
    LinePacer::TimePoint last{};
    for (int i = 0; i < 4; ++i)
        last = pacer.arrival(t0);
    QCOMPARE(last - t0, 4 * LinePacer::kByteTime);
    const Bytes reply(12, 0x57);
    pacer.queue(reply, last);
    QVERIFY(pacer.takeDue(last + LinePacer::kByteTime - nanoseconds(1)).empty());
    QCOMPARE(pacer.takeDue(last + 2 * LinePacer::kByteTime).size(), std::size_t(2));
    QCOMPARE(*pacer.nextDue() - t0, 7 * LinePacer::kByteTime);
    QCOMPARE(pacer.takeDue(t0 + 16 * LinePacer::kByteTime).size(), std::size_t(10));
    QVERIFY(!pacer.nextDue());
    // 11 bits at 9600 baud.
    QCOMPARE(duration_cast<microseconds>(LinePacer::kByteTime).count(), 1145);

    LinePacer unpaced(false);
    unpaced.queue(reply, t0);
    QCOMPARE(unpaced.arrival(t0), t0);
    QCOMPARE(unpaced.takeDue(t0).size(), std::size_t(12));
}

QTEST_APPLESS_MAIN(TestEmulatedRadio)
#include "tst_emulated_radio.moc"
