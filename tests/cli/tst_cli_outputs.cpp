// zr310-cli as a program, on the files it writes: every command that writes an
// OUT follows one rule for what may stand there, and edits of one file by
// several programs at once all end up in it.

#include "cli_test_util.h"
#include "csv_channels.h"
#include "file_lock.h"
#include "image_edit.h"

#include <QtTest>

#include <sys/stat.h>

using namespace zr310;
using namespace zr310::testing;

namespace {

const QString kCli = QStringLiteral(ZR310_CLI_EXE);

QByteArray contents(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// An edit of radio.bin: {"set", KEY=VALUE} or {"import-csv", "N,MHZ"} (one
// CSV row). Applies it to `expected` and gives the command line's arguments.
QStringList edit(const QStringList& what, int n, RadioImage& expected, const QTemporaryDir& dir) {
    QString argument = what[1];
    if (what[0] == "set") {
        applyImageEdit(expected, what[1].section('=', 0, 0).toStdString(),
                       what[1].section('=', 1).toStdString());
    } else {
        const QByteArray csv = "Location,Frequency\n" + what[1].toUtf8() + '\n';
        importChannelsCsv(expected, csv.toStdString());
        argument = dir.filePath(QString("%1.csv").arg(n));
        QFile file(argument);
        if (!file.open(QIODevice::WriteOnly) || file.write(csv) != csv.size())
            qWarning("cannot write %s", qPrintable(argument));
    }
    return {what[0], dir.filePath("radio.bin"), argument};
}

} // namespace

class TestCliOutputs : public QObject {
    Q_OBJECT

private slots:
    // Each command that writes an OUT, with what stands there: an existing
    // file (replaced only with --force, exit 2 and unchanged without), or
    // what no save can replace (exit 5 before any work, even for read: the
    // port given then does not exist, which would exit 3).
    void outputRules() {
        enum There { File, FileForced, NoFolder, Folder, Fifo };
        const auto row = [](QStringList args, There there, int status, const QString& message) {
            QTemporaryDir dir;
            writeRaw(dir.filePath("in.bin").toStdString(), makeStartImage());
            QFile csv(dir.filePath("in.csv"));
            QVERIFY(csv.open(QIODevice::WriteOnly) && csv.write("Location,Frequency\n2,151.5\n"));
            csv.close();
            const QString suffix = args.takeFirst();
            const QString out = dir.filePath(there == NoFolder ? "none/out" : "out") + suffix;
            if (there == File || there == FileForced)
                std::ofstream(out.toStdString()) << "keep me";
            QVERIFY(there != Folder || QDir(dir.path()).mkdir("out" + suffix));
            QVERIFY(there != Fifo || ::mkfifo(out.toLocal8Bit().constData(), 0600) == 0);
            args.replaceInStrings("IN", dir.filePath("in")).replaceInStrings("OUT", out);
            args.replaceInStrings("PORT", there == FileForced ? "sim" : "/dev/zr310-no-such-port");
            if (there == FileForced)
                args << "--force";

            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.insert("XDG_DATA_HOME", dir.filePath("data")); // the backup of read
            const ProgramRun run = runProgram(kCli, args, dir.path(), env);
            QVERIFY2(run.status == status, qPrintable(args.join(' ') + ": " + run.err));
            const QString said = QString(message).replace("%1", out).replace("%2", dir.path());
            QVERIFY2(run.err.contains(said), qPrintable(run.err));
            if (there == File || there == FileForced)
                QCOMPARE(contents(out) == "keep me", there == File);
            const auto type = std::filesystem::symlink_status(out.toStdString()).type();
            QCOMPARE(type == std::filesystem::file_type::not_found, there == NoFolder);
            QCOMPARE(type == std::filesystem::file_type::directory, there == Folder);
            QCOMPARE(type == std::filesystem::file_type::fifo, there == Fifo);
        };
        // The first item is OUT's suffix.
        const QList<QStringList> commands{
            {".k720", "new", "OUT"},
            {".k720", "set", "IN.bin", "CboSQ=3", "-o", "OUT"},
            {".k720", "import-csv", "IN.bin", "IN.csv", "-o", "OUT"},
            {".csv", "export-csv", "IN.bin", "-o", "OUT"},
            {".pdf", "report", "IN.bin", "-o", "OUT"},
            {".k720", "read", "--port", "PORT", "-o", "OUT"},
        };
        for (const QStringList& command : commands) {
            row(command, File, kExitUsage, "%1 already exists (add --force to replace it)");
            row(command, FileForced, kExitOk, "");
            row(command, NoFolder, kExitFileRefused,
                "cannot write %1: the folder %2/none does not exist");
            row(command, Folder, kExitFileRefused, "cannot write %1: it is a folder, not a file");
            row(command, Fifo, kExitFileRefused,
                "cannot write %1: it is a device, pipe or socket, not a file");
        }
    }

    // set and import-csv of one file, all started at once: each waits for the
    // one before it, and every edit is in the file afterwards.
    void editsAtOnce() {
        const auto row = [](const QList<QStringList>& edits) {
            QTemporaryDir dir;
            RadioImage expected = makeStartImage();
            writeRaw(dir.filePath("radio.bin").toStdString(), expected);
            std::vector<std::unique_ptr<QProcess>> runs;
            for (int n = 0; n < edits.size(); ++n) {
                runs.push_back(std::make_unique<QProcess>());
                runs.back()->start(kCli, edit(edits[n], n, expected, dir));
            }
            for (auto& process : runs) {
                const ProgramRun run = finishProgram(*process);
                QVERIFY2(run.status == kExitOk, qPrintable(run.err));
            }
            QVERIFY(readRaw(dir.filePath("radio.bin").toStdString()) == expected);
            QCOMPARE(QDir(dir.path()).entryList(QDir::Files).filter("radio"),
                     QStringList{"radio.bin"}); // no lock file or temporary file left
        };
        QList<QStringList> sets, mixed;
        for (int n = 1; n <= 8; ++n) {
            sets.append({"set", QString("ch%1.close=false").arg(n)});
            mixed.append(n % 2 ? QStringList{"set", QString("ch%1.power=Low").arg(n)}
                               : QStringList{"import-csv", QString("%1,15%1.5").arg(n)});
        }
        row(sets);
        row(mixed);
    }

    // A lock another program holds refuses the edit after a wait; the empty
    // lock file a killed holder leaves behind does not.
    void lockedFile() {
        const auto row = [](bool held, int status, const QString& message) {
            QTemporaryDir dir;
            const RadioImage before = makeStartImage();
            RadioImage edited = before;
            const QString file = dir.filePath("radio.bin");
            writeRaw(file.toStdString(), before);
            auto holder = std::make_unique<FileLock>();
            QCOMPARE(holder->acquire(file.toStdString(), std::chrono::milliseconds(0)),
                     FileLock::Status::Held);
            const QString lockFile = QString::fromStdString(holder->lockPath().string());
            if (!held) { // released as a killed holder's is, the file left behind
                holder.reset();
                QVERIFY(QFile(lockFile).open(QIODevice::WriteOnly));
            }
            const ProgramRun run =
                runProgram(kCli, edit({"set", "ch1.close=false"}, 0, edited, dir), dir.path());
            QCOMPARE(run.status, status);
            QVERIFY2(run.err.contains(QString(message).replace("%1", file)), qPrintable(run.err));
            QVERIFY(readRaw(file.toStdString()) == (status == kExitOk ? edited : before));
        };
        row(true, kExitFileRefused,
            "cannot edit %1: another program is changing it (waited 5 seconds for its lock");
        row(false, kExitOk, "");
    }
};

QTEST_GUILESS_MAIN(TestCliOutputs)
#include "tst_cli_outputs.moc"
