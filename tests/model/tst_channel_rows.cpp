// Whole channels on the clipboard: the program's own record and the
// tab-separated text that spreadsheets take and give back.

#include "channel_rows.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

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
            QVERIFY(channelBytes(target, 5 + i) == channelBytes(source, copied[toIndex(i)]));
        for (int offset : changedOffsets(before, target)) // columns 08..0D only
            QVERIFY(offset % 128 >= 8 && offset % 128 <= 13);

        // One channel onto several selected ones fills each.
        const auto one = decodeChannelRecords(encodeChannelRecords(source, std::vector<int>{4}));
        pasteChannelRecords(target, *one, std::vector<int>{2, 9});
        QVERIFY(channelBytes(target, 2) == channelBytes(source, 4));
        QVERIFY(channelBytes(target, 9) == channelBytes(source, 4));
    }

    void malformedRecords() {
        const auto refused = [](const QByteArray& bytes) {
            QVERIFY(!decodeChannelRecords(std::vector<std::uint8_t>(bytes.begin(), bytes.end())));
        };
        const QByteArray head = QByteArray("ZR310CH1") + char(0x52);
        const QByteArray one = head + char(1) + QByteArray(16, 7);
        refused(QByteArray());
        refused(QByteArray(one).replace(7, 1, "2")); // another marker
        refused(head + char(0));                     // no channel
        refused(head + char(17) + QByteArray(17 * 16, 0));
        refused(one.chopped(1));
    }

    // Copy, split and paste over random channels give back every field's text.
    void textRoundTrip() {
        for (const Language language : {Language::English, Language::Chinese}) {
            QRandomGenerator rng(quint32(language) + 11);
            for (int round = 0; round < 20; ++round) {
                const int band = rng.bounded(int(kBands.size()));
                const RadioImage source = randomChannels(rng, band);
                const int first = rng.bounded(1, 14), count = rng.bounded(1, 4);
                std::vector<int> copied;
                for (int n = first; n < first + count; ++n)
                    copied.push_back(n);
                const auto rows = splitChannelRows(channelRowsText(source, copied, language));
                const auto targets = pasteTargets(int(rows.size()), std::vector<int>{17 - count});
                QVERIFY(targets);
                RadioImage target = makeStartImage(); // bit 16 clear: pasting keeps it
                setBand(target, band);
                pasteChannelRows(target, rows, *targets);
                for (int i = 0; i < count; ++i)
                    for (ChannelField field : kChannelFields)
                        QCOMPARE(qs(channelFieldText(target, channelColumn((*targets)[toIndex(i)]),
                                                     field, Language::English)),
                                 qs(channelFieldText(source, channelColumn(copied[toIndex(i)]),
                                                     field, Language::English)));
            }
        }
    }

    // Where `count` rows land for the selected channels; empty: nowhere.
    void targets() {
        const auto row = [](int count, const std::vector<int>& selected, const QList<int>& where) {
            const auto found = pasteTargets(count, selected);
            QCOMPARE(found ? QList<int>(found->begin(), found->end()) : QList<int>{}, where);
        };
        row(2, {9, 3}, {3, 4});       // from the topmost
        row(1, {9, 2, 4}, {2, 4, 9}); // one onto each
        row(2, {15}, {15, 16});       // to the last channel
        row(1, {}, {});               // no selection
        row(0, {4}, {});              // no rows
    }
};

QTEST_APPLESS_MAIN(TestChannelRows)
#include "tst_channel_rows.moc"
