// zr310-cli set/new: each key reaches exactly the bits the radio's memory map
// gives for it, pairs apply from left to right, and bad input changes nothing.
// Every value of a field is the model suite's; here each kind of key once.

#include "cli_test_util.h"
#include "edit_commands.h"
#include "image_edit.h"
#include "k720_file.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

namespace {

std::string fileBytes(const std::string& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

} // namespace

class TestCliSet : public QObject {
    Q_OBJECT

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
    void edits() {
        const auto row = [this](const QStringList& pairs, int status, const QString& expected) {
            QRandomGenerator random(99);
            for (int round = 0; round < 3; ++round) {
                const RadioImage before = randomImage(random);
                RadioImage changed = before;
                for (const QString& change :
                     status == kExitOk ? expected.split(' ') : QStringList{}) {
                    const int address =
                        change.left(2).toInt(nullptr, 16) * 8 + change.mid(3, 1).toInt();
                    const int mask = change[4] == '&' ? change.mid(5, 2).toInt(nullptr, 16) : 0xFF;
                    const int value = change.section('=', 1).toInt(nullptr, 16);
                    changed.setAtAddress(address,
                                         quint8((before.atAddress(address) & ~mask) | value));
                }
                const CommandRun run = setPairs(before, pairs);
                QVERIFY2(run.status == status, run.err.c_str());
                QVERIFY(status == kExitOk || QString::fromStdString(run.err).contains(expected));
                const RadioImage after = readRaw(path("edit.bin"));
                for (int a = 0; a < 1024; ++a)
                    QVERIFY2(after.atAddress(a) == changed.atAddress(a),
                             qPrintable(QString("address 0x%1").arg(a, 3, 16, QChar('0'))));
            }
        };
        const auto ok = [&](const QStringList& pairs, const QString& changes) {
            row(pairs, kExitOk, changes);
        };
        const auto bad = [&](const QStringList& pairs, const char* named) {
            row(QStringList{"CboSQ=1"} + pairs, kExitUsage, named);
        };
        const QString vhf = "CboBand=136 - 174MHz";
        // 145.5125 MHz = 23282 (0x5AF2) steps of 6.25 kHz; 145.505 MHz = 29101 (0x71AD) of 5 kHz.
        ok({vhf, "ch3.rx_freq=145.5125"}, "5A.2=52 04.0=F2 04.1=5A 04.2&04=04");
        ok({vhf, "ch16.tx_freq=145.505"}, "5A.2=52 1E.5=AD 1E.6=71 1E.7&04=00");
        // Clamped to the band the image holds at that pair: 480 MHz needs bit
        // 16 of the count, and a later entry below it keeps the bit.
        ok({vhf, "ch1.rx_freq=999"}, "5A.2=52 00.0=C0 00.1=6C 00.2&04=04");
        ok({"CboBand=465 - 520MHz", "ch1.rx_freq=480", vhf, "ch1.rx_freq=145"},
           "5A.2=52 00.0=A0 00.1=5A 00.2&05=05");
        ok({"ch2.rx_tone=CTC 88.5"}, "02.3=85 02.4=08 02.2&70=30");
        ok({"ch2.tx_tone=-DCS 754"}, "03.0=EC 03.1=01 02.7&70=70");
        ok({"ch5.scan=Del", "ch5.busy_lock=Off", "ch5.power=Low", "ch5.bandwidth=Wide",
            "ch5.close=true", "ch5.no_tx=false"},
           "09.2&35=30 08.2&08=00 08.7&08=08");
        ok({"tch11.no_tx=true", "tch1.close=false"}, "34.7&08=00 20.2&08=08");
        ok({"CboSQ=3", "CboSQ=7"}, "57.3=07"); // the later pair wins
        ok({"tuning.squelch3=77"}, "5E.2=4D");
        QString narrow = "57.4&02=02";
        for (int n = 0; n < 16; ++n)
            narrow += QString(" %1.2&01=01").arg(2 * n + 1, 2, 16, QChar('0'));
        ok({"CboBandSel=Narrow"}, narrow);
        bad({"ch1.colour=red"}, "ch1.colour");
        bad({"tch1.scan=Add"}, "tch1.scan");
        bad({"ch1.scan"}, "ch1.scan"); // no equals sign
        bad({"ch1.rx_freq=abc"}, "abc");
        bad({"CboTXLimit=45sec"}, "45sec");
        bad({"tuning.squelch9=256"}, "256");
        bad({"user_text=" + QString(97, 'a')}, "96");
        // Checked against the list as the pair before left it.
        bad({"CboPowSel=Long-hit [Moni]", "CboMoni=Unmute Momentary"}, "Unmute Momentary");
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

    void usageErrors() {
        const auto row = [this](const QStringList& options, const char* error) {
            const auto run = setPairs(makeStartImage(), options);
            QCOMPARE(run.status, kExitUsage);
            QCOMPARE(QString::fromStdString(run.err), QString(error));
        };
        row({}, "set needs a FILE and at least one KEY=VALUE");
        row({"CboSQ=1", "--lang", "en", "--lang=zh"}, "--lang was given twice");
        row({"CboSQ=1", "-o", "a.bin", "--output", "b.bin"}, "--output (-o) was given twice");
    }

    // A link at OUT counts as something standing there, also one that leads
    // nowhere; one that leads to itself cannot be saved through. new writes
    // the start image; set leaves IN and takes along its bytes no setting
    // names. (Every command's OUT rules: tst_cli_outputs.)
    void existingOutput() {
        const auto row = [this](bool isNew, const std::string& there, bool force, int status) {
            const std::string out = path("out.k720"), in = path("in.k720");
            FileImage file = toFileImage(RadioImage{}, {});
            file[0x540] = 0x77; // no setting names it
            const std::string input(reinterpret_cast<const char*>(file.data()), file.size());
            std::ofstream(in, std::ios::binary) << input;
            std::filesystem::remove(out);
            if (there == "file")
                std::filesystem::copy_file(in, out);
            else if (there != "nothing")
                std::filesystem::create_symlink(there == "loop" ? out : in + ".gone", out);
            auto args = isNew ? std::vector<std::string>{out}
                              : std::vector<std::string>{in, "CboSQ=3", "-o", out};
            if (force)
                args.push_back("--force");
            QCOMPARE(runCommand(isNew ? runNewCommand : runSetCommand, args).status, status);
            QCOMPARE(fileBytes(in), input);
            const std::string bytes = fileBytes(out);
            if (status != kExitOk) {
                QVERIFY(bytes.empty());
                return;
            }
            QCOMPARE(int(bytes.size()), 1360);
            QCOMPARE(int(bytes[0x540]), isNew ? 0 : 0x77);
            RadioImage written, expected = isNew ? makeStartImage() : RadioImage{};
            QVERIFY(openDataFile(out, written).ok());
            if (!isNew)
                applyImageEdit(expected, "CboSQ", "3");
            QVERIFY(written == expected);
        };
        row(true, "dangling", false, kExitUsage);
        row(true, "loop", true, kExitFileRefused);
        row(true, "file", true, kExitOk);
        row(false, "file", true, kExitOk);
        row(false, "nothing", false, kExitOk);
    }
};

QTEST_APPLESS_MAIN(TestCliSet)
#include "tst_cli_set.moc"
