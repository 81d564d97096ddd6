// zr310-cli move, sort and clear, and set with channel ranges: each writes
// what the model's own operation makes of the file, and a refused command
// leaves every file as it was.

#include "channel_commands.h"
#include "channel_moves.h"
#include "cli_test_util.h"
#include "edit_commands.h"
#include "image_edit.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

class TestCliChannels : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    RadioImage m_before;

    std::string path(const char* name) { return (m_dir.path() + "/" + name).toStdString(); }

    // Runs the command on a raw image file holding noise; the file after.
    RadioImage run(const CommandFunction& command, const QStringList& args, int status,
                   const char* error = "") {
        QRandomGenerator random(7);
        m_before = randomImage(random);
        writeRaw(path("edit.bin"), m_before);
        const CommandRun result =
            runCommand(command, argList(QStringList{m_dir.filePath("edit.bin")} + args));
        [&] {
            QVERIFY2(result.status == status, result.err.c_str());
            QVERIFY2(result.err.find(error) != std::string::npos, result.err.c_str());
        }();
        return readRaw(path("edit.bin"));
    }

private slots:
    // A range or list sets what the key of each of its channels sets.
    void setRanges() {
        const auto row = [this](const QStringList& pairs, const QStringList& each) {
            const RadioImage after = run(runSetCommand, pairs, kExitOk);
            RadioImage expected = m_before;
            for (const QString& pair : each)
                applyImageEdit(expected, pair.section('=', 0, 0).toStdString(),
                               pair.section('=', 1).toStdString());
            QVERIFY(after == expected);
        };
        row({"ch1-3,9.power=Low"},
            {"ch1.power=Low", "ch2.power=Low", "ch3.power=Low", "ch9.power=Low"});
        row({"ch16,15.rx_tone=CTC 88.5"}, {"ch15.rx_tone=CTC 88.5", "ch16.rx_tone=CTC 88.5"});
        row({"tch10-11.close=x"}, {"tch10.close=x", "tch11.close=x"});
    }

    // Nothing is written, also not the good pair before the bad one.
    void refusedCommandsChangeNothing() {
        const auto row = [this](const CommandFunction& command, const QStringList& args,
                                const char* error) {
            QVERIFY(run(command, args, kExitUsage, error) == m_before);
        };
        row(runSetCommand, {"CboSQ=1", "ch2-5.rx_tone=CTC 1"}, "ch2.rx_tone");
        row(runSetCommand, {"CboSQ=1", "ch15-17.power=Low"}, "ch15-17.power");
        row(runSetCommand, {"tch1-2.power=Low"}, "tch1-2.power");
        row(runMoveCommand, {"3-5", "15"}, "do not fit");
        row(runMoveCommand, {"2,4", "1"}, "range");
        row(runSortCommand, {"--by", "colour"}, "rx_freq, rx_tone");
        row(runClearCommand, {"2,17"}, "2,17");
        row(runClearCommand, {}, "CHANNELS");
    }

    // What the model makes of the file.
    void commandsAsTheModel() {
        const auto row = [this](const CommandFunction& command, const QStringList& args,
                                const std::function<void(RadioImage&)>& model) {
            const RadioImage after = run(command, args, kExitOk);
            RadioImage expected = m_before;
            model(expected);
            QVERIFY(after == expected);
        };
        row(runMoveCommand, {"3-5", "1"}, [](RadioImage& i) { moveChannels(i, 3, 5, 1); });
        row(runMoveCommand, {"1", "16"}, [](RadioImage& i) { moveChannels(i, 1, 1, 16); });
        row(runSortCommand, {}, [](RadioImage& i) { sortChannels(i); });
        row(runSortCommand, {"--by", "tx_tone"},
            [](RadioImage& i) { sortChannels(i, ChannelField::TxTone); });
        row(runClearCommand, {"2,7-8"}, [](RadioImage& i) {
            clearChannels(i, std::vector<int>{2, 7, 8});
        });
    }
};

QTEST_GUILESS_MAIN(TestCliChannels)
#include "tst_cli_channels.moc"
