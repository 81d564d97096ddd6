// Channels as CSV: what an export gives back on import, what the importer
// makes of the files other programs and spreadsheets write, and what it refuses.

#include "bands.h"
#include "channel.h"
#include "csv_channels.h"
#include "image_edit.h"

#include <QRandomGenerator>
#include <QtTest>

using namespace zr310;

namespace {

// The texts of the fields a row carries: all but the busy lock, and the
// transmit frequency only while the channel may transmit.
QString carried(const RadioImage& image, int n) {
    QStringList texts;
    const bool tx = ChannelView(image, channelColumn(n)).txAllowed();
    for (ChannelField field : kChannelFields)
        if (field != ChannelField::BusyLock && (tx || field != ChannelField::TxFreq))
            texts << QString::fromStdString(
                channelFieldText(image, channelColumn(n), field, Language::English));
    return texts.join('|');
}

// Noise on the band, with channels set from random texts of the grid. Bit 16
// of the frequency counts starts clear: the editors never clear it.
RadioImage randomImage(QRandomGenerator& rng, int bandIndex) {
    RadioImage image;
    for (auto& byte : image.linear())
        byte = std::uint8_t(rng.bounded(256));
    setBand(image, bandIndex);
    const BandLimits band = kBands[bandIndex].limits;
    const auto ctcss = SetQtcodeArray(), dcs = SetDQtcodeArray();
    const auto frequency = [&] {
        return std::to_string(band.lowerMHz + rng.bounded(band.upperMHz - band.lowerMHz) +
                              rng.bounded(1000) / 1000.0);
    };
    const auto tone = [&] {
        const std::string kinds[] = {"OFF", "CTC " + ctcss[rng.bounded(50)],
                                     "DCS " + dcs[rng.bounded(83)], "-DCS " + dcs[rng.bounded(83)]};
        return kinds[rng.bounded(4)];
    };
    // Two choices for each field after the tones, in kChannelFields order.
    const char* words[] = {"Add",  "Del",    "On", "Off", "Low", "High",
                           "Wide", "Narrow", "",   "x",   "",    "x"};
    for (int n = 1; n <= kChannelCount; ++n) {
        for (int block : {2, 7})
            image.set(channelColumn(n), block, image.at(channelColumn(n), block) & 0xFE);
        std::string texts[10] = {frequency(), tone()};
        texts[2] = rng.bounded(3) ? frequency() : texts[0];
        texts[3] = rng.bounded(2) ? tone() : texts[1];
        for (int f = 4; f < 10; ++f)
            texts[f] = words[2 * (f - 4) + rng.bounded(2)];
        for (std::size_t f = 0; f < kChannelFields.size(); ++f)
            setChannelField(image, channelColumn(n), kChannelFields[f], texts[f]);
    }
    return image;
}

} // namespace

class TestCsv : public QObject {
    Q_OBJECT

private slots:
    void roundTrip_data() {
        QTest::addColumn<int>("band");
        QTest::newRow("136 - 174MHz") << 2;
        QTest::newRow("465 - 520MHz, bit 16") << 9;
    }

    void roundTrip() {
        QFETCH(int, band);
        QRandomGenerator rng(static_cast<quint32>(band));
        for (int round = 0; round < 20; ++round) {
            const RadioImage source = randomImage(rng, band);
            RadioImage target = makeStartImage();
            setBand(target, band);
            importChannelsCsv(target, exportChannelsCsv(source));
            QCOMPARE(exportChannelsCsv(target), exportChannelsCsv(source)); // closed stay closed
            for (int n = 1; n <= kChannelCount; ++n)
                if (ChannelView(source, channelColumn(n)).isOpen())
                    QCOMPARE(carried(target, n), carried(source, n));
        }
    }

    // A file taken sets CH `n` to RX freq|RX tone|TX freq (unless No TX)|TX tone|
    // Scan|Power|W/N|Close|No TX, and the busy lock and other channels keep
    // theirs. A file refused (n = 0) gives its message and changes nothing.
    void imports_data() {
        QTest::addColumn<QByteArray>("csv");
        QTest::addColumn<int>("n");
        QTest::addColumn<QString>("expected");
        const auto row = [](const char* name, const QByteArray& csv, int n, const char* expected) {
            QTest::newRow(name) << csv << n << QString(expected);
        };
        const QByteArray h = "Location,Name,Frequency,Duplex,Offset,Tone,rToneFreq,cToneFreq,"
                             "DtcsCode,DtcsPolarity,RxDtcsCode,CrossMode,Mode,TStep,Skip,Power,"
                             "Comment,URCALL,RPT1CALL,RPT2CALL,DVCODE\r\n";
        row("plus, Tone", h + "2,,147.0,+,0.6,Tone,100.0,88.5,023,NN,023,,NFM,5.00,S,1.0W,,,,,", 2,
            "147.00000|OFF|147.60000|CTC 100.0|Del|Low|Narrow||");
        row("minus, TSQL", h + "3,,147.0,-,0.6,TSQL,67.0,123.0,023,NN,023,,FM,,,4W,,,,,", 3,
            "147.00000|CTC 123.0|146.40000|CTC 123.0|Add|High|Wide||");
        row("split, DTCS NR", h + "4,,145.5,split,150.0,DTCS,,,754,NR,023,,FM,,,Low,,,,,", 4,
            "145.50000|-DCS 754|150.00000|DCS 754|Add|Low|Wide||");
        row("off", h + "5,,145.5,off,0,,,,,,,,,,,2W,,,,,", 5,
            "145.50000|OFF|OFF|Add|Low|Wide||No TX");
        // rToneFreq 71.9, cToneFreq 67.0, DtcsCode 23 (as a spreadsheet writes 023),
        // RxDtcsCode 47, polarity N on transmit, R on receive.
        const char* cross[][2] = {{"Tone->DTCS", "-DCS 047|CTC 71.9"},
                                  {"DTCS->Tone", "CTC 67.0|DCS 023"},
                                  {"DTCS->DTCS", "-DCS 047|DCS 023"},
                                  {"->Tone", "CTC 67.0|OFF"},
                                  {"->DTCS", "-DCS 047|OFF"},
                                  {"Tone->", "OFF|CTC 71.9"},
                                  {"dtcs->", "OFF|DCS 023"}};
        for (const auto& [mode, tones] : cross) {
            const QStringList rxTx = QString(tones).split('|');
            row(mode, h + "6,,145.5,,,Cross,71.9,67.0,23,NR,47," + mode + ",,,,,,,,,", 6,
                qPrintable("145.50000|" + rxTx[0] + "|145.50000|" + rxTx[1] + "|Add|High|Wide||"));
        }
        row("BOM, comments, blank lines, LF",
            "\xEF\xBB\xBF# exported\n\n" + h.chopped(2) + "\n# 7\n \n7,,145.5" +
                QByteArray(18, ','),
            7, "145.50000|OFF|145.50000|OFF|Add|High|Wide||");
        row("quoted",
            "\"Location\",\"Name\",\"FREQUENCY\",\"Tone\"\r\n\"8\",\"a \"\"b\"\", "
            "c\",\"146.52\",TSQL",
            8, "146.52000|CTC 88.5|146.52000|CTC 88.5|Add|High|Wide||");
        row("tab-separated", "Location\tFrequency\tDuplex\tOffset\n9\t145.5\t+\t0.6", 9,
            "145.50000|OFF|146.10000|OFF|Add|High|Wide||");
        row("Location and Frequency, snapped", "Location,Frequency\r\n10,145.0061", 10,
            "145.00625|OFF|145.00625|OFF|Add|High|Wide||");
        row("one tone column", "Location,Frequency,Tone,cToneFreq\n11,145.5,Tone,123", 11,
            "145.50000|OFF|145.50000|CTC 123.0|Add|High|Wide||");
        const QByteArray g = "# channels\nLocation,Frequency,Duplex,Offset,Tone,rToneFreq,"
                             "DtcsCode,CrossMode,Mode,Power\n1,145.5,,,,,,,,\n";
        const auto bad = [&g](const char* name, QByteArray line, const char* message) {
            while (line.count(',') < 9) // the header's ten fields
                line += ',';
            QTest::newRow(name) << g + line << 0 << "line 4: " + QString(message);
        };
        const auto raw = [](const char* name, const QByteArray& csv, const char* message) {
            QTest::newRow(name) << csv << 0 << QString(message);
        };
        raw("empty", "\xEF\xBB\xBF\r\n# nothing", "the file has no header line");
        raw("no Location column", "Frequency,Name\n1,a",
            "line 1: the header has no Location column");
        raw("fewer fields", g + "2,145.5,", "line 4: 3 fields where the header has 10");
        raw("quote not closed", g + "\n\n2,\"145.5\n",
            "line 6: a quoted field has no closing quote");
        bad("out of band", "2,440", "440.000000 MHz is outside the band 136 - 174MHz");
        bad("shift out of band", "2,173.5,+,0.6",
            "174.100000 MHz is outside the band 136 - 174MHz");
        bad("channel 17", "17,145.5", "Location '17' is not a channel number from 1 to 16");
        bad("no number", "x,145.5", "Location 'x' is not a channel number from 1 to 16");
        bad("same channel twice", "1,146", "channel 1 is already set on line 3");
        bad("unknown Duplex", "2,145.5,x", "Duplex 'x' is not empty, +, -, split or off");
        bad("unknown Tone", "2,145.5,,,Tsq", "Tone 'Tsq' is not empty, Tone, TSQL, DTCS or Cross");
        bad("tone not listed", "2,145.5,,,Tone,88.6",
            "rToneFreq '88.6' is not a CTCSS tone of the list, such as 88.5");
        bad("unknown CrossMode", "2,145.5,,,Cross,,,->",
            "CrossMode '->' is not one of Tone->Tone, Tone->DTCS, DTCS->Tone, DTCS->DTCS, "
            "->Tone, ->DTCS, Tone->, DTCS->");
        bad("unknown Mode", "2,145.5,,,,,,,AM", "Mode 'AM' is not FM or NFM");
    }

    void imports() {
        QFETCH(QByteArray, csv);
        QFETCH(int, n);
        QFETCH(QString, expected);
        QRandomGenerator rng(7);
        const RadioImage before = randomImage(rng, 2);
        RadioImage image = before;
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
    }
};

QTEST_APPLESS_MAIN(TestCsv)
#include "tst_csv.moc"
