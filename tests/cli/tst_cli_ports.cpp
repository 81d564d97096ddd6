// zr310-cli ports --probe over several pseudo-terminals at once: emulated
// radios served by this process, a port the test holds open as another
// program would, and paths that are no serial port.

#include "cli_test_util.h"
#include "ports_command.h"
#include "simulated_radio.h"
#include "sizes.h"

#include <QJsonArray>
#include <QSerialPort>
#include <QtTest>

#include <sys/stat.h>

using namespace zr310;
using namespace zr310::testing;

namespace {

EmulatedRadio::Memory memoryOf(int seed) {
    EmulatedRadio::Memory memory{};
    for (int a = 0; a < EmulatedRadio::kMemorySize; ++a)
        memory[toIndex(a)] = std::uint8_t(a * 3 + seed);
    return memory;
}

CommandRun ports(const QStringList& args) {
    return runCommand(runPortsCommand, argList(args));
}

} // namespace

class TestCliPorts : public QObject {
    Q_OBJECT

    QTemporaryDir m_dir;
    std::vector<std::unique_ptr<SimulatedRadio>> m_radios;
    QSerialPort m_holder; // holds the "busy" radio's port, as another program would

    // A radio served on a pseudo-terminal; its device. Strict, it hears the
    // second probe's wake-up only if the first ended its session; one whose
    // identification is cut short is left mid-session, so it forgives.
    QString startRadio(bool version10, const char* fault) {
        EmulatedRadioOptions options{.version10 = version10,
                                     .fault = *RadioFault::parse(fault),
                                     .strict = std::string_view(fault) != "short-ident"};
        m_radios.push_back(
            std::make_unique<SimulatedRadio>(memoryOf(int(m_radios.size())), options));
        std::string error;
        if (!m_radios.back()->start(error))
            qFatal("no pseudo-terminal: %s", error.c_str());
        return QString::fromStdString(m_radios.back()->devicePath());
    }

private slots:
    // Every port of a row is given with --port, all in one command. `radio`
    // is what JSON says answered ("" for null), `reason` and `message` why
    // not (%1 the port), `cell` the Chinese table's radio column.
    void probe() {
        struct Row {
            QString port;
            const char *radio, *reason, *message, *cell;
        };
        QVERIFY(m_dir.isValid());
        const QString file = m_dir.filePath("radio.bin"), folder = m_dir.filePath("folder");
        const QString fifo = m_dir.filePath("fifo");
        QVERIFY(QFile(file).open(QIODevice::WriteOnly));
        QVERIFY(QDir().mkdir(folder));
        QVERIFY(::mkfifo(fifo.toLocal8Bit().constData(), 0600) == 0);
        const QString held = startRadio(false, "none");
        m_holder.setPortName(held);
        QVERIFY(m_holder.open(QIODevice::ReadWrite));
        const char* notSerial = "The port %1 cannot be opened: it is not a serial port.";
        const std::vector<Row> rows{
            {startRadio(false, "none"), "current", "", "", "当前版本"},
            {startRadio(true, "none"), "version 1.0", "", "", "V1.0版"},
            {startRadio(false, "silent"), "", "no answer", "", "无响应"},
            {startRadio(true, "short-ident"), "", "incomplete answer", "", "响应不完整"},
            {held, "", "busy",
             "The port %1 is in use by another program. Close that program, or choose another "
             "port.",
             "被占用"},
            {file, "", "not a serial port", notSerial, "不是串口"},
            {folder, "", "not a serial port", notSerial, "不是串口"},
            {fifo, "", "not a serial port", notSerial, "不是串口"},
            {m_dir.filePath("ttyNOPE0"), "", "no such port", "No such port: %1 does not exist.",
             "没有这个端口"},
        };
        QStringList args{"--probe", "--only"};
        for (const Row& row : rows)
            args << "--port" << row.port;

        const auto json = ports(args + QStringList{"--json"});
        QCOMPARE(json.status, kExitOk);
        QHash<QString, QJsonObject> found;
        for (const auto item : QJsonDocument::fromJson(QByteArray::fromStdString(json.out)).array())
            found.insert(item.toObject()["name"].toString(), item.toObject());
        const auto table = QString::fromStdString(ports(args + QStringList{"--lang", "zh"}).out);
        for (const Row& row : rows) {
            const QJsonObject port = found.value(row.port);
            QCOMPARE(port["radio"].toString(), QString(row.radio));
            QCOMPARE(port["radio"].isNull(), *row.radio == 0);
            QCOMPARE(port["reason"].toString(), QString(row.reason));
            const QString message = *row.message ? QString(row.message).arg(row.port) : "";
            QCOMPARE(port["message"].toString(), message);
            QCOMPARE(port["listed"].toBool(), false);
            const QRegularExpression line("^" + QRegularExpression::escape(row.port) + " +" +
                                              row.cell + "$",
                                          QRegularExpression::MultilineOption);
            QVERIFY2(table.contains(line), qPrintable(table));
        }
        QVERIFY2(table.contains(QString("无法打开端口 %1：它不是串口。\n").arg(fifo)),
                 qPrintable(table));

        // Twice probed, twice identified, and nothing read or written.
        for (std::size_t i = 0; i < m_radios.size(); ++i) {
            QVERIFY(m_radios[i]->memory() == memoryOf(int(i)));
            m_radios[i]->withRadio([](EmulatedRadio& radio) {
                QCOMPARE(radio.blocksWritten(), 0);
                QCOMPARE(radio.commits(), 0);
            });
        }
    }

    // Exit status 3 when no radio answered anywhere; without --probe nothing
    // is asked.
    void status() {
        const auto row = [](const QStringList& args, int status) {
            const auto run = ports(args);
            QVERIFY2(run.status == status, run.err.c_str());
            if (status == kExitOk && !args.contains("--probe"))
                QVERIFY(!QString::fromStdString(run.out).contains("radio"));
        };
        const QString silent = startRadio(false, "silent"), radio = startRadio(true, "none");
        row({"--probe", "--only", "--port", silent}, kExitNoResponse);
        row({"--probe", "--only", "--port", silent, "--port", radio}, kExitOk);
        row({"--json", "--port", silent}, kExitOk); // the system's ports are listed, not probed
        row({"--only"}, kExitUsage);
    }
};

QTEST_GUILESS_MAIN(TestCliPorts)
#include "tst_cli_ports.moc"
