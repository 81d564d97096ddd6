// Whole channels moved about: every byte of a record travels with it (on
// noise, so bit-16 and step flags of both sides are ones and zeros alike),
// nothing outside the 16 records changes, and the channel lists of keys.

#include "channel_list.h"
#include "channel_moves.h"
#include "model_test_util.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

// "4 3 1-2 0 5-16": which channel of the image before each channel of the
// image after holds, in order; 0 is the start image's empty record.
QList<int> order(const QString& text) {
    QList<int> channels;
    for (const QString& item : text.split(' ')) {
        const QStringList ends = item.split('-');
        for (int n = ends.first().toInt(); n <= ends.last().toInt(); ++n)
            channels << n;
    }
    return channels;
}

// The records of `after` are those of `before` in `expected` order, and no
// byte outside the 16 records (columns 0x00..0x1F) differs.
void compareRecords(const RadioImage& before, const RadioImage& after, const QString& expected) {
    const QList<int> from = order(expected);
    QCOMPARE(from.size(), kChannelCount);
    const RadioImage start = makeStartImage();
    for (int n = 1; n <= kChannelCount; ++n) {
        const int source = from[n - 1];
        QVERIFY2(channelBytes(after, n) ==
                     (source ? channelBytes(before, source) : channelBytes(start, n)),
                 qPrintable(QString("CH %1 should hold %2").arg(n).arg(source)));
    }
    for (int offset : changedOffsets(before, after))
        QVERIFY2(offset % RadioImage::kColumns < 2 * kChannelCount,
                 qPrintable(QString("offset 0x%1").arg(offset, 3, 16)));
}

} // namespace

class TestChannelMoves : public QObject {
    Q_OBJECT

private slots:
    // Operations on noise, with the order of records they leave.
    void operations() {
        const auto row = [](const std::function<void(RadioImage&)>& operation,
                            const QString& expected) {
            const RadioImage before = noiseImage(quint32(qHash(expected)));
            RadioImage after = before;
            operation(after);
            compareRecords(before, after, expected);
        };
        const auto move = [](int first, int last, int to) {
            return [=](RadioImage& image) { moveChannels(image, first, last, to); };
        };
        row(move(3, 3, 1), "3 1 2 4-16");
        row(move(1, 1, 16), "2-16 1");
        row(move(3, 5, 1), "3-5 1-2 6-16");
        row(move(3, 5, 14), "1-2 6-16 3-5");
        row(move(2, 4, 3), "1 5 2-4 6-16");
        row(move(1, 16, 1), "1-16");
        row([](RadioImage& image) { swapChannels(image, 2, 15); }, "1 15 3-14 2 16");
        row(
            [](RadioImage& image) {
                clearChannels(image, std::vector<int>{2, 7, 8});
            },
            "1 0 3-6 0 0 9-16");
        row([](RadioImage& image) { insertEmptyChannel(image, 1); }, "0 1-15");
        row([](RadioImage& image) { insertEmptyChannel(image, 16); }, "1-15 0");
    }

    // Refused channels leave the image as it was.
    void refused() {
        const auto row = [](const std::function<void(RadioImage&)>& operation) {
            const RadioImage before = noiseImage(5);
            RadioImage after = before;
            QVERIFY_THROWS_EXCEPTION(std::out_of_range, operation(after));
            QVERIFY(after == before);
        };
        row([](RadioImage& image) { moveChannels(image, 3, 5, 15); }); // runs past CH 16
        row([](RadioImage& image) { moveChannels(image, 5, 3, 1); });
        row([](RadioImage& image) { clearChannels(image, std::vector<int>{3, 17}); });
    }

    // Whether the channel pushed out of CH 16 was open.
    void insertReportsPushedOut() {
        for (const bool open : {false, true}) {
            RadioImage image = noiseImage(7);
            ChannelRecord::channel(image, 16).setOpen(open);
            QCOMPARE(insertEmptyChannel(image, 4), open);
        }
    }

    // Open channels by the field, ties in their order, closed ones after in
    // theirs. 450.005 MHz counts 5 kHz steps and 450.0125 MHz 6.25 kHz steps
    // (both with bit 16): the smaller frequency has the larger count.
    void sortOrder() {
        RadioImage before = makeStartImage();
        setBandText(before, "400 - 470MHz");
        const char* channels[][4] = {
            {"1", "450.0125", "CTC 100.0", "Low"},
            {"3", "450.005", "CTC 88.5", "High"},
            {"4", "400", "DCS 023", "High"},
            {"5", "450.0125", "OFF", "High"},
            {"6", "400", "OFF", "Low"}, // closed below
        };
        for (const auto& texts : channels) {
            const int column = channelColumn(std::atoi(texts[0]));
            setChannelField(before, column, ChannelField::RxFreq, texts[1]);
            setChannelField(before, column, ChannelField::RxTone, texts[2]);
            setChannelField(before, column, ChannelField::Power, texts[3]);
            setChannelField(before, column, ChannelField::Close, "");
        }
        setChannelField(before, channelColumn(6), ChannelField::Close, "x");
        const auto row = [&before](ChannelField by, const QString& expected) {
            RadioImage after = before;
            sortChannels(after, by);
            compareRecords(before, after, expected);
        };
        row(ChannelField::RxFreq, "4 3 1 5 2 6-16");
        row(ChannelField::RxTone, "5 3 1 4 2 6-16");
        row(ChannelField::Power, "3 4 5 1 2 6-16"); // High before Low
        row(ChannelField::TxFreq, "1 3-5 2 6-16");  // all 000.00000: ties keep order
    }

    void channelLists() {
        const auto row = [](const char* text, const QList<int>& expected) {
            const auto channels = parseChannelList(text, kChannelCount);
            QCOMPARE(channels ? QList<int>(channels->begin(), channels->end()) : QList<int>{},
                     expected);
        };
        row("3", {3});
        row("3-5", {3, 4, 5});
        row("9,2,3-4,3", {2, 3, 4, 9});
        for (const char* bad : {"", "0", "17", "5-3", "1,", ",1", "1-", "1--2", "1-2-3", " 1", "1 ",
                                "a", "123", "-1"})
            row(bad, {});
    }
};

QTEST_APPLESS_MAIN(TestChannelMoves)
#include "tst_channel_moves.moc"
