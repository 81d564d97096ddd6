// zr310-cli export-csv / import-csv: the channels travel through a CSV file,
// and files that cannot be read or taken leave everything as it was.

#include "cli_test_util.h"
#include "csv_channels.h"
#include "csv_commands.h"
#include "image_edit.h"

#include <QFile>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

namespace {

// A VHF start image, with channels 2 and 9 set when asked.
RadioImage vhfImage(bool withChannels) {
    RadioImage image = makeStartImage();
    applyImageEdit(image, "CboBand", "136 - 174MHz");
    if (!withChannels)
        return image;
    for (const std::string_view edit :
         {"ch2.close=false", "ch2.no_tx=false", "ch2.rx_freq=145.5", "ch2.tx_freq=146.1",
          "ch2.rx_tone=-DCS 023", "ch9.close=false", "ch9.rx_freq=150.0125", "ch9.power=Low"})
        applyImageEdit(image, edit.substr(0, edit.find('=')), edit.substr(edit.find('=') + 1));
    return image;
}

} // namespace

class TestCliCsv : public QObject {
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(QDir::setCurrent(m_dir.path())); }

    void exportThenImport() {
        writeRaw("source.bin", vhfImage(true));
        writeRaw("fresh.bin", vhfImage(false));
        QCOMPARE(runCommand(runExportCsvCommand, {"source.bin", "-o", "out.csv"}).status, kExitOk);
        QCOMPARE(runCommand(runImportCsvCommand, {"fresh.bin", "out.csv"}).status, kExitOk);
        QCOMPARE(exportChannelsCsv(readRaw("fresh.bin")), exportChannelsCsv(vhfImage(true)));
    }

    // A refusal says what it refused and leaves the image file as it was.
    void refusals() {
        const auto row = [](bool import, const QStringList& args, int status, const char* message) {
            writeRaw("in.bin", vhfImage(true));
            QFile bad("bad.csv");
            QVERIFY(bad.open(QIODevice::WriteOnly) && bad.write("Location,Frequency\n1,440\n") > 0);
            bad.close();
            QFile nul("nul.csv");
            QVERIFY(nul.open(QIODevice::WriteOnly) &&
                    nul.write(QByteArray("Location,Frequency\n1,14\0"
                                         "5.5\n",
                                         28)) == 28);
            nul.close();
            const auto run =
                runCommand(import ? runImportCsvCommand : runExportCsvCommand, argList(args));
            QCOMPARE(run.status, status);
            QVERIFY2(QString::fromStdString(run.err).contains(message), run.err.c_str());
            QVERIFY(readRaw("in.bin") == vhfImage(true));
        };
        row(false, {"in.bin"}, kExitUsage, "-o OUT.csv");
        row(true, {"in.bin"}, kExitUsage, "IN.csv");
        row(true, {"in.bin", "none.csv"}, kExitFileRefused, "none.csv");
        row(true, {"in.bin", "bad.csv"}, kExitFileRefused,
            "bad.csv: line 2: 440.000000 MHz is outside the band 136 - 174MHz");
        // A NUL byte shows, and the message goes on after it.
        row(true, {"in.bin", "nul.csv"}, kExitFileRefused,
            "nul.csv: line 2: Frequency '14\\x005.5' is not a frequency in MHz\n");
    }

private:
    QTemporaryDir m_dir;
};

QTEST_APPLESS_MAIN(TestCliCsv)
#include "tst_cli_csv.moc"
