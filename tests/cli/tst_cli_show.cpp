// zr310-cli show: the JSON agrees with a reading of the bytes made here from
// the radio's memory map, for random images and both languages.

#include "cli_test_util.h"
#include "show_command.h"

#include <QJsonArray>
#include <QtTest>

using namespace zr310;
using namespace zr310::testing;

namespace {

// Byte (column, block) of the image as the radio's address column * 8 + block.
int byteAt(const RadioImage& image, int column, int block) {
    return image.atAddress(column * 8 + block);
}

QString expectedFrequency(int low, int high, int flags) {
    const int steps = (flags & 1) << 16 | high << 8 | low;
    const double khz = (flags & 4) ? 6.25 : 5.0;
    return QString::asprintf("%09.5f", steps * khz / 1000.0);
}

QString expectedTone(int flags, int low, int high) {
    const int value = high << 8 | low;
    switch (flags & 0x70) {
    case 0x30: {
        const int tenths = (high >> 4) * 1000 + (high & 15) * 100 + (low >> 4) * 10 + (low & 15);
        return QString("CTC %1.%2").arg(tenths / 10).arg(tenths % 10);
    }
    case 0x50:
    case 0x70: {
        const QString code = QString("%1%2%3").arg(value / 64).arg(value / 8 % 8).arg(value % 8);
        return ((flags & 0x70) == 0x70 ? "-DCS " : "DCS ") + code;
    }
    default:
        return "OFF";
    }
}

QJsonObject showJson(const std::string& file, const char* lang) {
    const CommandRun run = runCommand(runShowCommand, {file, "--json", "--lang", lang});
    if (run.status != 0)
        qFatal("show failed: %s", run.err.c_str());
    return QJsonDocument::fromJson(QByteArray::fromStdString(run.out)).object();
}

void compareRecord(const QJsonObject& json, const RadioImage& image, int even) {
    const int rxFlags = byteAt(image, even, 2), txFlags = byteAt(image, even, 7);
    QCOMPARE(json["rx_freq"].toString(),
             expectedFrequency(byteAt(image, even, 0), byteAt(image, even, 1), rxFlags));
    QCOMPARE(json["tx_freq"].toString(),
             expectedFrequency(byteAt(image, even, 5), byteAt(image, even, 6), txFlags));
    QCOMPARE(json["rx_tone"].toString(),
             expectedTone(rxFlags, byteAt(image, even, 3), byteAt(image, even, 4)));
    QCOMPARE(json["tx_tone"].toString(),
             expectedTone(txFlags, byteAt(image, even + 1, 0), byteAt(image, even + 1, 1)));
    QCOMPARE(json["close"].toBool(), (rxFlags & 8) == 0);
    QCOMPARE(json["no_tx"].toBool(), (txFlags & 8) == 0);
}

} // namespace

class TestCliShow : public QObject {
    Q_OBJECT

private slots:
    void jsonAgreesWithTheBytes_data() {
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QStringList>("onOff"); // Add/Del, On/Off, High/Low, Wide/Narrow
        QTest::newRow("en") << "en" << QStringList{"Add",  "Del", "On",   "Off",
                                                   "High", "Low", "Wide", "Narrow"};
        QTest::newRow("zh") << "zh" << QStringList{"添加", "删除", "打开", "关闭",
                                                   "高",   "低",   "宽带", "窄带"};
    }

    void jsonAgreesWithTheBytes() {
        QFETCH(QString, lang);
        QFETCH(QStringList, onOff);
        QTemporaryDir dir;
        QRandomGenerator random(1234);
        const std::string file = (dir.path() + "/image.bin").toStdString();
        for (int round = 0; round < 40; ++round) {
            const RadioImage image = randomImage(random);
            writeRaw(file, image);
            const QJsonObject json = showJson(file, lang.toLatin1().constData());

            const QJsonArray channels = json["channels"].toArray();
            QCOMPARE(channels.size(), 16);
            for (int n = 1; n <= 16; ++n) {
                const QJsonObject ch = channels[n - 1].toObject();
                QCOMPARE(ch["ch"].toInt(), n);
                const int even = 2 * (n - 1);
                compareRecord(ch, image, even);
                const int options = byteAt(image, even + 1, 2);
                QCOMPARE(ch["scan"].toString(), onOff[(options & 0x10) ? 1 : 0]);
                QCOMPARE(ch["busy_lock"].toString(), onOff[(options & 0x04) ? 2 : 3]);
                QCOMPARE(ch["power"].toString(), onOff[(options & 0x20) ? 5 : 4]);
                QCOMPARE(ch["bandwidth"].toString(), onOff[(options & 0x01) ? 7 : 6]);
            }

            const QJsonArray tests = json["test_channels"].toArray();
            QCOMPARE(tests.size(), 11);
            for (int t = 0; t < 11; ++t) {
                const QJsonObject tch = tests[t].toObject();
                const int even = 0x20 + 2 * t;
                compareRecord(tch, image, even);
                QCOMPARE(tch["rx_step"].toString(), byteAt(image, even, 2) & 4 ? "6.25" : "5.00");
                QCOMPARE(tch["tx_step"].toString(), byteAt(image, even, 7) & 4 ? "6.25" : "5.00");
            }

            const QJsonObject tuning = json["tuning"].toObject();
            const char* names[] = {"low_battery", "squelch9", "squelch3", "ctcss_deviation",
                                   "cdcss_deviation"};
            for (int block = 0; block < 5; ++block)
                QCOMPARE(tuning[names[block]].toInt(), byteAt(image, 0x5E, block));

            QCOMPARE(json["bandwidth"]["index"].toInt(), (byteAt(image, 0x57, 4) & 2) ? 1 : 0);
            const int dateLead = image.atAddress(0x3C0);
            QCOMPARE(json["write_date"].isNull(), dateLead == 0 || dateLead == 0xFF);
            QCOMPARE(json["options"].toObject().size(), 15);
        }
    }

    void bandFollowsTheBandByte_data() {
        QTest::addColumn<int>("code");
        QTest::addColumn<int>("index");
        QTest::addColumn<QString>("range");
        QTest::newRow("0x01") << 0x01 << 0 << "136.00000～150.00000 MHz";
        QTest::newRow("0x00") << 0x00 << 1 << "150.00000～174.00000 MHz";
        QTest::newRow("0x59") << 0x59 << 9 << "465.00000～520.00000 MHz";
        QTest::newRow("unknown") << 0xFF << 7 << "450.00000～470.00000 MHz";
    }

    void bandFollowsTheBandByte() {
        QFETCH(int, code);
        QFETCH(int, index);
        QFETCH(QString, range);
        QTemporaryDir dir;
        const std::string file = (dir.path() + "/image.bin").toStdString();
        RadioImage image;
        image.setAtAddress(0x5A * 8 + 2, static_cast<std::uint8_t>(code));
        writeRaw(file, image);
        const QJsonObject json = showJson(file, "en");
        QCOMPARE(json["band"]["index"].toInt(), index);
        QCOMPARE(json["band_range"].toString(), range);
    }

    void refusedFilesExitWithFive_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("lang");
        QTest::addColumn<QString>("message");
        QTest::newRow("short bin") << QByteArray(1023, 0) << "a.bin"
                                   << "en"
                                   << "Incorrect File Type.";
        QTest::newRow("k720 bad tag") << QByteArray(1360, 'x') << "a.k720"
                                      << "zh"
                                      << "文件类型不正确。";
    }

    void refusedFilesExitWithFive() {
        QFETCH(QByteArray, content);
        QFETCH(QString, name);
        QFETCH(QString, lang);
        QFETCH(QString, message);
        QTemporaryDir dir;
        const std::string file = (dir.path() + "/" + name).toStdString();
        std::ofstream(file, std::ios::binary).write(content.constData(), content.size());
        const CommandRun run = runCommand(runShowCommand, {file, "--lang", lang.toStdString()});
        QCOMPARE(run.status, kExitFileRefused);
        QVERIFY(QString::fromStdString(run.err).contains(message));
        QVERIFY(run.out.empty());
    }

    void badArgumentsExitWithTwo_data() {
        QTest::addColumn<QStringList>("args");
        QTest::newRow("no file") << QStringList{};
        QTest::newRow("two files") << QStringList{"a.k720", "b.k720"};
        QTest::newRow("unknown option") << QStringList{"a.k720", "--yaml"};
        QTest::newRow("unknown language") << QStringList{"a.k720", "--lang", "fr"};
    }

    void badArgumentsExitWithTwo() {
        QFETCH(QStringList, args);
        std::vector<std::string> list;
        for (const QString& a : args)
            list.push_back(a.toStdString());
        QCOMPARE(runCommand(runShowCommand, list).status, kExitUsage);
    }
};

QTEST_APPLESS_MAIN(TestCliShow)
#include "tst_cli_show.moc"
