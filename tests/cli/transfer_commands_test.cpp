// zr310-cli read/write/info against zr310-sim over a real pseudo-terminal.
// The commands run in this process; the radio is the zr310-sim program.

#include "cli_test_util.h"
#include "transfer_commands.h"

#include <QProcess>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

namespace {

// A zr310-sim process serving a memory file.
class SimProcess {
public:
    SimProcess(const QString& memoryFile, const QStringList& options) {
        m_process.setProgram(QStringLiteral(ZR310_SIM_EXE));
        m_process.setArguments(QStringList{"--memory", memoryFile} + options);
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

RadioImage::Bytes readBytes(const QString& path) {
    RadioImage::Bytes bytes{};
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        file.read(reinterpret_cast<char*>(bytes.data()), qint64(bytes.size()));
    return bytes;
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
    void init();
    void read_data();
    void read();
    void write_data();
    void write();
    void info();
    void usage_data();
    void usage();
    void builtInRadio();

private:
    std::unique_ptr<QTemporaryDir> m_dir;
    QString path(const QString& name) const { return m_dir->filePath(name); }
};

void TestTransferCommands::init() {
    m_dir = std::make_unique<QTemporaryDir>();
    QVERIFY(m_dir->isValid());
}

void TestTransferCommands::read_data() {
    QTest::addColumn<QStringList>("simOptions");
    QTest::addColumn<QString>("output");
    QTest::addColumn<QString>("lang");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");

    const QStringList fast{"--no-line-delay"};
    QTest::newRow("raw image, paced line")
        << QStringList{} << "out.bin"
        << "en" << 0 << "Reading completed, press \"\"Enter\"\" to continue...";
    QTest::newRow("data file") << fast << "out.k720"
                               << "en" << 0 << "Reading completed";
    QTest::newRow("version 1.0") << fast + QStringList{"--version10"} << "out.bin"
                                 << "en" << 0 << "the radio's version is 1.0";
    QTest::newRow("silent") << fast + QStringList{"--fault", "silent"} << "out.bin"
                            << "en" << 3 << "Port has no response, please check connection \n";
    QTest::newRow("silent, Chinese") << fast + QStringList{"--fault", "silent"} << "out.bin"
                                     << "zh" << 3 << "端口没有响应";
    QTest::newRow("short ident") << fast + QStringList{"--fault", "short-ident"} << "out.bin"
                                 << "en" << 4 << "Please read again because of interruption!";
    QTest::newRow("bad lead") << fast + QStringList{"--fault", "bad-lead:3"} << "out.k720"
                              << "en" << 4 << "Please read again because of interruption!";
    QTest::newRow("drop") << fast + QStringList{"--fault", "drop:100"} << "out.bin"
                          << "zh" << 4 << "读频被中断，请重新读频！";
    QTest::newRow("noise") << fast + QStringList{"--fault", "noise"} << "out.bin"
                           << "en" << 3 << "Port has no response";
}

void TestTransferCommands::read() {
    QFETCH(QStringList, simOptions);
    QFETCH(QString, output);
    QFETCH(QString, lang);
    QFETCH(int, status);
    QFETCH(QString, message);

    QRandomGenerator random(7);
    const RadioImage radioImage = randomImage(random);
    writeRaw(path("radio.bin").toStdString(), radioImage);
    SimProcess sim(path("radio.bin"), simOptions);
    QVERIFY(!sim.port().empty());
    // A failed read must leave an existing output as it was.
    {
        QFile old(path(output));
        QVERIFY(old.open(QIODevice::WriteOnly));
        old.write("keep me");
    }

    const auto run =
        runCommand(runReadCommand, {"--port", sim.port(), "-o", path(output).toStdString(),
                                    "--lang", lang.toStdString()});
    QCOMPARE(run.status, status);
    const QString shown = QString::fromStdString(status == 0 ? run.out : run.err);
    QVERIFY2(shown.contains(message), qPrintable(shown));

    if (status != 0) {
        QCOMPARE(readBytes(path(output)).data()[0], std::uint8_t('k')); // "keep me"
        return;
    }
    RadioImage read;
    QVERIFY(openImageFile(path(output).toStdString(), read).ok());
    const auto expected = radioImage.toRadioOrder();
    // The last block is fetched but not kept: the start image's bytes stay.
    const auto start = makeStartImage();
    for (int a = 0; a < 1024; ++a)
        QCOMPARE(read.atAddress(a), a < 0x3F8 ? expected[a] : start.atAddress(a));
}

void TestTransferCommands::write_data() {
    QTest::addColumn<QStringList>("simOptions");
    QTest::addColumn<QStringList>("extra");
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("message");
    QTest::addColumn<bool>("radioWritten");

    const QStringList fast{"--no-line-delay"};
    QTest::newRow("write") << fast << QStringList{} << 0 << "Writing completed" << true;
    QTest::newRow("write, paced line")
        << QStringList{} << QStringList{} << 0 << "Writing completed" << true;
    QTest::newRow("version 1.0, not asked") << fast + QStringList{"--version10"} << QStringList{}
                                            << 6 << "is 1.0, some function can't be used" << false;
    QTest::newRow("version 1.0, --yes") << fast + QStringList{"--version10"} << QStringList{"--yes"}
                                        << 0 << "Writing completed" << true;
    QTest::newRow("drop") << fast + QStringList{"--fault", "drop:5"} << QStringList{} << 4
                          << "Please Write again because of interruption!" << false;
    QTest::newRow("silent") << fast + QStringList{"--fault", "silent"} << QStringList{} << 3
                            << "Port has no response" << false;
}

void TestTransferCommands::write() {
    QFETCH(QStringList, simOptions);
    QFETCH(QStringList, extra);
    QFETCH(int, status);
    QFETCH(QString, message);
    QFETCH(bool, radioWritten);

    QRandomGenerator random(11);
    const RadioImage radioImage = randomImage(random);
    const RadioImage fileImage = randomImage(random);
    writeRaw(path("radio.bin").toStdString(), radioImage);
    writeRaw(path("in.bin").toStdString(), fileImage);
    SimProcess sim(path("radio.bin"), simOptions);
    QVERIFY(!sim.port().empty());

    std::vector<std::string> args{"--port", sim.port(), path("in.bin").toStdString()};
    for (const auto& e : extra)
        args.push_back(e.toStdString());
    const auto run = runCommand(runWriteCommand, args);
    QCOMPARE(run.status, status);
    const QString shown = QString::fromStdString(status == 0 ? run.out : run.err);
    QVERIFY2(shown.contains(message), qPrintable(shown));

    // zr310-sim saves its memory after a completed write only.
    const auto before = radioImage.toRadioOrder();
    if (!radioWritten) {
        QCOMPARE(readBytes(path("radio.bin")), before);
        return;
    }
    QVERIFY(sim.waitForSave());
    const auto after = readBytes(path("radio.bin"));
    const auto sent = fileImage.toRadioOrder();
    const bool version10 = simOptions.contains("--version10");
    for (int a = 0; a < 1024; ++a) {
        if (a >= 0x3C0 && a < 0x3CE) // the date stamp
            QVERIFY(after[a] >= '0' && after[a] <= '9');
        else if (a == 0x2B0 && version10)
            QCOMPARE(after[a], std::uint8_t((sent[a] & 0x78) << 1));
        else
            QCOMPARE(after[a], inWriteBlocks(a) ? sent[a] : before[a]);
    }
}

void TestTransferCommands::info() {
    RadioImage radioImage = makeStartImage();
    for (int a = 0x3E0; a < 0x3F0; ++a)
        radioImage.setAtAddress(a, std::uint8_t('A' + a - 0x3E0));
    stampWriteDate(radioImage, {2007, 9, 21, 15, 30, 0});
    encodeUserText(radioImage, "old text");
    writeRaw(path("radio.bin").toStdString(), radioImage);
    SimProcess sim(path("radio.bin"), {"--no-line-delay"});
    QVERIFY(!sim.port().empty());

    auto json = runCommand(runInfoCommand, {"--port", sim.port(), "--json"});
    QCOMPARE(json.status, 0);
    const auto doc = QJsonDocument::fromJson(QByteArray::fromStdString(json.out)).object();
    QCOMPARE(doc["radio_id"].toString(), QString("ABCDEFGHIJKLMNOP"));
    QCOMPARE(doc["write_date"].toString(), QString("2007-09-21, 15:30:00"));
    QCOMPARE(doc["user_text"].toString(), QString("old text"));

    const auto set =
        runCommand(runInfoCommand, {"--port", sim.port(), "--set-text", "新しい text"});
    QCOMPARE(set.status, 0);
    QVERIFY(QString::fromStdString(set.out).contains("Writing completed"));
    const auto text = runCommand(runInfoCommand, {"--port", sim.port(), "--lang", "zh"});
    QCOMPARE(text.status, 0);
    const QString shown = QString::fromStdString(text.out);
    QVERIFY2(shown.contains("对讲机 ID: ABCDEFGHIJKLMNOP"), qPrintable(shown));
    QVERIFY2(shown.contains("最近写频日期: 2007-09-21, 15:30:00"), qPrintable(shown));
    QVERIFY2(shown.contains("新しい text"), qPrintable(shown));
}

void TestTransferCommands::usage_data() {
    QTest::addColumn<int>("command"); // 0 read, 1 write, 2 info
    QTest::addColumn<QStringList>("args");
    QTest::newRow("read without port") << 0 << QStringList{"-o", "x.bin"};
    QTest::newRow("read without output") << 0 << QStringList{"--port", "sim"};
    QTest::newRow("read to another format") << 0 << QStringList{"--port", "sim", "-o", "x.txt"};
    QTest::newRow("read, unknown option") << 0 << QStringList{"--port", "sim", "-o", "x.bin", "-q"};
    QTest::newRow("write without file") << 1 << QStringList{"--port", "sim"};
    QTest::newRow("write two files") << 1 << QStringList{"--port", "sim", "a.bin", "b.bin"};
    QTest::newRow("unknown language") << 1 << QStringList{"--port", "sim", "a.bin", "--lang", "fr"};
    QTest::newRow("text too long")
        << 2 << QStringList{"--port", "sim", "--set-text", QString(97, 'x')};
    QTest::newRow("json with set-text")
        << 2 << QStringList{"--port", "sim", "--json", "--set-text", "a"};
}

void TestTransferCommands::usage() {
    QFETCH(int, command);
    QFETCH(QStringList, args);
    std::vector<std::string> list;
    for (const auto& a : args)
        list.push_back(a.toStdString());
    const std::array commands{runReadCommand, runWriteCommand, runInfoCommand};
    const auto run = runCommand(commands[command], list);
    QCOMPARE(run.status, kExitUsage);
    QVERIFY(!run.err.empty());
}

void TestTransferCommands::builtInRadio() {
    // The write goes to the radio inside this process; a read-back of the
    // information shows what was written.
    const auto set = runCommand(runInfoCommand, {"--port", "sim", "--set-text", "written here"});
    QCOMPARE(set.status, 0);
    const auto json = runCommand(runInfoCommand, {"--port", "sim", "--json"});
    QCOMPARE(json.status, 0);
    const auto doc = QJsonDocument::fromJson(QByteArray::fromStdString(json.out)).object();
    QCOMPARE(doc["user_text"].toString(), QString("written here"));
    QCOMPARE(doc["radio_id"].toString(), QString("ZR310-EMU-0001"));
}

QTEST_GUILESS_MAIN(TestTransferCommands)
#include "transfer_commands_test.moc"
