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
    void report_data() {
        QTest::addColumn<QString>("input"); // the input file's name; "none": no file
        QTest::addColumn<QStringList>("options");
        QTest::addColumn<int>("status");
        const auto row = [](const char* name, const char* input, QStringList options, int status) {
            QTest::newRow(name) << input << options << status;
        };
        row("raw image", "in.bin", {"-o", "out.pdf"}, kExitOk);
        row("Chinese", "in.bin", {"-o", "out.pdf", "--lang", "zh"}, kExitOk);
        row("wrong file type", "in.k720", {"-o", "out.pdf"}, kExitFileRefused);
        row("missing file", "none", {"-o", "out.pdf"}, kExitFileRefused);
        row("no output", "in.bin", {}, kExitUsage);
    }
    void report() {
        QFETCH(QString, input);
        QFETCH(QStringList, options);
        QFETCH(int, status);
        QTemporaryDir dir;
        QRandomGenerator random(7);
        if (input != "none") // 1024 random bytes: a raw image, but no data file
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
        QVERIFY(status != kExitOk || (bytes.startsWith("%PDF") && bytes.contains("/FontFile2")));
    }
};

QTEST_GUILESS_MAIN(TestCliReport)
#include "tst_cli_report.moc"
