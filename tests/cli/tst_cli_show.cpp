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

// A channel (column below 0x20) or test channel record, read from the bytes.
// Receive: even column blocks 0-4; transmit: blocks 5-7, then the odd column's 0-1.
void compareRecord(const QJsonValue& json, const RadioImage& image, int even,
                   const QStringList& onOff) {
    QCOMPARE(json["ch"].toInt(), even % 0x20 / 2 + 1);
    for (const int at : {0, 5}) {
        const QString side = at ? "tx_" : "rx_";
        const int flags = byteAt(image, even, at + 2);
        const int low = at ? byteAt(image, even + 1, 0) : byteAt(image, even, 3);
        const int high = at ? byteAt(image, even + 1, 1) : byteAt(image, even, 4);
        QCOMPARE(json[side + "freq"].toString(),
                 expectedFrequency(byteAt(image, even, at), byteAt(image, even, at + 1), flags));
        QCOMPARE(json[side + "tone"].toString(), expectedTone(flags, low, high));
        QCOMPARE(json[at ? "no_tx" : "close"].toBool(), (flags & 8) == 0);
        if (even >= 0x20)
            QCOMPARE(json[side + "step"].toString(), flags & 4 ? "6.25" : "5.00");
    }
    if (even >= 0x20)
        return;
    const int options = byteAt(image, even + 1, 2);
    QCOMPARE(json["scan"].toString(), onOff[(options & 0x10) ? 1 : 0]);
    QCOMPARE(json["busy_lock"].toString(), onOff[(options & 0x04) ? 2 : 3]);
    QCOMPARE(json["power"].toString(), onOff[(options & 0x20) ? 5 : 4]);
    QCOMPARE(json["bandwidth"].toString(), onOff[(options & 0x01) ? 7 : 6]);
}

} // namespace

class TestCliShow : public QObject {
    Q_OBJECT

private slots:
    void jsonAgreesWithTheBytes() {
        // onOff: Add/Del, On/Off, High/Low, Wide/Narrow
        const auto row = [](const char* lang, const QStringList& onOff) {
            QTemporaryDir dir;
            QRandomGenerator random(1234);
            const std::string file = dir.filePath("image.bin").toStdString();
            const QStringList tuning =
                QString("low_battery squelch9 squelch3 ctcss_deviation cdcss_deviation").split(' ');
            for (int round = 0; round < 12; ++round) {
                RadioImage image = randomImage(random);
                if (round % 4 == 0) // no write date
                    image.setAtAddress(0x3C0, round % 8 ? 0x00 : 0xFF);
                writeRaw(file, image);
                const CommandRun run = runCommand(runShowCommand, {file, "--json", "--lang", lang});
                const QJsonObject json =
                    QJsonDocument::fromJson(QByteArray::fromStdString(run.out)).object();
                QCOMPARE(json["channels"].toArray().size(), 16);
                QCOMPARE(json["test_channels"].toArray().size(), 11);
                for (int i = 0; i < 27; ++i) // channels in columns 0x00-0x1F, test channels after
                    compareRecord(i < 16 ? json["channels"][i] : json["test_channels"][i - 16],
                                  image, 2 * i, onOff);
                for (int block = 0; block < 5; ++block) // column 0x5E
                    QCOMPARE(json["tuning"][tuning[block]].toInt(), byteAt(image, 0x5E, block));
                QCOMPARE(json["bandwidth"]["index"].toInt(), (byteAt(image, 0x57, 4) & 2) ? 1 : 0);
                const int dateLead = image.atAddress(0x3C0);
                QCOMPARE(json["write_date"].isNull(), dateLead == 0 || dateLead == 0xFF);
                QCOMPARE(json["options"].toObject().size(), 15);
            }
        };
        row("en", {"Add", "Del", "On", "Off", "High", "Low", "Wide", "Narrow"});
        row("zh", {"添加", "删除", "打开", "关闭", "高", "低", "宽带", "窄带"});
    }

    // The band from its byte (radio address 0x2D2), a refused file (exit 5, the
    // message in the chosen language) and bad command lines (exit 2). FILE in the
    // arguments is a file with the content, a data file when it has 1360 bytes;
    // `text` is expected in the output or the error.
    void outcomes() {
        const auto row = [](const QByteArray& content, QStringList args, int status, QString text) {
            QTemporaryDir dir;
            const QString file = dir.filePath(content.size() == 1360 ? "a.k720" : "a.bin");
            std::ofstream(file.toStdString(), std::ios::binary)
                .write(content.constData(), content.size());
            const CommandRun run =
                runCommand(runShowCommand, argList(args.replaceInStrings("FILE", file)));
            QCOMPARE(run.status, status);
            QVERIFY2(QString::fromStdString(status ? run.err : run.out)
                         .contains(text.replace("FILE", file)),
                     run.err.c_str());
            QCOMPARE(run.out.empty(), status != 0);
        };
        QByteArray raw(1024, '\0');
        raw[0x2D2] = char(0x59);
        row(raw, {"FILE", "--json"}, 0, "\"band_range\": \"465.00000～520.00000 MHz\"");
        row(QByteArray(1360, 'x').replace(8, 1, "\n"), {"FILE", "--lang", "zh"}, kExitFileRefused,
            "文件类型不正确。 FILE: the model tag at bytes 4..9 is \"xxxx\\x0Ax\"");
        row(raw, {"FILE", "FILE"}, kExitUsage, "");
        row(raw, {"FILE", "--yaml"}, kExitUsage, "--yaml");
        row(raw, {"FILE", "--lang", "fr"}, kExitUsage, "fr");
    }
};

QTEST_APPLESS_MAIN(TestCliShow)
#include "tst_cli_show.moc"
