// zr310-cli read/write/info/tune against zr310-sim over a real pseudo-terminal.
// The commands run in this process; the radio is the zr310-sim program.

#include "backup.h"
#include "cli_test_util.h"
#include "radio_info.h"
#include "transfer_commands.h"
#include "tune_command.h"
#include "tuning.h"

#include <QProcess>
#include <QtTest>

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
            m_port = line.mid(4).toStdString();
    }
    ~SimProcess() {
        m_process.terminate();
        if (!m_process.waitForFinished(10'000))
            m_process.kill();
    }
    const std::string& port() const { return m_port; }

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
    std::string m_port;
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

} // namespace

class TestTransferCommands : public QObject {
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void read_data();
    void read();
    void readWhenTheBackupFails();
    void write_data();
    void write();
    void fleet();
    void info();
    void tune_data();
    void tune();
    void usage_data();
    void usage();
    void unreachablePort_data();
    void unreachablePort();
    void trace_data();
    void trace();

private:
    QTemporaryDir m_dataHome; // XDG_DATA_HOME: the backups of every read go there
    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString& name) const { return m_dir->filePath(name); }
};

void TestTransferCommands::initTestCase() {
    QVERIFY(m_dataHome.isValid());
    qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8()); // never the real home
}

void TestTransferCommands::init() {
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestTransferCommands::read_data() {
    QTest::addColumn<QString>("simOptions");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("lang");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    auto row = [](const char* name, const QString& sim, const char* output, const char* lang,
                  int status, const QString& message) {
        QTest::newRow(name) << sim << QString(output) << QString(lang) << status << message;
    };
    const QString fast = "--no-line-delay ",
                  readAgain = "Please read again because of interruption!";
    row("raw image, paced line", "", "out.bin", "en", 0, "Reading completed\n");
    row("data file", fast, "out.k720", "en", 0, "Reading completed");
    row("version 1.0", fast + "--version10", "out.bin", "en", 0, "the radio's version is 1.0");
    row("silent", fast + "--fault silent", "out.bin", "en", 3,
        "Port has no response, please check connection \n");
    row("silent, Chinese", fast + "--fault silent", "out.bin", "zh", 3, "端口没有响应");
    row("short ident", fast + "--fault short-ident", "out.bin", "en", 4, readAgain);
    row("bad lead", fast + "--fault bad-lead:3", "out.k720", "en", 4, readAgain);
    row("drop", fast + "--fault drop:100", "out.bin", "zh", 4, "读频被中断，请重新读频！");
    row("noise", fast + "--fault noise", "out.bin", "en", 3, "Port has no response");
}

void TestTransferCommands::read() {
    QFETCH(QString, simOptions);
    QFETCH(QString, output);
    QFETCH(QString, lang);
    QFETCH(int, status);
    QFETCH(QString, message);

    QRandomGenerator random(7);
    RadioImage radioImage = randomImage(random);
    const QByteArray radioId = "FLEET 7/North";
    for (int i = 0; i < 16; ++i)
        radioImage.setAtAddress(kRadioIdAddress + i, i < radioId.size() ? radioId[i] : 0x00);
    writeRaw(path("radio.bin").toStdString(), radioImage);
    SimProcess sim(path("radio.bin"), simOptions);
    QVERIFY(!sim.port().empty());
    std::ofstream(path(output).toStdString()) << "keep me"; // a failed read leaves it so
    const QDir backups(m_dataHome.filePath("zr310/backups"));
    const QStringList backupsBefore = backups.entryList(QDir::Files);

    const auto run =
        runCommand(runReadCommand, {"--port", sim.port(), "-o", path(output).toStdString(),
                                    "--lang", lang.toStdString()});
    QCOMPARE(run.status, status);
    const QString shown = QString::fromStdString(status == 0 ? run.out : run.err);
    QVERIFY2(shown.contains(message), qPrintable(shown));
    QStringList newBackups = backups.entryList(QDir::Files);
    for (const QString& name : backupsBefore)
        newBackups.removeOne(name);
    if (status != 0) {
        QCOMPARE(contents(path(output)), QByteArray("keep me"));
        QCOMPARE(newBackups, QStringList()); // nothing was read
        return;
    }
    RadioImage read;
    QVERIFY(openImageFile(path(output).toStdString(), read).ok());
    const auto expected = radioImage.toRadioOrder();
    // The last block is fetched but not kept: the start image's bytes stay.
    const auto start = makeStartImage();
    for (int a = 0; a < 1024; ++a)
        QCOMPARE(read.atAddress(a), a < 0x3F8 ? expected[a] : start.atAddress(a));

    // One backup more, named by the time and the radio ID, holding every
    // byte that was read; the command says where it is.
    QCOMPARE(newBackups.size(), 1);
    const QString backup = backups.filePath(newBackups.front());
    QVERIFY2(QRegularExpression(R"(^\d{4}-\d\d-\d\d_\d{6}_FLEET_7_North(-\d+)?\.k720$)")
                 .match(newBackups.front())
                 .hasMatch(),
             qPrintable(newBackups.front()));
    const QString said =
        (lang == "zh" ? QString("读出数据的备份：") : QString("Backup of the data read:")) + ' ' +
        backup + '\n';
    QVERIFY2(QString::fromStdString(run.out).endsWith(said), run.out.c_str());
    QCOMPARE(contents(backup).size(), 1360);
    RadioImage backedUp;
    QVERIFY(openDataFile(backup.toStdString(), backedUp).ok());
    QVERIFY(backedUp == read);
}

// A backup that cannot be saved is a warning; the read itself is done.
void TestTransferCommands::readWhenTheBackupFails() {
    std::ofstream(path("not-a-folder").toStdString()) << "x";
    qputenv("XDG_DATA_HOME", path("not-a-folder").toUtf8());
    writeRaw(path("radio.bin").toStdString(), makeStartImage());
    SimProcess sim(path("radio.bin"), "--no-line-delay");
    QVERIFY(!sim.port().empty());
    const auto run =
        runCommand(runReadCommand, {"--port", sim.port(), "-o", path("out.k720").toStdString()});
    qputenv("XDG_DATA_HOME", m_dataHome.path().toUtf8());
    QCOMPARE(run.status, 0);
    QVERIFY2(QString::fromStdString(run.out).contains("Reading completed"), run.out.c_str());
    QVERIFY2(QString::fromStdString(run.err).startsWith(
                 "The backup of the data read could not be saved: cannot create the folder " +
                 path("not-a-folder/zr310/backups")),
             run.err.c_str());
    RadioImage read;
    QVERIFY(openImageFile(path("out.k720").toStdString(), read).ok());
    QVERIFY(read == makeStartImage());
}

void TestTransferCommands::write_data() {
    QTest::addColumn<QString>("simOptions");
    QTest::addColumn<QString>("extra");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    auto row = [](const char* name, const QString& sim, const char* extra, int status,
                  const char* message) {
        QTest::newRow(name) << sim << QString(extra) << status << QString(message);
    };
    const QString fast = "--no-line-delay ";
    row("write, paced line", "", "", 0, "Writing completed\n");
    row("version 1.0, not asked", fast + "--version10", "", 6, "Give --yes to write it anyway.");
    row("version 1.0, --yes", fast + "--version10", "--yes", 0, "Writing completed");
    row("drop", fast + "--fault drop:5", "", 4, "Please Write again because of interruption!");
    row("silent", fast + "--fault silent", "", 3, "Port has no response");
    row("verify", fast, "--verify --force", 0, "Writing completed");
    row("verify, version 1.0", fast + "--version10", "--verify --yes --force", 0,
        "Writing completed");
    row("verify, block 7 stored wrong", fast + "--fault corrupt:7", "--verify --force", 7,
        "first at 0x0030; differing bytes: 1.");
    row("verify, block 38 stored wrong", fast + "--fault corrupt:38", "--verify --force", 7,
        "first at 0x03C8; differing bytes: 1.");
}

void TestTransferCommands::write() {
    QFETCH(QString, simOptions);
    QFETCH(QString, extra);
    QFETCH(int, status);
    QFETCH(QString, message);

    QRandomGenerator random(11);
    const RadioImage radioImage = randomImage(random);
    const RadioImage fileImage = randomImage(random);
    writeRaw(path("radio.bin").toStdString(), radioImage);
    writeRaw(path("in.bin").toStdString(), fileImage);
    SimProcess sim(path("radio.bin"), simOptions);
    QVERIFY(!sim.port().empty());

    std::vector<std::string> args{"--port", sim.port(), path("in.bin").toStdString()};
    if (!extra.contains("--force"))
        args.push_back("--force"); // random bytes fail the checks before a write
    for (const QString& arg : extra.split(' ', Qt::SkipEmptyParts))
        args.push_back(arg.toStdString());
    const auto run = runCommand(runWriteCommand, args);
    QCOMPARE(run.status, status);
    const QString shown = QString::fromStdString(status == 0 ? run.out : run.err);
    QVERIFY2(shown.contains(message), qPrintable(shown));

    // zr310-sim saves its memory after a completed write only.
    const auto before = radioImage.toRadioOrder();
    if (status != 0 && status != kExitVerifyFailed) {
        QCOMPARE(readRaw(path("radio.bin").toStdString()).toRadioOrder(), before);
        return;
    }
    QVERIFY(sim.waitForSave());
    const auto after = readRaw(path("radio.bin").toStdString()).toRadioOrder();
    const auto sent = fileImage.toRadioOrder();
    // corrupt:N stored the first byte of write block N inverted.
    const int corrupted = !simOptions.contains("corrupt")    ? -1
                          : simOptions.contains("corrupt:7") ? 0x30
                                                             : 0x3C8;
    for (int a = 0; a < 1024; ++a) {
        if (a >= 0x3C0 && a < 0x3CE) // the date stamp
            QCOMPARE(after[a] >= '0' && after[a] <= '9', a != corrupted);
        else if (a == corrupted)
            QCOMPARE(after[a], std::uint8_t(~sent[a]));
        else if (a == 0x2B0 && simOptions.contains("--version10"))
            QCOMPARE(after[a], std::uint8_t((sent[a] & 0x78) << 1));
        else
            QCOMPARE(after[a], inWriteBlocks(a) ? sent[a] : before[a]);
    }
}

// Four radios written at once: each gets its own line, in the order given,
// and the exit status is the worst of them; the silent one stops nobody.
void TestTransferCommands::fleet() {
    QRandomGenerator random(12);
    const RadioImage fileImage = randomImage(random);
    writeRaw(path("in.bin").toStdString(), fileImage);
    const QStringList faults{"", "--fault silent", "--fault corrupt:7", "--version10"};
    std::vector<std::unique_ptr<SimProcess>> sims;
    std::vector<std::string> args{path("in.bin").toStdString(), "--verify", "--force"};
    for (int i = 0; i < faults.size(); ++i) {
        const QString memory = path(QStringLiteral("radio%1.bin").arg(i));
        writeRaw(memory.toStdString(), randomImage(random));
        sims.push_back(std::make_unique<SimProcess>(memory, "--no-line-delay " + faults[i]));
        QVERIFY(!sims.back()->port().empty());
        args.insert(args.end(), {"--port", sims.back()->port()});
    }
    const auto run = runCommand(runWriteCommand, args);
    QCOMPARE(run.status, kExitVerifyFailed);
    const QStringList lines = QString::fromStdString(run.out).split('\n', Qt::SkipEmptyParts);
    const QStringList expected{"Writing completed", "Port has no response",
                               "first at 0x0030; differing bytes: 1.", "Give --yes"};
    QCOMPARE(lines.size(), expected.size());
    for (int i = 0; i < expected.size(); ++i) {
        QVERIFY2(lines[i].startsWith(QString::fromStdString(sims[i]->port()) + ": ") &&
                     lines[i].contains(expected[i]),
                 qPrintable(lines[i]));
    }
    QVERIFY(sims[0]->waitForSave());
    const auto written = readRaw(path("radio0.bin").toStdString()).toRadioOrder();
    const auto sent = fileImage.toRadioOrder();
    QVERIFY(std::equal(sent.begin(), sent.begin() + 0x100, written.begin()));
}

// On the radio built into the program ("sim"): the write sends the text and
// leaves the radio ID and the write date as they were.
void TestTransferCommands::info() {
    const auto set = runCommand(runInfoCommand, {"--port", "sim", "--set-text", "新しい text"});
    QCOMPARE(set.status, 0);
    QVERIFY(QString::fromStdString(set.out).contains("Writing completed"));
    const auto json = runCommand(runInfoCommand, {"--port", "sim", "--json"});
    QCOMPARE(json.status, 0);
    const auto doc = QJsonDocument::fromJson(QByteArray::fromStdString(json.out)).object();
    QCOMPARE(doc["radio_id"].toString(), QString("ZR310-EMU-0001"));
    QCOMPARE(doc["write_date"].toString(), QString("2006-05-18, 09:30:00"));
    QCOMPARE(doc["user_text"].toString(), QString("新しい text"));
    const auto text = runCommand(runInfoCommand, {"--port", "sim", "--lang", "zh"});
    QCOMPARE(text.status, 0);
    const QString shown = QString::fromStdString(text.out);
    QVERIFY2(shown.contains("最近写频日期: 2006-05-18, 09:30:00"), qPrintable(shown));
}

// Stored in the radio: low_battery 10, squelch9 20, squelch3 30,
// ctcss_deviation 40, cdcss_deviation 50 (radio addresses 0x2F0..0x2F4).
void TestTransferCommands::tune_data() {
    QTest::addColumn<QString>("simOptions");
    QTest::addColumn<QStringList>("args");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("shown");  // on stdout, or stderr when failed
    QTest::addColumn<QString>("stored"); // radio addresses 0x2F0..0x2F4 afterwards
    const auto row = [](const char* name, const char* sim, const char* args, int status,
                        const char* shown, const char* stored = "0a141e2832") {
        QTest::newRow(name) << QString(sim) << QString(args).split(' ') << status << QString(shown)
                            << QString(stored);
    };
    row("get", "", "--get", 0, "squelch3: 30\nctcss_deviation: 40\n");
    row("get, json", "", "--get --json", 0, "\"tuning\": {\n    \"low_battery\": 10,");
    row("keep", "", "squelch9=0x45 cdcss_deviation=200 --keep", 0,
        "squelch9: before 20, after 69\ncdcss_deviation: before 50, after 200\n", "0a451e28c8");
    row("cancel", "", "squelch3=0 squelch3=255", 0, "squelch3: before 30, after 30\n");
    row("write test channels", "", "--write-test in.bin", 0, "Writing completed");
    row("silent radio", "--fault silent", "--get", 3, "Port has no response");
    row("radio refusing", "--fault refuse-tuning", "squelch9=1 --keep", 8, "Tuning error");
}

void TestTransferCommands::tune() {
    QFETCH(QString, simOptions);
    QFETCH(QStringList, args);
    QFETCH(int, status);
    QFETCH(QString, shown);
    QFETCH(QString, stored);
    QRandomGenerator random(13);
    RadioImage radioImage = randomImage(random);
    for (int i = 0; i < 5; ++i)
        setTuningValue(radioImage, kTuningItems[i].item, std::uint8_t(10 * (i + 1)));
    const RadioImage fileImage = randomImage(random);
    writeRaw(path("radio.bin").toStdString(), radioImage);
    writeRaw(path("in.bin").toStdString(), fileImage);
    SimProcess sim(path("radio.bin"), "--no-line-delay " + simOptions);
    QVERIFY(!sim.port().empty());

    args.replaceInStrings("in.bin", path("in.bin"));
    const auto run = runCommand(
        runTuneCommand, argList(QStringList{"--port", QString::fromStdString(sim.port())} + args));
    QVERIFY2(run.status == status, run.err.c_str());
    QVERIFY2(QString::fromStdString(status == 0 ? run.out : run.err).contains(shown),
             (run.out + run.err).c_str());

    // zr310-sim saves its memory after a confirmed value and a completed write only.
    const bool writesTest = args.contains("--write-test");
    if (status == 0 && (args.contains("--keep") || writesTest))
        QVERIFY(sim.waitForSave());
    const auto after = readRaw(path("radio.bin").toStdString()).toRadioOrder();
    QCOMPARE(QByteArray(reinterpret_cast<const char*>(after.data()) + 0x2F0, 5).toHex(),
             stored.toLatin1());
    const auto before = radioImage.toRadioOrder(), test = fileImage.toRadioOrder();
    for (int a = 0x100; a < 0x1B0; ++a)
        QCOMPARE(after[a], writesTest ? test[a] : before[a]);
}

void TestTransferCommands::usage_data() {
    QTest::addColumn<int>("command"); // 0 read, 1 write, 2 info, 3 tune
    QTest::addColumn<QStringList>("args");
    QTest::newRow("read without port") << 0 << QStringList{"-o", "x.bin"};
    QTest::newRow("write without file") << 1 << QStringList{"--port", "sim"};
    QTest::newRow("unknown language") << 1 << QStringList{"--port", "sim", "a.bin", "--lang", "fr"};
    QTest::newRow("text too long")
        << 2 << QStringList{"--port", "sim", "--set-text", QString(97, 'x')};
    QTest::newRow("json with set-text")
        << 2 << QStringList{"--port", "sim", "--json", "--set-text", "a"};
    QTest::newRow("write: same port twice")
        << 1 << QStringList{"-p", "sim", "--port", "sim", "a.bin"};
    QTest::newRow("write: trace of a fleet")
        << 1 << QStringList{"-p", "sim", "-p", "COM2", "--trace", "t.txt", "a.bin"};
    QTest::newRow("read: two ports") << 0 << QStringList{"-p", "sim", "-p", "COM2", "-o", "x.bin"};
    // A port that is not there: had anything been sent, the status would be 3.
    const QString none = "/dev/zr310-no-such-port";
    for (const auto& [name, args] : std::initializer_list<std::pair<const char*, QStringList>>{
             {"tune: unknown item", {"squelch9=1", "squelch7=1"}},
             {"tune: value above 255", {"squelch9=256"}},
             {"tune: two forms", {"--get", "squelch9=1"}}})
        QTest::newRow(name) << 3 << QStringList{"--port", none} + args;
}

void TestTransferCommands::usage() {
    QFETCH(int, command);
    QFETCH(QStringList, args);
    std::vector<std::string> list;
    for (const auto& a : args)
        list.push_back(a.toStdString());
    const std::array commands{runReadCommand, runWriteCommand, runInfoCommand, runTuneCommand};
    const auto run = runCommand(commands[command], list);
    QCOMPARE(run.status, kExitUsage);
    QVERIFY(!run.err.empty());
}

// A port that cannot be opened: exit status 3, and the message says why.
void TestTransferCommands::unreachablePort_data() {
    QTest::addColumn<int>("command"); // 0 read, 2 info, 3 tune
    QTest::addColumn<QString>("port");
    QTest::addColumn<QString>("lang");
    QTest::addColumn<QString>("message"); // %1: the port
    const auto row = [](const char* name, int command, const char* port, const char* lang,
                        const char* message) {
        QTest::newRow(name) << command << QString(port) << QString(lang) << QString(message);
    };
    const char* none = "No such port: %1 does not exist.";
    row("read: no such port", 0, "/dev/ttyNOPE0", "en", none);
    row("info: no such port", 2, "/dev/ttyNOPE0", "zh", "没有这个端口：%1 不存在。");
    row("tune: no such port", 3, "/dev/ttyNOPE0", "en", none);
}

void TestTransferCommands::unreachablePort() {
    QFETCH(int, command);
    QFETCH(QString, port);
    QFETCH(QString, lang);
    QFETCH(QString, message);
    std::vector<std::string> args{"--port", port.toStdString(), "--lang", lang.toStdString()};
    if (command == 0)
        args.insert(args.end(), {"-o", path("out.bin").toStdString()});
    if (command == 3)
        args.push_back("--get");
    const std::array commands{runReadCommand, runWriteCommand, runInfoCommand, runTuneCommand};
    const auto run = runCommand(commands[command], args);
    QCOMPARE(run.status, kExitNoResponse);
    QVERIFY2(QString::fromStdString(run.err).contains(message.arg(port)), run.err.c_str());
}

void TestTransferCommands::trace_data() {
    QTest::addColumn<int>("command"); // 0 read, 1 write, 2 info, 3 tune
    QTest::addColumn<QString>("args");
    QTest::addColumn<int>("status");
    const auto row = [](const char* name, int command, const char* args, int status = 0) {
        QTest::newRow(name) << command << QString(args) << status;
    };
    row("read", 0, "-o out.bin");
    row("write", 1, "in.bin");
    row("info", 2, "");
    row("tune", 3, "--get");
    row("trace not writable", 0, "-o out.bin", kExitFileRefused);
}

// One line a packet sent and one for the reply, from the wake-up on.
void TestTransferCommands::trace() {
    QFETCH(int, command);
    QFETCH(QString, args);
    QFETCH(int, status);
    writeRaw(path("radio.bin").toStdString(), makeStartImage());
    writeRaw(path("in.bin").toStdString(), makeStartImage());
    SimProcess sim(path("radio.bin"), "--no-line-delay");
    QVERIFY(!sim.port().empty());
    const QString trace = status == 0 ? path("trace.txt") : path("none/trace.txt");
    const std::array commands{runReadCommand, runWriteCommand, runInfoCommand, runTuneCommand};
    const auto run = runCommand(
        commands[command],
        argList(QStringList{"--port", QString::fromStdString(sim.port()), "--trace", trace} +
                args.replace("in.bin", path("in.bin"))
                    .replace("out.bin", path("out.bin"))
                    .split(' ', Qt::SkipEmptyParts)));
    QVERIFY2(run.status == status, run.err.c_str());
    if (status != 0)
        return;
    const QStringList lines = QString(contents(trace)).split('\n', Qt::SkipEmptyParts);
    QVERIFY(lines.size() > 4);
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
}

QTEST_GUILESS_MAIN(TestTransferCommands)
#include "transfer_commands_test.moc"
