// zr310-cli set/new: each edit changes exactly the bits the radio's memory map
// gives for it, pairs apply from left to right, and bad input changes nothing.

#include "cli_test_util.h"
#include "edit_commands.h"
#include "show_command.h"

#include <QFile>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

namespace {

// One expected change: the bits `mask` of the byte at radio address `address`
// become `value`.
struct BitChange {
    int address, mask, value;
};

int addr(int column, int block) {
    return column * 8 + block;
}

} // namespace

Q_DECLARE_METATYPE(std::vector<BitChange>)

class TestCliSet : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::string path(const char* name) { return (m_dir.path() + "/" + name).toStdString(); }

private slots:
    void editChangesOnlyItsBits_data() {
        QTest::addColumn<QStringList>("pairs");
        QTest::addColumn<std::vector<BitChange>>("changes");
        const BitChange vhfBand{addr(0x5A, 2), 0xFF, 0x52};
        // 145.5125 MHz = 23282 steps of 6.25 kHz; 145.505 MHz = 29101 steps of 5 kHz.
        QTest::newRow("rx freq on the 6.25 grid")
            << QStringList{"CboBand=136 - 174MHz", "ch3.rx_freq=145.5125"}
            << std::vector<BitChange>{vhfBand,
                                      {addr(4, 0), 0xFF, 23282 & 0xFF},
                                      {addr(4, 1), 0xFF, 23282 >> 8},
                                      {addr(4, 2), 0x04, 0x04}};
        QTest::newRow("tx freq on the 5 kHz grid")
            << QStringList{"CboBand=136 - 174MHz", "ch16.tx_freq=145.505"}
            << std::vector<BitChange>{vhfBand,
                                      {addr(30, 5), 0xFF, 29101 & 0xFF},
                                      {addr(30, 6), 0xFF, 29101 >> 8},
                                      {addr(30, 7), 0x04, 0}};
        QTest::newRow("frequency clamped to the band top")
            << QStringList{"CboBand=136 - 174MHz", "ch1.rx_freq=999"}
            << std::vector<BitChange>{vhfBand,
                                      {addr(0, 0), 0xFF, 27840 & 0xFF},
                                      {addr(0, 1), 0xFF, 27840 >> 8},
                                      {addr(0, 2), 0x04, 0x04}};
        QTest::newRow("frequency snapped to the nearer grid")
            << QStringList{"CboBand=136 - 174MHz", "ch1.rx_freq=145.0061"} // -> 145.00625
            << std::vector<BitChange>{vhfBand,
                                      {addr(0, 0), 0xFF, 23201 & 0xFF},
                                      {addr(0, 1), 0xFF, 23201 >> 8},
                                      {addr(0, 2), 0x04, 0x04}};
        QTest::newRow("ctcss rx tone")
            << QStringList{"ch2.rx_tone=CTC 88.5"}
            << std::vector<BitChange>{
                   {addr(2, 3), 0xFF, 0x85}, {addr(2, 4), 0xFF, 0x08}, {addr(2, 2), 0x70, 0x30}};
        QTest::newRow("inverted dcs tx tone")
            << QStringList{"ch2.tx_tone=-DCS 754"}
            << std::vector<BitChange>{
                   {addr(3, 0), 0xFF, 0xEC}, {addr(3, 1), 0xFF, 0x01}, {addr(2, 7), 0x70, 0x70}};
        QTest::newRow("tone off") << QStringList{"ch4.rx_tone=OFF"}
                                  << std::vector<BitChange>{{addr(6, 3), 0xFF, 0},
                                                            {addr(6, 4), 0xFF, 0},
                                                            {addr(6, 2), 0x70, 0}};
        QTest::newRow("flags") << QStringList{"ch5.scan=Del",   "ch5.busy_lock=Off",
                                              "ch5.power=Low",  "ch5.bandwidth=Wide",
                                              "ch5.close=true", "ch5.no_tx=false"}
                               << std::vector<BitChange>{{addr(9, 2), 0x35, 0x30},
                                                         {addr(8, 2), 0x08, 0},
                                                         {addr(8, 7), 0x08, 0x08}};
        QTest::newRow("test channel")
            << QStringList{"tch11.no_tx=true", "tch1.close=false"}
            << std::vector<BitChange>{{addr(0x34, 7), 0x08, 0}, {addr(0x20, 2), 0x08, 0x08}};
        QTest::newRow("time-out timer") << QStringList{"CboTXLimit=300sec"}
                                        << std::vector<BitChange>{{addr(0x56, 7), 0xFF, 0x30}};
        QTest::newRow("scan mode")
            << QStringList{"CboScan=Time"} << std::vector<BitChange>{{addr(0x56, 0), 0x18, 0x10}};
        QTest::newRow("priority channel") << QStringList{"CboPriorityCH=CH12"}
                                          << std::vector<BitChange>{{addr(0x56, 2), 0xFF, 0x12}};
        QTest::newRow("later pair wins") << QStringList{"CboSQ=3", "CboSQ=7"}
                                         << std::vector<BitChange>{{addr(0x57, 3), 0xFF, 7}};
        QTest::newRow("band") << QStringList{"CboBand=465 - 520MHz"}
                              << std::vector<BitChange>{{addr(0x5A, 2), 0xFF, 0x59}};
        QTest::newRow("tuning value") << QStringList{"tuning.squelch3=77"}
                                      << std::vector<BitChange>{{addr(0x5E, 2), 0xFF, 77}};
        std::vector<BitChange> narrow{{addr(0x57, 4), 0x02, 0x02}};
        for (int n = 0; n < 16; ++n)
            narrow.push_back({addr(2 * n + 1, 2), 0x01, 0x01});
        QTest::newRow("radio-wide narrow") << QStringList{"CboBandSel=Narrow"} << narrow;
    }

    void editChangesOnlyItsBits() {
        QFETCH(QStringList, pairs);
        QFETCH(std::vector<BitChange>, changes);
        QRandomGenerator random(99);
        for (int round = 0; round < 10; ++round) {
            const RadioImage before = randomImage(random);
            writeRaw(path("edit.bin"), before);
            std::vector<std::string> args{path("edit.bin")};
            for (const QString& pair : pairs)
                args.push_back(pair.toStdString());
            const CommandRun run = runCommand(runSetCommand, args);
            QVERIFY2(run.status == 0, run.err.c_str());

            RadioImage expected = before;
            for (const BitChange& c : changes) {
                const int old = expected.atAddress(c.address);
                expected.setAtAddress(c.address,
                                      static_cast<std::uint8_t>((old & ~c.mask) | c.value));
            }
            const RadioImage after = readRaw(path("edit.bin"));
            for (int a = 0; a < 1024; ++a)
                QVERIFY2(after.atAddress(a) == expected.atAddress(a),
                         qPrintable(QString("address 0x%1").arg(a, 3, 16, QChar('0'))));
        }
    }

    void frequencyBit16IsNeverCleared() {
        // 480 MHz needs bit 16 of the step count; a later entry below it keeps the bit.
        writeRaw(path("bit16.bin"), RadioImage{});
        const auto run =
            runCommand(runSetCommand, {path("bit16.bin"), "CboBand=465 - 520MHz", "ch1.rx_freq=480",
                                       "CboBand=136 - 174MHz", "ch1.rx_freq=145"});
        QCOMPARE(run.status, 0);
        const RadioImage after = readRaw(path("bit16.bin"));
        QVERIFY(after.atAddress(addr(0, 2)) & 0x01);
        QCOMPARE(after.atAddress(addr(0, 0)), 23200 & 0xFF);
    }

    void badPairsChangeNothing_data() {
        QTest::addColumn<QString>("pair");
        QTest::addColumn<QString>("named");
        QTest::newRow("unknown key") << "ch1.colour=red"
                                     << "ch1.colour";
        QTest::newRow("channel 17") << "ch17.scan=Add"
                                    << "ch17.scan";
        QTest::newRow("test channel 12") << "tch12.close=true"
                                         << "tch12.close";
        QTest::newRow("scan on a test channel") << "tch1.scan=Add"
                                                << "tch1.scan";
        QTest::newRow("tone not on the list") << "ch1.rx_tone=CTC 88.6"
                                              << "CTC 88.6";
        QTest::newRow("non-octal dcs") << "ch1.tx_tone=DCS 089"
                                       << "DCS 089";
        QTest::newRow("text as frequency") << "ch1.rx_freq=abc"
                                           << "abc";
        QTest::newRow("item not on the list") << "CboTXLimit=45sec"
                                              << "45sec";
        QTest::newRow("tuning too large") << "tuning.squelch9=256"
                                          << "256";
        QTest::newRow("user text too long")
            << QString("user_text=%1").arg(QString(97, 'a')) << "96";
        QTest::newRow("no equals sign") << "ch1.scan"
                                        << "ch1.scan";
        QTest::newRow("momentary on the short list")
            << "CboPowSel=Long-hit [Moni]|CboMoni=Unmute Momentary"
            << "Unmute Momentary";
    }

    void badPairsChangeNothing() {
        QFETCH(QString, pair);
        QFETCH(QString, named);
        QRandomGenerator random(7);
        const RadioImage before = randomImage(random);
        writeRaw(path("bad.bin"), before);
        std::vector<std::string> args{path("bad.bin"), "CboSQ=1"};
        for (const QString& p : pair.split('|'))
            args.push_back(p.toStdString());
        const CommandRun run = runCommand(runSetCommand, args);
        QCOMPARE(run.status, kExitUsage);
        QVERIFY2(QString::fromStdString(run.err).contains(named), run.err.c_str());
        QVERIFY(readRaw(path("bad.bin")) == before);
    }

    void outputOptionLeavesTheInput() {
        RadioImage before;
        writeRaw(path("in.bin"), before);
        const auto run =
            runCommand(runSetCommand, {path("in.bin"), "CboSQ=5", "-o", path("out.k720")});
        QCOMPARE(run.status, 0);
        QVERIFY(readRaw(path("in.bin")) == before);
        QCOMPARE(QFile(QString::fromStdString(path("out.k720"))).size(), 1360);
        const auto shown = runCommand(runShowCommand, {path("out.k720"), "--json"});
        QVERIFY(shown.out.find("\"CboSQ\": {\n      \"index\": 5") != std::string::npos);
    }

    void newWritesTheStartImageAndKeepsExistingFiles() {
        const std::string file = path("new.k720");
        QCOMPARE(runCommand(runNewCommand, {file}).status, 0);
        const auto shown = runCommand(runShowCommand, {file, "--json"});
        QVERIFY(shown.out.find("\"text\": \"30sec\"") != std::string::npos);
        QCOMPARE(runCommand(runNewCommand, {file}).status, kExitUsage);
        QCOMPARE(runCommand(runNewCommand, {file, "--force"}).status, 0);
    }
};

QTEST_APPLESS_MAIN(TestCliSet)
#include "tst_cli_set.moc"
