// Backups of reads: their names, their folder, and that a backup never
// replaces a file and opens to exactly the image it was made from.
#include "backup.h"
#include "k720_file.h"
#include "random_image.h"

#include <QRegularExpression>
#include <QtTest>

#include <fstream>
#include <sstream>

using namespace zr310;
namespace fs = std::filesystem;

namespace {

// The radio ID bytes (0x3E0..0x3EF) as given, 0x00 after them.
RadioImage withRadioId(RadioImage image, const QByteArray& id) {
    for (int i = 0; i < 16; ++i)
        image.setAtAddress(kRadioIdAddress + i, i < id.size() ? std::uint8_t(id[i]) : 0x00);
    return image;
}

QStringList fileNames(const fs::path& dir) {
    QStringList names;
    for (const auto& entry : fs::directory_iterator(dir))
        names << QString::fromStdString(entry.path().filename().string());
    names.sort();
    return names;
}

const DateTime kWhen{2026, 11, 23, 22, 15, 30};

} // namespace

class TestBackup : public QObject {
    Q_OBJECT
    QTemporaryDir m_temp;
    std::mt19937 m_rng{31};

private slots:
    void initTestCase() {
        QVERIFY(m_temp.isValid());
        // Never the real home.
        qputenv("XDG_DATA_HOME", m_temp.filePath("data").toUtf8());
    }

    void names_data() {
        QTest::addColumn<QByteArray>("id"); // the bytes in the radio
        QTest::addColumn<int>("copy");
        QTest::addColumn<QString>("name");
        const auto row = [](const char* tag, const QByteArray& id, int copy, const char* name) {
            QTest::newRow(tag) << id << copy << QString(name);
        };
        row("no ID", "", 1, "2026-11-23_221530.k720");
        row("no ID, second copy", "", 2, "2026-11-23_221530-2.k720");
        row("plain ID", "FLEET7", 1, "2026-11-23_221530_FLEET7.k720");
        row("ID, third copy", "FLEET7", 3, "2026-11-23_221530_FLEET7-3.k720");
        row("blanks", "Fleet 7  North", 1, "2026-11-23_221530_Fleet_7_North.k720");
        row("path characters", "../a/b\\c:d*e?", 1, "2026-11-23_221530_a_b_c_d_e.k720");
        row("only odd characters", "/// ...", 1, "2026-11-23_221530.k720");
        row("blank ID (0xFF bytes)", "\xff\xff\xff\xff", 1, "2026-11-23_221530.k720");
    }

    void names() {
        QFETCH(QByteArray, id);
        QFETCH(int, copy);
        QFETCH(QString, name);
        const RadioImage image = withRadioId(makeStartImage(), id);
        QCOMPARE(QString::fromStdString(backupFileName(kWhen, decodeRadioId(image), copy)), name);
    }

    // An existing file keeps its bytes; the backup takes the next free name.
    void neverReplaces() {
        const fs::path dir = m_temp.filePath("never-replaces").toStdString();
        fs::create_directories(dir);
        std::ofstream(dir / "2026-11-23_221530_FLEET7.k720") << "mine";
        std::ofstream(dir / "2026-11-23_221530_FLEET7-2.k720") << "mine too";

        const RadioImage image = withRadioId(randomImage(m_rng), "FLEET7");
        const BackupResult first = saveBackup(image, dir, kWhen);
        QVERIFY2(first.ok(), first.error.c_str());
        QCOMPARE(QString::fromStdString(first.path.filename().string()),
                 QString("2026-11-23_221530_FLEET7-3.k720"));
        const BackupResult second = saveBackup(image, dir, kWhen);
        QVERIFY2(second.ok(), second.error.c_str());
        QCOMPARE(QString::fromStdString(second.path.filename().string()),
                 QString("2026-11-23_221530_FLEET7-4.k720"));

        std::stringstream kept;
        kept << std::ifstream(dir / "2026-11-23_221530_FLEET7.k720").rdbuf();
        QCOMPARE(kept.str(), std::string("mine"));
        kept.str({});
        kept << std::ifstream(dir / "2026-11-23_221530_FLEET7-2.k720").rdbuf();
        QCOMPARE(kept.str(), std::string("mine too"));
        // Nothing else is left behind (no temporary files).
        QCOMPARE(fileNames(dir),
                 (QStringList{"2026-11-23_221530_FLEET7-2.k720", "2026-11-23_221530_FLEET7-3.k720",
                              "2026-11-23_221530_FLEET7-4.k720", "2026-11-23_221530_FLEET7.k720"}));
    }

    // Every byte of the image, also the columns only our files carry, comes
    // back; the file is a data file with the read's time as its save stamp.
    void opensToTheImage() {
        const fs::path dir = m_temp.filePath("opens/nested").toStdString(); // created
        for (int round = 0; round < 20; ++round) {
            const RadioImage image = randomImage(m_rng);
            const BackupResult backup = saveBackup(image, dir, kWhen);
            QVERIFY2(backup.ok(), backup.error.c_str());
            QCOMPARE(fs::file_size(backup.path), std::uintmax_t(kFileImageSize));
            RadioImage opened = makeStartImage();
            QVERIFY(openDataFile(backup.path, opened).ok());
            QVERIFY(opened == image);
            std::ifstream in(backup.path, std::ios::binary);
            std::string bytes(std::istreambuf_iterator<char>(in), {});
            QCOMPARE(bytes.substr(0x4EC, 14), std::string("20261123221530"));
        }
    }

    void failureIsReported() {
        // A file where the folder should be.
        const fs::path blocked = m_temp.filePath("blocked").toStdString();
        std::ofstream(blocked) << "x";
        const BackupResult backup = saveBackup(makeStartImage(), blocked / "backups", kWhen);
        QVERIFY(!backup.ok());
        QVERIFY(backup.path.empty());
        QVERIFY(QString::fromStdString(backup.error).contains("blocked"));
    }
};

QTEST_APPLESS_MAIN(TestBackup)
#include "tst_backup.moc"
