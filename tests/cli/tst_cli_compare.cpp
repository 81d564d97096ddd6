// zr310-cli diff, and write refusing data that fails the checks before a
// write: refused before any port is opened.

#include "cli_test_util.h"
#include "compare_commands.h"
#include "image_edit.h"
#include "transfer_commands.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

class TestCliCompare : public QObject {
    Q_OBJECT

private:
    QTemporaryDir m_dir;

private slots:
    // `out` is what diff prints on stdout.
    void diff() {
        RadioImage b = makeStartImage();
        applyImageEdit(b, "CboSQ", "5");
        writeRaw(m_dir.filePath("a.bin").toStdString(), makeStartImage());
        writeRaw(m_dir.filePath("b.bin").toStdString(), b);
        const auto row = [this](QStringList args, int status, const char* out) {
            args.replaceInStrings(QRegularExpression("^(.*\\.bin)$"), m_dir.filePath("\\1"));
            const CommandRun run = runCommand(runDiffCommand, argList(args));
            QCOMPARE(run.status, status);
            QCOMPARE(QString::fromStdString(run.out), QString(out));
        };
        row({"a.bin", "a.bin"}, kExitOk, "");
        row({"a.bin", "b.bin"}, kExitDifferent, "CboSQ: 0 -> 5\n");
        row({"--json", "a.bin", "b.bin"}, kExitDifferent,
            "[\n  {\n    \"key\": \"CboSQ\",\n    \"a\": \"0\",\n    \"b\": \"5\"\n  }\n]\n");
        row({"a.bin", "none.bin"}, kExitFileRefused, "");
        row({"a.bin"}, kExitUsage, "");
    }

    // CH 1 open on 145.5 MHz, then the band 400 - 470MHz. The port does not
    // exist: reaching it would end in status 3.
    void writeRefusesFailedChecks() {
        RadioImage image = makeStartImage();
        for (const auto& [key, value] : {std::pair{"CboBand", "136 - 174MHz"},
                                         {"ch1.close", "false"},
                                         {"ch1.rx_freq", "145.5"},
                                         {"CboBand", "400 - 470MHz"}})
            applyImageEdit(image, key, value);
        writeRaw(m_dir.filePath("w.bin").toStdString(), image);
        const QStringList args{"--port", "/nonexistent/ttyZR310", m_dir.filePath("w.bin")};
        const CommandRun refused = runCommand(runWriteCommand, argList(args));
        QCOMPARE(refused.status, kExitChecksFailed);
        QVERIFY2(refused.err.starts_with(
                     "error: ch1.rx_freq: 145.50000 MHz is outside the band 400 - 470MHz\n"),
                 refused.err.c_str());
        QCOMPARE(runCommand(runWriteCommand, argList(args + QStringList{"--force"})).status,
                 kExitNoResponse);
    }
};

QTEST_GUILESS_MAIN(TestCliCompare)
#include "tst_cli_compare.moc"
