// zr310-cli set/new: each edit changes exactly the bits the radio's memory map
// gives for it, pairs apply from left to right, and bad input changes nothing.

#include "cli_test_util.h"
#include "edit_commands.h"
#include "image_edit.h"
#include "show_command.h"

#include <QFile>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

class TestCliSet : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;
    std::string path(const char* name) { return (m_dir.path() + "/" + name).toStdString(); }

    // Runs set with the pairs on a raw image file holding `before`.
    CommandRun setPairs(const RadioImage& before, const QStringList& pairs) {
        writeRaw(path("edit.bin"), before);
        return runCommand(runSetCommand, argList(QStringList{m_dir.filePath("edit.bin")} + pairs));
    }

private slots:
    // Accepted pairs with the changes they make, as "CC.B=VV" (the byte of column
    // CC, block B, at radio address CC * 8 + B, becomes VV) or "CC.B&MM=VV" (only
    // the bits MM change), in hex. Refused pairs with what the error names: the
    // file keeps its bytes, also those of the good pair before the bad one.
    void edits_data() {
        QTest::addColumn<QStringList>("pairs");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("expected");
        const auto ok = [](const char* name, const QStringList& pairs, const QString& changes) {
            QTest::newRow(name) << pairs << kExitOk << changes;
        };
        const auto bad = [](const char* name, const QStringList& pairs, const char* named) {
            QTest::newRow(name) << QStringList{"CboSQ=1"} + pairs << kExitUsage << named;
        };
        const QString vhf = "CboBand=136 - 174MHz";
        // 145.5125 MHz = 23282 (0x5AF2) steps of 6.25 kHz; 145.505 MHz = 29101 (0x71AD) of 5 kHz.
        ok("rx 6.25", {vhf, "ch3.rx_freq=145.5125"}, "5A.2=52 04.0=F2 04.1=5A 04.2&04=04");
        ok("tx 5", {vhf, "ch16.tx_freq=145.505"}, "5A.2=52 1E.5=AD 1E.6=71 1E.7&04=00");
        ok("clamped to the top", {vhf, "ch1.rx_freq=999"}, "5A.2=52 00.0=C0 00.1=6C 00.2&04=04");
        ok("snapped to 145.00625", {vhf, "ch1.rx_freq=145.0061"},
           "5A.2=52 00.0=A1 00.1=5A 00.2&04=04");
        // 480 MHz needs bit 16 of the count; a later entry below it keeps the bit.
        ok("bit 16 kept", {"CboBand=465 - 520MHz", "ch1.rx_freq=480", vhf, "ch1.rx_freq=145"},
           "5A.2=52 00.0=A0 00.1=5A 00.2&05=05");
        ok("ctcss rx tone", {"ch2.rx_tone=CTC 88.5"}, "02.3=85 02.4=08 02.2&70=30");
        ok("-dcs tx tone", {"ch2.tx_tone=-DCS 754"}, "03.0=EC 03.1=01 02.7&70=70");
        ok("flags",
           {"ch5.scan=Del", "ch5.busy_lock=Off", "ch5.power=Low", "ch5.bandwidth=Wide",
            "ch5.close=true", "ch5.no_tx=false"},
           "09.2&35=30 08.2&08=00 08.7&08=08");
        ok("test channel", {"tch11.no_tx=true", "tch1.close=false"}, "34.7&08=00 20.2&08=08");
        ok("time-out timer", {"CboTXLimit=300sec"}, "56.7=30");
        ok("later pair wins", {"CboSQ=3", "CboSQ=7"}, "57.3=07");
        ok("tuning value", {"tuning.squelch3=77"}, "5E.2=4D");
        QString narrow = "57.4&02=02";
        for (int n = 0; n < 16; ++n)
            narrow += QString(" %1.2&01=01").arg(2 * n + 1, 2, 16, QChar('0'));
        ok("radio-wide narrow", {"CboBandSel=Narrow"}, narrow);
        bad("unknown key", {"ch1.colour=red"}, "ch1.colour");
        bad("channel 17", {"ch17.scan=Add"}, "ch17.scan");
        bad("test channel 12", {"tch12.close=true"}, "tch12.close");
        bad("scan on a test channel", {"tch1.scan=Add"}, "tch1.scan");
        bad("tone not on the list", {"ch1.rx_tone=CTC 88.6"}, "CTC 88.6");
        bad("text as frequency", {"ch1.rx_freq=abc"}, "abc");
        bad("item not on the list", {"CboTXLimit=45sec"}, "45sec");
        bad("tuning too large", {"tuning.squelch9=256"}, "256");
        bad("user text too long", {"user_text=" + QString(97, 'a')}, "96");
        bad("no equals sign", {"ch1.scan"}, "ch1.scan");
        bad("momentary on the short list",
            {"CboPowSel=Long-hit [Moni]", "CboMoni=Unmute Momentary"}, "Unmute Momentary");
    }

    void edits() {
        QFETCH(QStringList, pairs);
        QFETCH(int, status);
        QFETCH(QString, expected);
        QRandomGenerator random(99);
        for (int round = 0; round < 3; ++round) {
            const RadioImage before = randomImage(random);
            RadioImage changed = before;
            for (const QString& change : status == kExitOk ? expected.split(' ') : QStringList{}) {
                const int address =
                    change.left(2).toInt(nullptr, 16) * 8 + change.mid(3, 1).toInt();
                const int mask = change[4] == '&' ? change.mid(5, 2).toInt(nullptr, 16) : 0xFF;
                const int value = change.section('=', 1).toInt(nullptr, 16);
                changed.setAtAddress(address, quint8((before.atAddress(address) & ~mask) | value));
            }
            const CommandRun run = setPairs(before, pairs);
            QVERIFY2(run.status == status, run.err.c_str());
            QVERIFY(status == kExitOk || QString::fromStdString(run.err).contains(expected));
            const RadioImage after = readRaw(path("edit.bin"));
            for (int a = 0; a < 1024; ++a)
                QVERIFY2(after.atAddress(a) == changed.atAddress(a),
                         qPrintable(QString("address 0x%1").arg(a, 3, 16, QChar('0'))));
        }
    }

    // Every key `set --help` lists takes every value listed for it ("..."
    // aside), on the first and last record of a range such as ch{1..16}; the
    // record after the range is refused.
    void helpListsWhatSetTakes() {
        const CommandRun help = runCommand(runSetCommand, {"--help"});
        QCOMPARE(help.status, kExitOk);
        const QRegularExpression keyLine(R"(^  (\S+)  +(.+)$)"), range(R"(\{1\.\.(\d+)\})");
        int keys = 0;
        for (const QString& line : QString::fromStdString(help.out).split('\n')) {
            const auto listed = keyLine.match(line);
            if (!listed.hasMatch()) {
                continue;
            }
            ++keys;
            QString key = listed.captured(1);
            QStringList values = listed.captured(2).split(" | ");
            values.removeAll("...");
            const auto records = range.match(key);
            const QString last = records.captured(1);
            for (const QString& n : records.hasMatch() ? QStringList{"1", last} : QStringList{""}) {
                QStringList pairs;
                for (const QString& value : values) {
                    pairs << QString(key).replace(records.captured(0), n) + "=" + value;
                }
                const auto run = setPairs(makeStartImage(), pairs);
                QVERIFY2(run.status == kExitOk, qPrintable(line + ": " + run.err.c_str()));
            }
            if (records.hasMatch()) {
                const QString beyond = QString::number(last.toInt() + 1);
                const QString pair = key.replace(records.captured(0), beyond) + "=" + values[0];
                QCOMPARE(setPairs(makeStartImage(), {pair}).status, kExitUsage);
            }
        }
        QCOMPARE(keys, int(imageEditKeys().size())); // each key read off its line
    }

    // An option that takes one value, given twice, is named in the error.
    void repeatedOption_data() {
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<QString>("error");
        QTest::newRow("--lang") << QStringList{"--lang", "en", "--lang=zh"}
                                << "--lang was given twice";
        QTest::newRow("-o") << QStringList{"-o", "a.bin", "--output", "b.bin"}
                            << "--output (-o) was given twice";
    }

    void repeatedOption() {
        QFETCH(QStringList, options);
        QFETCH(QString, error);
        const auto run = setPairs(makeStartImage(), QStringList{"CboSQ=1"} + options);
        QCOMPARE(run.status, kExitUsage);
        QCOMPARE(QString::fromStdString(run.err), error);
    }

    void outputOptionLeavesTheInput() {
        writeRaw(path("in.bin"), RadioImage{});
        const auto run =
            runCommand(runSetCommand, {path("in.bin"), "CboSQ=5", "-o", path("out.k720")});
        QCOMPARE(run.status, 0);
        QVERIFY(readRaw(path("in.bin")) == RadioImage{});
        QCOMPARE(QFile(QString::fromStdString(path("out.k720"))).size(), 1360);
        const auto shown = runCommand(runShowCommand, {path("out.k720"), "--json"});
        QVERIFY(shown.out.find("\"CboSQ\": {\n      \"index\": 5") != std::string::npos);
        QCOMPARE(runCommand(runSetCommand, {path("in.bin")}).status, kExitUsage);
    }

    void newWritesTheStartImageAndKeepsExistingFiles() {
        const std::string file = path("new.k720");
        QCOMPARE(runCommand(runNewCommand, {file}).status, 0);
        const auto shown = runCommand(runShowCommand, {file, "--json"});
        QVERIFY(shown.out.find("\"text\": \"30sec\"") != std::string::npos);
        QCOMPARE(runCommand(runNewCommand, {file}).status, kExitUsage);
        QCOMPARE(runCommand(runNewCommand, {file, "--force"}).status, 0);
    }

    // new OUT and set IN -o OUT replace what stands at OUT only with --force (a
    // link counts, also one that leads nowhere or to itself); set takes along the
    // input's bytes that no setting names.
    void existingOutput_data() {
        QTest::addColumn<QString>("command");
        QTest::addColumn<QString>("there"); // file, dangling, loop or nothing
        QTest::addColumn<bool>("force");
        QTest::addColumn<int>("status");
        const auto row = [](const char* name, const char* command, const char* there, bool force,
                            int status) {
            QTest::newRow(name) << command << there << force << status;
        };
        row("new onto a dangling link", "new", "dangling", false, kExitUsage);
        row("new onto a link loop", "new", "loop", false, kExitUsage);
        row("new --force onto a file", "new", "file", true, kExitOk);
        row("set -o onto a file", "set", "file", false, kExitUsage);
        row("set -o --force onto a file", "set", "file", true, kExitOk);
        row("set -o to a new name", "set", "nothing", false, kExitOk);
    }
    void existingOutput() {
        QFETCH(QString, command);
        QFETCH(QString, there);
        QFETCH(bool, force);
        QFETCH(int, status);
        const std::string out = path("out.k720"), in = path("in.k720");
        FileImage file = toFileImage(RadioImage{}, {});
        file[0x540] = 0x77; // no setting names it
        std::ofstream(in, std::ios::binary).write(reinterpret_cast<char*>(file.data()), 1360);
        std::filesystem::remove(out);
        if (there == "file")
            std::filesystem::copy_file(in, out);
        else if (there != "nothing")
            std::filesystem::create_symlink(there == "loop" ? out : in + ".gone", out);
        auto args = command == "new" ? std::vector<std::string>{out}
                                     : std::vector<std::string>{in, "CboSQ=3", "-o", out};
        if (force)
            args.push_back("--force");
        QCOMPARE(runCommand(command == "new" ? runNewCommand : runSetCommand, args).status, status);
        std::ifstream written(out, std::ios::binary);
        const std::string bytes{std::istreambuf_iterator<char>(written), {}};
        QCOMPARE(int(bytes.size()), status == kExitUsage && there != "file" ? 0 : 1360);
        QVERIFY(bytes.empty() || bytes[0x540] == (command == "new" && !status ? 0 : 0x77));
    }
};

QTEST_APPLESS_MAIN(TestCliSet)
#include "tst_cli_set.moc"
