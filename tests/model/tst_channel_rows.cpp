// Whole channels on the clipboard: the program's own record and the
// tab-separated text that spreadsheets take and give back.

#include "bands.h"
#include "channel_rows.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

// Noise with bit 16 of every channel's frequencies clear: the editors keep
// that bit as they find it, as the radio's own software does.
RadioImage noiseWithoutBit16(quint32 seed, std::uint8_t bandCode) {
    RadioImage image = noiseImage(seed);
    image[kBandCodeOffset] = bandCode;
    for (int n = 1; n <= kChannelCount; ++n)
        for (int block : {2, 7})
            image.set(channelColumn(n), block, image.at(channelColumn(n), block) & 0xFE);
    return image;
}

// Fills a channel with texts picked at random from what the grid offers.
void randomChannel(RadioImage& image, int channel, QRandomGenerator& rng) {
    const BandLimits band = kBands[bandIndexFromImage(image)].limits;
    auto frequency = [&] {
        const double khz =
            band.lowerMHz * 1000.0 + rng.bounded((band.upperMHz - band.lowerMHz) * 1000);
        return QString::number(khz / 1000.0, 'f', 3).toStdString();
    };
    const auto ctcss = SetQtcodeArray();
    const auto dcs = SetDQtcodeArray();
    auto pick = [&](const std::vector<std::string>& list) {
        return list[rng.bounded(int(list.size()))];
    };
    auto tone = [&] {
        const std::string kinds[] = {"OFF", "CTC " + pick(ctcss), "DCS " + pick(dcs),
                                     "-DCS " + pick(dcs)};
        return kinds[rng.bounded(4)];
    };
    auto either = [&](const char* a, const char* b) { return rng.bounded(2) ? a : b; };
    const std::string texts[] = {frequency(),           tone(),
                                 frequency(),           tone(),
                                 either("Add", "Del"),  either("On", "Off"),
                                 either("Low", "High"), either("Wide", "Narrow"),
                                 either("", "x"),       either("", "x")};
    for (std::size_t f = 0; f < kChannelFields.size(); ++f)
        setChannelField(image, channelColumn(channel), kChannelFields[f], texts[f]);
}

QStringList shownTexts(const RadioImage& image, int channel) {
    QStringList texts;
    for (ChannelField field : kChannelFields)
        texts << qs(channelFieldText(image, channelColumn(channel), field, Language::English));
    return texts;
}

} // namespace

class TestChannelRows : public QObject {
    Q_OBJECT

private slots:
    void recordRoundTrip() {
        const RadioImage source = noiseImage(1);
        const std::vector<int> copied{3, 16, 1};
        const auto records = decodeChannelRecords(encodeChannelRecords(source, copied));
        QVERIFY(records);
        QCOMPARE(records->bandCode, source[kBandCodeOffset]);
        QCOMPARE(records->channels.size(), copied.size());

        const RadioImage before = noiseImage(2);
        RadioImage target = before;
        pasteChannelRecords(target, *records, std::vector<int>{5, 6, 7});
        for (int i = 0; i < 3; ++i)
            QVERIFY(channelBytes(target, 5 + i) == channelBytes(source, copied[i]));
        for (int offset : changedOffsets(before, target)) // columns 08..0D only
            QVERIFY(offset % 128 >= 8 && offset % 128 <= 13);

        // One channel onto several selected ones fills each.
        const auto one = decodeChannelRecords(encodeChannelRecords(source, std::vector<int>{4}));
        pasteChannelRecords(target, *one, std::vector<int>{2, 9});
        QVERIFY(channelBytes(target, 2) == channelBytes(source, 4));
        QVERIFY(channelBytes(target, 9) == channelBytes(source, 4));
    }

    void malformedRecords_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray one = QByteArray("ZR310CH1") + char(0x52) + char(1) + QByteArray(16, 7);
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("other marker") << QByteArray(one).replace(7, 1, "2");
        QTest::newRow("count 0") << QByteArray("ZR310CH1") + char(0x52) + char(0);
        QTest::newRow("count 17") << QByteArray("ZR310CH1") + char(0x52) + char(17) +
                                         QByteArray(17 * 16, 0);
        QTest::newRow("count 2, one channel") << QByteArray(one).replace(9, 1, "\x02");
        QTest::newRow("a byte short") << one.left(one.size() - 1);
    }

    void malformedRecords() {
        QFETCH(QByteArray, bytes);
        const std::vector<std::uint8_t> data(bytes.begin(), bytes.end());
        QVERIFY(!decodeChannelRecords(data));
    }

    // Copy, split and paste over random channels give back every field's text.
    void textRoundTrip_data() {
        QTest::addColumn<int>("language");
        const auto row = [](const char* name, int language) { QTest::newRow(name) << language; };
        row("English", int(Language::English));
        row("Chinese", int(Language::Chinese));
    }

    void textRoundTrip() {
        QFETCH(int, language);
        QRandomGenerator rng(quint32(language) + 11);
        for (int round = 0; round < 20; ++round) {
            const std::uint8_t band = kBands[rng.bounded(int(kBands.size()))].code;
            RadioImage source = noiseWithoutBit16(rng.generate(), band);
            const int first = rng.bounded(1, 14), count = rng.bounded(1, 4);
            std::vector<int> copied;
            for (int n = first; n < first + count; ++n) {
                randomChannel(source, n, rng);
                copied.push_back(n);
            }
            const auto rows = splitChannelRows(channelRowsText(source, copied, Language(language)));
            const auto targets = pasteTargets(int(rows.size()), std::vector<int>{17 - count});
            QVERIFY(targets);
            RadioImage target = noiseWithoutBit16(rng.generate(), band);
            pasteChannelRows(target, rows, *targets);
            for (int i = 0; i < count; ++i)
                QCOMPARE(shownTexts(target, (*targets)[i]), shownTexts(source, copied[i]));
        }
    }

    void targets_data() {
        QTest::addColumn<int>("count");
        QTest::addColumn<QList<int>>("selected");
        const auto row = [](const char* name, int count, const QList<int>& selected,
                            const QList<int>& targets) {
            QTest::newRow(name) << count << selected << targets;
        };
        QTest::addColumn<QList<int>>("targets"); // empty: nothing
        row("down from the selection", 3, QList<int>{5}, QList<int>{5, 6, 7});
        row("from the topmost", 2, QList<int>{9, 3}, QList<int>{3, 4});
        row("one onto each", 1, QList<int>{9, 2, 4}, QList<int>{2, 4, 9});
        row("to the last channel", 2, QList<int>{15}, QList<int>{15, 16});
        row("past CH 16", 3, QList<int>{15}, QList<int>{});
        row("no selection", 1, QList<int>{}, QList<int>{});
        row("no rows", 0, QList<int>{4}, QList<int>{});
    }

    void targets() {
        QFETCH(int, count);
        QFETCH(QList<int>, selected);
        QFETCH(QList<int>, targets);
        const std::vector<int> chosen(selected.begin(), selected.end());
        const auto found = pasteTargets(count, chosen);
        QCOMPARE(found ? QList<int>(found->begin(), found->end()) : QList<int>{}, targets);
    }
};

QTEST_APPLESS_MAIN(TestChannelRows)
#include "tst_channel_rows.moc"
