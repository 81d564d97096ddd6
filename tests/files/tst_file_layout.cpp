#include "k720_file.h"
#include "random_image.h"

#include <QtTest>

using namespace zr310;

namespace {

QByteArray bytesOf(const FileImage& file) {
    return QByteArray(reinterpret_cast<const char*>(file.data()), int(file.size()));
}

} // namespace

class TestFileLayout : public QObject {
    Q_OBJECT
private slots:
    // The whole file of an image with one byte set in each area: the header, the
    // image bytes at their places, the fixed bytes, the save stamp and our marker.
    void layout() {
        // Channels and test channels (even and odd columns), options, tuning, user
        // text, and the columns only our own files hold: column, block, file offset.
        const int places[][3] = {{0x08, 3, 0x06C}, {0x1F, 7, 0x137}, {0x34, 7, 0x207},
                                 {0x27, 2, 0x221}, {0x57, 7, 0x3A3}, {0x5E, 7, 0x40B},
                                 {0x62, 3, 0x433}, {0x37, 1, 0x269}, {0x5A, 2, 0x3B6},
                                 {0x5F, 7, 0x367}, {0x79, 5, 0x50D}, {0x7F, 7, 0x53F}};
        QByteArray expected(1360, '\0');
        expected.replace(0, 0x29,
                         QByteArray::fromHex("08001200514b3732304d205043b1e0b3ccc8edbcfe2e"
                                             "08000a00b0e6b1be203d20312e311120020010"));
        expected.replace(0x4E0, 5, QByteArray::fromHex("1120010010"));
        expected.replace(0x4EC, 20, "09871231235905ZR310X");
        RadioImage image;
        for (int i = 0; i < int(std::size(places)); ++i) {
            image.set(places[i][0], places[i][1], quint8(0xA0 + i));
            expected[places[i][2]] = char(0xA0 + i);
        }
        QCOMPARE(bytesOf(toFileImage(image, {987, 12, 31, 23, 59, 5})), expected);
    }

    // Our files bring back every column; without our marker, the columns
    // outside the classic areas keep what the image held.
    void roundTripsEveryColumn() {
        const auto isExtra = [](int c) {
            return (c >= 0x36 && c <= 0x55) || (c >= 0x58 && c <= 0x5D) || c == 0x5F || c >= 0x78;
        };
        std::mt19937 rng(3);
        for (int round = 0; round < 5; ++round) {
            const RadioImage saved = randomImage(rng), old = randomImage(rng);
            FileImage file = toFileImage(saved, {});
            RadioImage image = old;
            applyFileImage(file, image);
            QVERIFY(image == saved);

            std::fill(file.begin() + 0x4FA, file.begin() + 0x500, 0);
            image = old;
            applyFileImage(file, image);
            for (int c = 0; c < RadioImage::kColumns; ++c)
                QVERIFY(image.column(c) == (isExtra(c) ? old : saved).column(c));
        }
    }
};

QTEST_APPLESS_MAIN(TestFileLayout)
#include "tst_file_layout.moc"
