#include "line_pacer.h"
#include "link_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

Bytes feed(EmulatedRadio& radio, const QByteArray& bytes) {
    return radioAnswer(radio, {reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                               std::size_t(bytes.size())});
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
    void pacing();
};

void TestEmulatedRadio::faultNames_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("valid");
    for (const char* ok : {"silent", "short-ident", "noise", "noise:4", "bad-lead:1", "drop:128",
                           "refuse-tuning", "corrupt:38"})
        QTest::newRow(ok) << QString(ok) << true;
    for (const char* bad : {"", "drop", "drop:0", "bad-lead:x", "loud", "drop:3x", "corrupt"})
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

// What the radio answers to a whole conversation, with a fault.
void TestEmulatedRadio::answers_data() {
    QTest::addColumn<QString>("fault");
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
    auto row = [](const char* name, const char* fault, const QByteArray& sent,
                  const QByteArray& expected) {
        QTest::newRow(name) << QString(fault) << sent << expected;
    };
    row("open and read", "none", kOpen + read2, opened + block08 + block10);
    row("write", "none", kOpen + write2, opened + "0606");
    row("short ident", "short-ident", kOpen, "06" + ident.left(14) + "06");
    row("bad lead", "bad-lead:2", kOpen + write2, opened + "0615");
    row("noise at block 2", "noise:2", kOpen + write2, opened + "06000006");
    row("garbage before wake-up", "none", QByteArray("xyz\x06R") + kWake, "06");
    row("END closes the session", "none", kOpen + "END" + read2, opened);
    // A new wake-up starts over, also in the middle of a write or in tuning mode.
    row("wake-up in a write", "none", kOpen + write2 + kWake + "\x02",
        opened + "0606" + "06" + ident);
    row("wake-up in tuning mode", "none", kOpen + "QZVTUNE" + kWake + "\x02",
        opened + "06" + "06" + ident);
    // Tuning mode (stored: 0x2F1 = 0x97, 0x2F2 = 0x9e): 'G' + value, 0x06, or 'b'.
    const QByteArray tune = kOpen + "QZVTUNE", tuned = opened + "06";
    const QByteArray enter33("\x33\x00\x00", 3), cancel33("\x33\x00\x03", 3),
        cancel55("\x55\x00\x03", 3), try44("M\x44\x01", 3), try10("m\x10\x01", 3);
    row("tune: cancel with another item switches", "none",
        tune + enter33 + try44 + cancel55 + try10 + try44, tuned + "4797" + "06479e" + "0662");
    row("tune: cancel of the item in progress", "none", tune + enter33 + cancel33 + try44,
        tuned + "4797" + "06" + "62");
    row("tune: cancel with no item", "none", tune + cancel55 + try10, tuned + "06" + "62");
    row("tune: refusing", "refuse-tuning", tune + enter33 + cancel33 + "\x06",
        tuned + "62" + "62" + "06");
    row("tune: unknown item, leave", "none", tune + QByteArray("\x22\x00\x00\x06", 4) + enter33,
        tuned + "62" + "06");
}

void TestEmulatedRadio::answers() {
    QFETCH(QString, fault);
    QFETCH(QByteArray, sent);
    QFETCH(QByteArray, expectedHex);
    EmulatedRadio radio(patternedMemory(0), {false, *RadioFault::parse(fault.toStdString())});
    QCOMPARE(hex(feed(radio, sent)), expectedHex);
}

// 11 bits a byte at 9600 baud; a reply byte is due when its stop bits are through.
void TestEmulatedRadio::pacing() {
    QCOMPARE(std::chrono::duration_cast<std::chrono::microseconds>(LinePacer::kByteTime).count(),
             1145);
    const auto t0 = LinePacer::Clock::now();
    LinePacer pacer;
    pacer.queue(Bytes(12, 0x57), t0);
    QCOMPARE(pacer.takeDue(t0 + 2 * LinePacer::kByteTime - std::chrono::nanoseconds(1)).size(),
             std::size_t(1));
    QCOMPARE(pacer.takeDue(t0 + 12 * LinePacer::kByteTime).size(), std::size_t(11));
}

QTEST_APPLESS_MAIN(TestEmulatedRadio)
#include "tst_emulated_radio.moc"
