// Channels as CSV: what the importer makes of the files other programs and
// spreadsheets write, and what it refuses. That an export imports back to the
// same bytes is the fuzz target fuzz_csv_import's.

#include "../model/model_test_util.h"
#include "csv_channels.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

// The texts of the fields a row carries: all but the busy lock, and the
// transmit frequency only while the channel may transmit.
QString carried(const RadioImage& image, int n) {
    QStringList texts;
    const bool tx = ChannelView(image, channelColumn(n)).txAllowed();
    for (ChannelField field : kChannelFields)
        if (field != ChannelField::BusyLock && (tx || field != ChannelField::TxFreq))
            texts << qs(channelFieldText(image, channelColumn(n), field, Language::English));
    return texts.join('|');
}

} // namespace

class TestCsv : public QObject {
    Q_OBJECT

private slots:
    // A file taken sets CH `n` to RX freq|RX tone|TX freq (unless No TX)|TX tone|
    // Scan|Power|W/N|Close|No TX, and the busy lock and other channels keep
    // theirs. A file refused gives its message and changes nothing.
    void imports() {
        QRandomGenerator rng(7);
        const RadioImage before = randomChannels(rng, 2);
        const auto row = [&before](const QByteArray& csv, int n, const QString& expected) {
            RadioImage image = before; // n = 0: refused
            try {
                QCOMPARE(importChannelsCsv(image, csv.toStdString()), 1);
                QVERIFY2(n > 0, "taken");
                QCOMPARE(carried(image, n), expected);
                QCOMPARE(ChannelView(image, channelColumn(n)).busyLock(),
                         ChannelView(before, channelColumn(n)).busyLock());
            } catch (const CsvError& error) {
                QCOMPARE(QString(error.what()), expected);
            }
            for (std::size_t i = 0; i < RadioImage::kSize; ++i)
                if (int(i % 128) / 2 != n - 1) // the image's column i % 128
                    QVERIFY2(image[i] == before[i], qPrintable(QString::number(i)));
        };
        const QByteArray h = "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,"
                             "DtcsCode,DtcsPolarity,RxDtcsCode,CrossMode,Mode,TStep,Skip,Power,"
                             "Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE\r\n";
        row(h + "2,,147.0,+,0.6,Tone,100.0,88.5,023,NN,023,,NFM,5.00,S,1.0W,,,,,", 2,
            "147.00000|OFF|147.60000|CTC 100.0|Del|Low|Narrow||");
        row(h + "3,,147.0,-,0.6,TSQL,67.0,123.0,023,NN,023,,FM,,,4W,,,,,", 3,
            "147.00000|CTC 123.0|146.40000|CTC 123.0|Add|High|Wide||");
        row(h + "4,,145.5,split,150.0,DTCS,,,754,NR,023,,FM,,,Low,,,,,", 4,
            "145.50000|-DCS 754|150.00000|DCS 754|Add|Low|Wide||");
        row(h + "5,,145.5,off,0,,,,,,,,,,,2W,,,,,", 5, "145.50000|OFF|OFF|Add|Low|Wide||No TX");
        // rToneFreq 71.9, cToneFreq 67.0, DtcsCode 23 (as a spreadsheet writes 023),
        // RxDtcsCode 47, polarity N on transmit, R on receive: receive|transmit tones.
        for (const auto& [mode, tones] : {std::pair{"Tone->DTCS", "-DCS 047|CTC 71.9"},
                                          {"DTCS->Tone", "CTC 67.0|DCS 023"},
                                          {"->Tone", "CTC 67.0|OFF"},
                                          {"Tone->", "OFF|CTC 71.9"},
                                          {"dtcs->", "OFF|DCS 023"}}) {
            const QStringList rxTx = QString(tones).split('|');
            row(h + "6,,145.5,,,Cross,71.9,67.0,23,NR,47," + mode + ",,,,,,,,,", 6,
                "145.50000|" + rxTx[0] + "|145.50000|" + rxTx[1] + "|Add|High|Wide||");
        }
        row("\xEF\xBB\xBF# exported\n\n" + h.chopped(2) + "\n# 7\n \n7,,145.5" +
                QByteArray(18, ','),
            7, "145.50000|OFF|145.50000|OFF|Add|High|Wide||"); // BOM, comments, blank lines, LF
        row("\"Location\",\"Name\",\"FREQUENCY\",\"Tone\"\r\n\"8\",\"a \"\"b\"\", "
            "c\",\"146.52\",TSQL",
            8, "146.52000|CTC 88.5|146.52000|CTC 88.5|Add|High|Wide||");
        row("Location\tFrequency\tDuplex\tOffset\n9\t145.5\t+\t0.6", 9,
            "145.50000|OFF|146.10000|OFF|Add|High|Wide||");
        row("Location,Frequency,Tone,cToneFreq\n11,145.5,Tone,123", 11,
            "145.50000|OFF|145.50000|CTC 123.0|Add|High|Wide||");
        row("\xEF\xBB\xBF\r\n# nothing", 0, "the file has no header line");
        row("Frequency,Name\n1,a", 0, "line 1: the header has no Location column");
        const QByteArray g = "# channels\nLocation,Frequency,Duplex,Offset,Tone,rToneFreq,"
                             "DtcsCode,CrossMode,Mode,Power\n1,145.5,,,,,,,,\n";
        row(g + "2,145.5,", 0, "line 4: 3 fields where the header has 10");
        row(g + "\n\n2,\"145.5\n", 0, "line 6: a quoted field has no closing quote");
        const auto bad = [&](QByteArray line, const char* message) {
            while (line.count(',') < 9) // the header's ten fields
                line += ',';
            row(g + line, 0, "line 4: " + QString(message));
        };
        bad("2,173.5,+,0.6", "174.100000 MHz is outside the band 136 - 174MHz");
        bad("17,145.5", "Location '17' is not a channel number from 1 to 16");
        bad("1,146", "channel 1 is already set on line 3");
        bad("2,145.5,x", "Duplex 'x' is not empty, +, -, split or off");
        bad("2,145.5,,,Tsq", "Tone 'Tsq' is not empty, Tone, TSQL, DTCS or Cross");
        bad("2,145.5,,,Tone,88.6",
            "rToneFreq '88.6' is not a CTCSS tone of the list, such as 88.5");
        bad("2,145.5,,,Cross,,,->",
            "CrossMode '->' is not one of Tone->Tone, Tone->DTCS, DTCS->Tone, DTCS->DTCS, "
            "->Tone, ->DTCS, Tone->, DTCS->");
        bad("2,145.5,,,,,,,AM", "Mode 'AM' is not FM or NFM");
    }
};

QTEST_APPLESS_MAIN(TestCsv)
#include "tst_csv.moc"
