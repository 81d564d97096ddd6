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
    void placesEveryArea_data() {
        QTest::addColumn<int>("column");
        QTest::addColumn<int>("block");
        QTest::addColumn<int>("offset");
        const int rows[][3] = {
            {0x00, 0, 0x038}, {0x08, 3, 0x06C}, {0x1E, 7, 0x0B7}, {0x01, 0, 0x0B8},
            {0x1F, 7, 0x137}, {0x20, 0, 0x1B0}, {0x34, 7, 0x207}, {0x21, 0, 0x208},
            {0x27, 2, 0x221}, {0x35, 7, 0x25F}, {0x56, 0, 0x394}, {0x56, 7, 0x39B},
            {0x57, 0, 0x39C}, {0x57, 7, 0x3A3}, {0x5E, 0, 0x404}, {0x5E, 7, 0x40B},
            {0x60, 0, 0x420}, {0x61, 0, 0x428}, {0x62, 3, 0x433}, {0x77, 7, 0x4DF},
            {0x36, 0, 0x260}, {0x37, 1, 0x269}, {0x55, 7, 0x35F}, {0x5F, 0, 0x360},
            {0x5F, 7, 0x367}, {0x58, 0, 0x3A4}, {0x5A, 2, 0x3B6}, {0x5D, 7, 0x3D3},
            {0x78, 0, 0x500}, {0x79, 5, 0x50D}, {0x7C, 0, 0x520}, {0x7F, 7, 0x53F}};
        for (const auto& row : rows)
            QTest::addRow("column %02X block %d", row[0], row[1]) << row[0] << row[1] << row[2];
    }
    void placesEveryArea() {
        QFETCH(int, column);
        QFETCH(int, block);
        QFETCH(int, offset);
        RadioImage image;
        image.set(column, block, 0x5A);
        QByteArray expected = bytesOf(toFileImage(RadioImage{}, {}));
        expected[offset] = 0x5A;
        QCOMPARE(bytesOf(toFileImage(image, {})), expected);
    }

    void writesHeaderStampAndMarker() {
        QByteArray expected(1360, '\0');
        expected.replace(0, 0x29,
                         QByteArray::fromHex("08001200514b3732304d205043b1e0b3ccc8edbcfe2e"
                                             "08000a00b0e6b1be203d20312e311120020010"));
        expected.replace(0x4E0, 5, QByteArray::fromHex("1120010010"));
        expected.replace(0x4EC, 20, "09871231235905ZR310X");
        QCOMPARE(bytesOf(toFileImage(RadioImage{}, {987, 12, 31, 23, 59, 5})), expected);
    }

    // Our files bring back every column; without our marker, the columns
    // outside the classic areas keep what the image held.
    void roundTripsEveryColumn() {
        const auto isExtra = [](int c) {
            return (c >= 0x36 && c <= 0x55) || (c >= 0x58 && c <= 0x5D) || c == 0x5F || c >= 0x78;
        };
        std::mt19937 rng(3);
        for (int round = 0; round < 20; ++round) {
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
