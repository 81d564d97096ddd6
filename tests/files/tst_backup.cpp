// Backups of reads: their names, their folder, and that a backup never
// replaces a file.
#include "../model/model_test_util.h"
#include "backup.h"

#include <QtTest>

#include <fstream>

using namespace zr310;
using namespace zr310::test;
namespace fs = std::filesystem;

namespace {

// The radio ID bytes (0x3E0..0x3EF) as given, 0x00 after them.
RadioImage withRadioId(RadioImage image, const QByteArray& id) {
    for (int i = 0; i < 16; ++i)
        image.setAtAddress(kRadioIdAddress + i, i < id.size() ? std::uint8_t(id[i]) : 0x00);
    return image;
}

std::string contents(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

const DateTime kWhen{2026, 11, 23, 22, 15, 30};

} // namespace

class TestBackup : public QObject {
    Q_OBJECT
    QTemporaryDir m_temp;

private slots:
    void initTestCase() {
        QVERIFY(m_temp.isValid());
        // Never the real home.
        qputenv("XDG_DATA_HOME", m_temp.filePath("data").toUtf8());
    }

    void names() {
        const auto row = [](const QByteArray& id, int copy, const char* name) {
            const RadioImage image = withRadioId(makeStartImage(), id);
            QCOMPARE(QString::fromStdString(backupFileName(kWhen, decodeRadioId(image), copy)),
                     QString(name));
        };
        row("", 1, "2026-11-23_221530.k720");
        row("", 2, "2026-11-23_221530-2.k720");
        row("FLEET7", 1, "2026-11-23_221530_FLEET7.k720");
        row("Fleet 7  North", 1, "2026-11-23_221530_Fleet_7_North.k720");
        row("../a/b\\c:d*e?", 1, "2026-11-23_221530_a_b_c_d_e.k720");
        row("/// ...", 1, "2026-11-23_221530.k720");
    }

    // An existing file keeps its bytes; the backup takes the next free name,
    // carries the read's time as its save stamp and leaves no temporary file
    // behind.
    void neverReplaces() {
        const fs::path dir = m_temp.filePath("never-replaces").toStdString();
        fs::create_directories(dir);
        std::ofstream(dir / "2026-11-23_221530_FLEET7.k720") << "mine";
        std::ofstream(dir / "2026-11-23_221530_FLEET7-2.k720") << "mine too";
        const RadioImage image = withRadioId(noiseImage(31), "FLEET7");
        for (const char* name :
             {"2026-11-23_221530_FLEET7-3.k720", "2026-11-23_221530_FLEET7-4.k720"}) {
            const BackupResult backup = saveBackup(image, dir, kWhen);
            QVERIFY2(backup.ok(), backup.error.c_str());
            QCOMPARE(QString::fromStdString(backup.path.filename().string()), QString(name));
            QCOMPARE(contents(backup.path).substr(0x4EC, 14), std::string("20261123221530"));
        }
        QCOMPARE(contents(dir / "2026-11-23_221530_FLEET7.k720"), std::string("mine"));
        QCOMPARE(contents(dir / "2026-11-23_221530_FLEET7-2.k720"), std::string("mine too"));
        QCOMPARE(std::distance(fs::directory_iterator(dir), fs::directory_iterator()), 4);
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
