// zr310-cli read/write/info/tune against zr310-sim over a real pseudo-terminal.
// The commands run in this process; the radio is the zr310-sim program. One
// row per outcome: the link suites take each bad reply on its own.

#include "backup.h"
#include "cli_test_util.h"
#include "radio_info.h"
#include "sizes.h"
#include "transfer_commands.h"
#include "tune_command.h"
#include "tuning.h"

#include <QProcess>
#include <QtTest>

#include <csignal>

using namespace zr310;
using namespace zr310::testing;

namespace {

// A zr310-sim process serving a memory file.
class SimProcess {
public:
    SimProcess(const QString& memoryFile, const QString& options) {
        m_process.setProgram(QStringLiteral(ZR310_SIM_EXE));
        m_process.setArguments(QStringList{"--memory", memoryFile} +
                               options.split(' ', Qt::SkipEmptyParts));
        m_process.start();
        // Generous: the first line comes as soon as the program runs.
        for (int i = 0; i < 100 && !m_process.canReadLine(); ++i)
            m_process.waitForReadyRead(300);
        const QString line = QString::fromUtf8(m_process.readLine()).trimmed();
        if (line.startsWith("PTY "))
            m_port = line.mid(4);
    }
    ~SimProcess() {
        m_process.terminate();
        if (!m_process.waitForFinished(10'000))
            m_process.kill();
    }
    const QString& port() const { return m_port; }

    // zr310-sim reports on stderr when it has saved its memory.
    bool waitForSave() {
        for (int i = 0; i < 100; ++i) {
            m_log += m_process.readAllStandardError();
            if (m_log.contains("memory saved"))
                return true;
            m_process.waitForReadyRead(300);
        }
        return false;
    }

private:
    QProcess m_process;
    QString m_port;
    QByteArray m_log;
};

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool inWriteBlocks(int address) {
    const int block = address & ~7;
    return block < 0x100 || block == 0x2B0 || block == 0x2B8 || block == 0x2D0 || block == 0x2D8 ||
           block == 0x3C0 || block == 0x3C8;
}

enum Command { Read, Write, Info, Tune };

CommandRun runOn(Command command, const QStringList& args) {
    static const std::array commands{runReadCommand, runWriteCommand, runInfoCommand,
                                     runTuneCommand};
    return runCommand(commands[command], argList(args));
}

} // namespace

class TestTransferCommands : public QObject {
    Q_OBJECT

    QTemporaryDir m_dataHome; // XDG_DATA_HOME: the backups of every read go there
    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString& name) const { return m_dir->filePath(name); }

    // A fresh folder whose radio.bin, holding `memory`, zr310-sim serves.
    std::unique_ptr<SimProcess> startSim(const RadioImage& memory, const QString& options) {
        m_dir = std::make_unique<QTemporaryDir>();
        writeRaw(path("radio.bin").toStdString(), memory);
        auto sim = std::make_unique<SimProcess>(path("radio.bin"), options);
        if (sim->port().isEmpty())
            qWarning("zr310-sim did not start");
        return sim;
    }

private slots:
    void initTestCase() {
        QVERIFY(m_dataHome.isValid());
        qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8()); // never the real home
    }

    // What was read goes to the output and, whole, into one new backup; a
    // failed read leaves the output and backs nothing up.
    void read() {
        const auto row = [this](const QString& simOptions, const char* output, const char* lang,
                                int status, const QString& message) {
            QRandomGenerator random(7);
            const RadioImage radioImage = randomImage(random);
            const auto sim = startSim(radioImage, simOptions);
            std::ofstream(path(output).toStdString()) << "keep me";
            const QDir backups(m_dataHome.filePath("zr310/backups"));
            const QStringList before = backups.entryList(QDir::Files);

            const auto run =
                runOn(Read, {"--port", sim->port(), "-o", path(output), "--force", "--lang", lang});
            QCOMPARE(run.status, status);
            const QString shown = QString::fromStdString(status == 0 ? run.out : run.err);
            QVERIFY2(shown.contains(message), qPrintable(shown));
            QStringList added = backups.entryList(QDir::Files);
            for (const QString& name : before)
                added.removeOne(name);
            if (status != 0) {
                QCOMPARE(contents(path(output)), QByteArray("keep me"));
                QCOMPARE(added, QStringList());
                return;
            }
            RadioImage read;
            QVERIFY(openImageFile(path(output).toStdString(), read).ok());
            const auto expected = radioImage.toRadioOrder();
            // The last block is fetched but not kept: the start image's bytes stay.
            const auto start = makeStartImage();
            for (int a = 0; a < 1024; ++a)
                QCOMPARE(read.atAddress(a), a < 0x3F8 ? expected[toIndex(a)] : start.atAddress(a));
            QCOMPARE(added.size(), 1);
            const QString backup = backups.filePath(added.front());
            QVERIFY2(QString::fromStdString(run.out).endsWith("Backup of the data read: " + backup +
                                                              '\n'),
                     run.out.c_str());
            RadioImage backedUp;
            QVERIFY(openDataFile(backup.toStdString(), backedUp).ok());
            QVERIFY(backedUp == read);
        };
        const QString fast = "--no-line-delay ";
        row("", "out.bin", "en", kExitOk, "Reading completed\n"); // the paced line
        row(fast + "--version10", "out.k720", "en", kExitOk, "the radio's version is 1.0");
        row(fast + "--fault silent", "out.bin", "en", kExitNoResponse,
            "Port has no response, please check connection \n");
        row(fast + "--fault drop:100", "out.bin", "zh", kExitInterrupted,
            "读频被中断，请重新读频！");
    }

    // A backup that cannot be saved is a warning; the read itself is done.
    void readWhenTheBackupFails() {
        const auto sim = startSim(makeStartImage(), "--no-line-delay");
        std::ofstream(path("not-a-folder").toStdString()) << "x";
        qputenv("XDG_DATA_HOME", path("not-a-folder").toUtf8());
        const auto run = runOn(Read, {"--port", sim->port(), "-o", path("out.k720")});
        qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8());
        QCOMPARE(run.status, kExitOk);
        QVERIFY2(QString::fromStdString(run.out).contains("Reading completed"), run.out.c_str());
        QVERIFY2(QString::fromStdString(run.err).startsWith(
                     "The backup of the data read could not be saved: cannot create the folder " +
                     path("not-a-folder/zr310/backups")),
                 run.err.c_str());
        RadioImage read;
        QVERIFY(openImageFile(path("out.k720").toStdString(), read).ok());
        QVERIFY(read == makeStartImage());
    }

    // The radio keeps its memory unless the write completed; then exactly the
    // write blocks hold the file's bytes, stamped with the date.
    void write() {
        const auto row = [this](const QString& simOptions, const QString& extra, int status,
                                const char* message) {
            QRandomGenerator random(11);
            const RadioImage radioImage = randomImage(random);
            const RadioImage fileImage = randomImage(random);
            const auto sim = startSim(radioImage, simOptions);
            writeRaw(path("in.bin").toStdString(), fileImage);
            // --force: random bytes fail the checks before a write.
            const QStringList args{"--port", sim->port(), path("in.bin"), "--force"};
            const auto run = runOn(Write, args + extra.split(' ', Qt::SkipEmptyParts));
            QCOMPARE(run.status, status);
            const QString shown = QString::fromStdString(status == 0 ? run.out : run.err);
            QVERIFY2(shown.contains(message), qPrintable(shown));

            // zr310-sim saves its memory after a completed write only.
            const auto before = radioImage.toRadioOrder();
            if (status != kExitOk) {
                QCOMPARE(readRaw(path("radio.bin").toStdString()).toRadioOrder(), before);
                return;
            }
            QVERIFY(sim->waitForSave());
            const auto after = readRaw(path("radio.bin").toStdString()).toRadioOrder();
            const auto sent = fileImage.toRadioOrder();
            for (int a = 0; a < 1024; ++a) {
                const std::size_t i = toIndex(a);
                if (a >= 0x3C0 && a < 0x3CE) // the date stamp
                    QVERIFY(after[i] >= '0' && after[i] <= '9');
                else if (a == 0x2B0 && simOptions.contains("--version10"))
                    QCOMPARE(after[i], std::uint8_t((sent[i] & 0x78) << 1));
                else
                    QCOMPARE(after[i], inWriteBlocks(a) ? sent[i] : before[i]);
            }
        };
        const QString fast = "--no-line-delay ";
        row("", "", kExitOk, "Writing completed\n"); // the paced line
        row(fast + "--version10", "", kExitDeclined, "Give --yes to write it anyway.");
        row(fast + "--version10", "--verify --yes", kExitOk, "Writing completed");
        row(fast + "--fault drop:5", "", kExitInterrupted,
            "Please Write again because of interruption!");
    }

    // Four radios written at once: each gets its own line, in the order given,
    // and the exit status is the worst of them; the silent one stops nobody.
    // With --yes the version-1.0 radios are written too, strict or forgiving.
    void fleet() {
        const auto row = [this](const QStringList& radios, const QString& extra, int status,
                                const QStringList& expected) {
            m_dir = std::make_unique<QTemporaryDir>();
            QRandomGenerator random(12);
            const RadioImage fileImage = randomImage(random);
            writeRaw(path("in.bin").toStdString(), fileImage);
            std::vector<std::unique_ptr<SimProcess>> sims;
            QStringList args{path("in.bin"), "--verify", "--force"};
            args += extra.split(' ', Qt::SkipEmptyParts);
            for (int i = 0; i < radios.size(); ++i) {
                const QString memory = path(QStringLiteral("radio%1.bin").arg(i));
                writeRaw(memory.toStdString(), randomImage(random));
                sims.push_back(
                    std::make_unique<SimProcess>(memory, "--no-line-delay " + radios[i]));
                QVERIFY(!sims.back()->port().isEmpty());
                args << "--port" << sims.back()->port();
            }
            const auto run = runOn(Write, args);
            QCOMPARE(run.status, status);
            const QStringList lines =
                QString::fromStdString(run.out).split('\n', Qt::SkipEmptyParts);
            QCOMPARE(lines.size(), expected.size());
            for (int i = 0; i < expected.size(); ++i) {
                QVERIFY2(lines[i].startsWith(sims[toIndex(i)]->port() + ": ") &&
                             lines[i].contains(expected[i]),
                         qPrintable(lines[i]));
            }
            QVERIFY(sims[0]->waitForSave());
            const auto written = readRaw(path("radio0.bin").toStdString()).toRadioOrder();
            const auto sent = fileImage.toRadioOrder();
            QVERIFY(std::equal(sent.begin(), sent.begin() + 0x100, written.begin()));
        };
        const QString done = "Writing completed";
        row({"", "--fault silent", "--fault corrupt:7", "--version10"}, "", kExitVerifyFailed,
            {done, "Port has no response", "first at 0x0030; differing bytes: 1.", "Give --yes"});
        row({"--strict --version10", "--strict", "--version10"}, "--yes", kExitOk,
            {done, done, done});
    }

    // The version-1.0 question on a terminal (zr310-cli run by `script`),
    // answered at once, after 1.5 s, or with no: the wake-ups and blocks on
    // the wire (the write's trace), the exit status. The strict radio is
    // written in one session however late the answer; the one that gives up
    // after 300 ms of silence gets a second.
    void answeredOnTheTerminal() {
        const auto row = [this](const QString& simOptions, const char* answer, int afterMs,
                                int status, int wakeUps, int blocks) {
            QRandomGenerator random(15);
            const auto sim = startSim(randomImage(random), "--version10 " + simOptions);
            writeRaw(path("in.bin").toStdString(), randomImage(random));
            const QString command =
                QStringList{ZR310_CLI_EXE,  "write",   "--port",  sim->port(),
                            path("in.bin"), "--force", "--trace", path("trace.txt")}
                    .join(' ');
            QProcess cli;
            cli.start("script", {"-qec", command, "/dev/null"});
            QByteArray shown;
            QTRY_VERIFY_WITH_TIMEOUT((shown += cli.readAllStandardOutput()).contains("[y/N]"),
                                     30'000);
            QTest::qWait(afterMs);
            cli.write(answer);
            QVERIFY(cli.waitForFinished(30'000));
            QCOMPARE(cli.exitCode(), status);
            const QList<QByteArray> trace = contents(path("trace.txt")).split('\n');
            const auto sent = [&trace](const char* packet) {
                return std::count_if(trace.begin(), trace.end(), [packet](const QByteArray& line) {
                    return line.contains(QByteArray("> ") + packet);
                });
            };
            QCOMPARE(sent("02 50 52 4F"), wakeUps);
            QCOMPARE(sent("57 "), blocks);
        };
        row("--strict", "y\n", 0, kExitOk, 1, 38);
        row("--strict", "y\n", 1500, kExitOk, 1, 38);
        row("--strict", "n\n", 0, kExitDeclined, 1, 0);
        row("--fault drop-after:300", "y\n", 1500, kExitOk, 2, 39);
    }

    // A transfer stopped by a signal ends the radio's session (the strict
    // radio then answers the next command), says what state the radio may
    // be in, exits 4, and writes no output file.
    void cancelledBySignal() {
        const auto row = [this](const QString& command, int signal, const QString& message) {
            QRandomGenerator random(14);
            const auto sim = startSim(randomImage(random), "--strict");
            writeRaw(path("in.bin").toStdString(), randomImage(random));
            QProcess cli;
            const QStringList io = command == "read" ? QStringList{"-o", path("out.k720")}
                                                     : QStringList{path("in.bin"), "--force"};
            cli.start(ZR310_CLI_EXE,
                      QStringList{command, "--port", sim->port(), "--trace", path("trace.txt")} +
                          io);
            // Once blocks are on the line, the signal.
            QTRY_VERIFY_WITH_TIMEOUT(contents(path("trace.txt")).count('\n') > 12, 30'000);
            ::kill(pid_t(cli.processId()), signal);
            QVERIFY(cli.waitForFinished(30'000));
            QCOMPARE(cli.exitStatus(), QProcess::NormalExit);
            QCOMPARE(cli.exitCode(), kExitInterrupted);
            const QString err = QString::fromUtf8(cli.readAllStandardError());
            QVERIFY2(err.contains(message), qPrintable(err));
            QVERIFY(!QFile::exists(path("out.k720")));
            const QByteArray trace = contents(path("trace.txt")).trimmed();
            QVERIFY2(trace.endsWith("> 45 4E 44"), trace.right(80).constData()); // END
            QCOMPARE(runOn(Info, {"--port", sim->port()}).status, kExitOk);
        };
        row("read", SIGINT, "Reading cancelled. Nothing was changed.");
        row("write", SIGTERM,
            "Writing cancelled: the radio may hold a partly written memory: write again.");
        row("write", SIGHUP, "Writing cancelled");
    }

    // On the radio built into the program ("sim"): the write sends the text and
    // leaves the radio ID and the write date as they were.
    void info() {
        const auto set = runOn(Info, {"--port", "sim", "--set-text", "新しい text"});
        QCOMPARE(set.status, kExitOk);
        QVERIFY(QString::fromStdString(set.out).contains("Writing completed"));
        const auto json = runOn(Info, {"--port", "sim", "--json"});
        QCOMPARE(json.status, kExitOk);
        const auto doc = QJsonDocument::fromJson(QByteArray::fromStdString(json.out)).object();
        QCOMPARE(doc["radio_id"].toString(), QString("ZR310-EMU-0001"));
        QCOMPARE(doc["write_date"].toString(), QString("2006-05-18, 09:30:00"));
        QCOMPARE(doc["user_text"].toString(), QString("新しい text"));
        const auto text = runOn(Info, {"--port", "sim", "--lang", "zh"});
        QCOMPARE(text.status, kExitOk);
        const QString shown = QString::fromStdString(text.out);
        QVERIFY2(shown.contains("最近写频日期: 2006-05-18, 09:30:00"), qPrintable(shown));
    }

    // Stored in the radio: low_battery 10, squelch9 20, squelch3 30,
    // ctcss_deviation 40, cdcss_deviation 50 (radio addresses 0x2F0..0x2F4).
    // `shown` is on stdout, or stderr when failed; `stored` the five bytes after.
    void tune() {
        const auto row = [this](const char* simOptions, const char* args, int status,
                                const char* shown, const char* stored = "0a141e2832") {
            QRandomGenerator random(13);
            RadioImage radioImage = randomImage(random);
            for (int i = 0; i < 5; ++i)
                setTuningValue(radioImage, kTuningItems[toIndex(i)].item,
                               std::uint8_t(10 * (i + 1)));
            const RadioImage fileImage = randomImage(random);
            const auto sim = startSim(radioImage, QString("--no-line-delay ") + simOptions);
            writeRaw(path("in.bin").toStdString(), fileImage);
            const QStringList options = QString(args).replace("in.bin", path("in.bin")).split(' ');
            const auto run = runOn(Tune, QStringList{"--port", sim->port()} + options);
            QVERIFY2(run.status == status, run.err.c_str());
            QVERIFY2(QString::fromStdString(status == 0 ? run.out : run.err).contains(shown),
                     (run.out + run.err).c_str());

            // zr310-sim saves its memory after a confirmed value and a completed write only.
            const bool writesTest = options.contains("--write-test");
            if (status == 0 && (options.contains("--keep") || writesTest))
                QVERIFY(sim->waitForSave());
            const auto after = readRaw(path("radio.bin").toStdString()).toRadioOrder();
            QCOMPARE(QByteArray(reinterpret_cast<const char*>(after.data()) + 0x2F0, 5).toHex(),
                     QByteArray(stored));
            const auto before = radioImage.toRadioOrder(), test = fileImage.toRadioOrder();
            for (std::size_t a = 0x100; a < 0x1B0; ++a)
                QCOMPARE(after[a], writesTest ? test[a] : before[a]);
        };
        row("", "--get", kExitOk, "squelch3: 30\nctcss_deviation: 40\n");
        row("", "--get --json", kExitOk, "\"tuning\": {\n    \"low_battery\": 10,");
        row("", "squelch9=0x45 cdcss_deviation=200 --keep", kExitOk,
            "squelch9: before 20, after 69\ncdcss_deviation: before 50, after 200\n", "0a451e28c8");
        row("", "squelch3=0 squelch3=255", kExitOk, "squelch3: before 30, after 30\n");
        row("", "--write-test in.bin", kExitOk, "Writing completed");
        row("--fault refuse-tuning", "squelch9=1 --keep", kExitRefused, "Tuning error");
    }

    // Refused before any port is opened: a port that is not there would give 3.
    void usage() {
        const auto row = [](Command command, const QStringList& args) {
            const auto run = runOn(command, args);
            QCOMPARE(run.status, kExitUsage);
            QVERIFY(!run.err.empty());
        };
        const QString none = "/dev/zr310-no-such-port";
        row(Read, {"-o", "x.bin"});
        row(Read, {"-p", "sim", "-p", "COM2", "-o", "x.bin"});
        row(Write, {"--port", "sim"});
        row(Write, {"-p", "sim", "--port", "sim", "a.bin"});
        row(Write, {"-p", "sim", "-p", "COM2", "--trace", "t.txt", "a.bin"});
        row(Info, {"--port", "sim", "--set-text", QString(97, 'x')});
        row(Info, {"--port", "sim", "--json", "--set-text", "a"});
        row(Info, {"--port", "sim", "--verify"});
        row(Tune, {"--port", none, "squelch9=1", "squelch7=1"});
        row(Tune, {"--port", none, "squelch9=256"});
        row(Tune, {"--port", none, "--get", "squelch9=1"});
    }

    // A port that cannot be opened: exit status 3, and the message says why.
    void unreachablePort() {
        const auto row = [](Command command, const char* lang, const QString& message) {
            const QString port = "/dev/ttyNOPE0";
            QStringList args{"--port", port, "--lang", lang};
            if (command == Read)
                args << "-o" << QDir::temp().filePath("zr310-never-written.bin");
            if (command == Tune)
                args << "--get";
            const auto run = runOn(command, args);
            QCOMPARE(run.status, kExitNoResponse);
            QVERIFY2(QString::fromStdString(run.err).contains(message.arg(port)), run.err.c_str());
        };
        row(Read, "en", "No such port: %1 does not exist.");
        row(Info, "zh", "没有这个端口：%1 不存在。");
        row(Tune, "en", "No such port: %1 does not exist.");
    }

    // After the heading, one line a packet sent and one for the reply, from
    // the wake-up on. A trace file that cannot be written is refused before
    // the port is tried (a port that is not there would give 3).
    void trace() {
        const auto row = [this](Command command, const char* args,
                                const QString& traceFile = "trace.txt", int status = kExitOk) {
            const auto sim = startSim(makeStartImage(), "--no-line-delay");
            writeRaw(path("in.bin").toStdString(), makeStartImage());
            const QString trace = traceFile.startsWith('/') ? traceFile : path(traceFile);
            QStringList options = QString(args).split(' ', Qt::SkipEmptyParts);
            options.replaceInStrings(QRegularExpression("^(\\w+\\.bin)$"), path("\\1"));
            const QString port = status == kExitOk ? sim->port() : "/dev/zr310-no-such-port";
            const auto run =
                runOn(command, QStringList{"--port", port, "--trace", trace} + options);
            QVERIFY2(run.status == status, run.err.c_str());
            if (status != kExitOk) {
                QVERIFY2(QString::fromStdString(run.err).startsWith(
                             "The trace file cannot be written: " + trace + ": "),
                         run.err.c_str());
                return;
            }
            QStringList lines = QString(contents(trace)).split('\n', Qt::SkipEmptyParts);
            QVERIFY(lines.size() > 4);
            QVERIFY2(lines.takeFirst().startsWith("# "), qPrintable(contents(trace)));
            QVERIFY2(lines[0].endsWith(" > 02 50 52 4F 47 52 41 4D"), qPrintable(lines[0]));
            static const QRegularExpression form("^\\d+\\.\\d{3} ([<>])( [0-9A-F]{2})+$");
            double before = 0;
            for (int i = 0; i < lines.size(); ++i) {
                const auto match = form.match(lines[i]);
                QVERIFY2(match.hasMatch(), qPrintable(lines[i]));
                QCOMPARE(match.captured(1), QString(i % 2 == 0 ? ">" : "<"));
                QVERIFY(lines[i].section(' ', 0, 0).toDouble() >= before);
                before = lines[i].section(' ', 0, 0).toDouble();
            }
        };
        row(Read, "-o out.bin");
        row(Write, "in.bin");
        row(Info, "");
        row(Tune, "--get");
        row(Read, "-o out.bin", "none/trace.txt", kExitFileRefused); // cannot be opened
        row(Write, "in.bin", "/dev/full", kExitFileRefused);         // opens, but takes no byte
    }

    // info --set-text --verify reads the radio information back: a block the
    // radio stored wrongly exits 7 and names the first differing address.
    void infoVerify() {
        const auto row = [this](const char* fault, int status, const char* message) {
            const auto sim = startSim(makeStartImage(), QString("--no-line-delay ") + fault);
            const auto run =
                runOn(Info, {"--port", sim->port(), "--set-text", "Fleet 7", "--verify"});
            QCOMPARE(run.status, status);
            const QString shown = QString::fromStdString(status == kExitOk ? run.out : run.err);
            QVERIFY2(shown.contains(message), qPrintable(shown));
        };
        row("", kExitOk, "Writing completed");
        // The third block of the write starts at 0x0310.
        row("--fault corrupt:3", kExitVerifyFailed,
            "Verify failed: the radio differs from what was written, first at 0x0310; "
            "differing bytes: 1.");
    }
};

QTEST_GUILESS_MAIN(TestTransferCommands)
#include "tst_transfer_commands.moc"
