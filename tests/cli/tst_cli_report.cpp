// zr310-cli report as a program with no display to reach: a PDF with its font
// embedded, or nothing at all for a refused input file.

#include "cli_test_util.h"

#include <QProcess>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

class TestCliReport : public QObject {
    Q_OBJECT

private slots:
    // `input` names the input file: 1024 random bytes, a raw image but no data file.
    void report() {
        const auto row = [](const char* input, const QStringList& options, int status) {
            QTemporaryDir dir;
            QRandomGenerator random(7);
            writeRaw(dir.filePath(input).toStdString(), randomImage(random));
            QProcess cli;
            QProcessEnvironment env = QProcessEnvironment::systemEnvironment();
            env.remove("QT_QPA_PLATFORM");
            env.insert("DISPLAY", ":99"); // not there: the report must not need it
            cli.setProcessEnvironment(env);
            cli.setWorkingDirectory(dir.path());
            cli.start(ZR310_CLI_EXE, QStringList{"report", dir.filePath(input)} + options);
            QVERIFY(cli.waitForFinished(60000));
            QCOMPARE(cli.exitCode(), status);
            QFile pdf(dir.filePath("out.pdf"));
            QCOMPARE(pdf.open(QIODevice::ReadOnly), status == kExitOk);
            const QByteArray bytes = pdf.readAll();
            QVERIFY(status != kExitOk ||
                    (bytes.startsWith("%PDF") && bytes.contains("/FontFile2")));
        };
        row("in.bin", {"-o", "out.pdf"}, kExitOk);
        row("in.k720", {"-o", "out.pdf"}, kExitFileRefused);
        row("in.bin", {}, kExitUsage);
    }
};

QTEST_GUILESS_MAIN(TestCliReport)
#include "tst_cli_report.moc"
