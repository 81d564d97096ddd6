#include "k720_file.h"
#include "random_image.h"

#include <QtTest>

#include <fstream>
#include <optional>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <unistd.h>
#endif

Q_DECLARE_METATYPE(zr310::FileError)

using namespace zr310;
namespace fs = std::filesystem;
using Bytes = std::vector<std::uint8_t>;

namespace {

Bytes readBytes(const fs::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

void writeBytes(const fs::path& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
}

int entryCount(const fs::path& dir) {
    return int(std::distance(fs::directory_iterator(dir), fs::directory_iterator()));
}

} // namespace

class TestFileIo : public QObject {
    Q_OBJECT
    QTemporaryDir m_temp;
    fs::path m_dir;
    std::mt19937 m_rng{17};

private slots:
    void init() {
        const char* tag = QTest::currentDataTag();
        m_dir = m_temp.filePath(QString(QTest::currentTestFunction()) + tag).toStdString();
        fs::create_directory(m_dir);
    }

    // Opening by name: a saved file (replacing an older one) opens back in the
    // format its name chooses; anything else is refused and changes nothing.
    void opensByName_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("save");
        QTest::addColumn<int>("size"); // of the saved file, or written; -1 none, -2 a folder
        QTest::addColumn<FileError>("error");
        QTest::newRow("data file") << "ZR-310.k720" << true << 1360 << FileError::None;
        QTest::newRow("last extension counts") << "a.bin.k720" << true << 1360 << FileError::None;
        QTest::newRow("raw image") << "image.bin" << true << 1024 << FileError::None;
        QTest::newRow("raw image, any case") << "IMAGE.Bin" << true << 1024 << FileError::None;
        QTest::newRow("missing") << "a.k720" << false << -1 << FileError::CannotRead;
        QTest::newRow("directory") << "a.k720" << false << -2 << FileError::CannotRead;
        QTest::newRow("huge") << "a.k720" << false << (1 << 20) << FileError::IncorrectFileType;
        QTest::newRow("raw 1023") << "a.bin" << false << 1023 << FileError::IncorrectFileType;
        QTest::newRow("raw 1360") << "a.bin" << false << 1360 << FileError::IncorrectFileType;
    }
    void opensByName() {
        QFETCH(QString, name);
        QFETCH(bool, save);
        QFETCH(int, size);
        QFETCH(FileError, error);
        const fs::path path = m_dir / name.toStdString();
        const RadioImage saved = randomImage(m_rng), before = randomImage(m_rng);
        if (size == -2)
            fs::create_directory(path);
        else if (size >= 0)
            writeBytes(path, Bytes(save ? 5000 : std::size_t(size), 'Q'));
        if (save) {
            QVERIFY(saveImageFile(path, saved, {}).ok());
            const Bytes bytes = readBytes(path);
            QCOMPARE(int(bytes.size()), size);
            if (size == 1024) // radio address order: column c, block b at c * 8 + b
                QCOMPARE(bytes[0x5A * 8 + 2], saved.at(0x5A, 2));
        }
        RadioImage image = before;
        const FileResult result = openImageFile(path, image);
        QCOMPARE(result.error, error);
        QCOMPARE(result.detail.empty(), save);
        QVERIFY(image == (save ? saved : before));
        QCOMPARE(entryCount(m_dir), size == -1 ? 0 : 1);
    }

    // Damaged and random files: the opener takes exactly the well-formed ones
    // (1360 bytes, "QK720M" at 4..9) and leaves the image alone otherwise.
    void opensOnlyWellFormedFiles() {
        const RadioImage before = randomImage(m_rng);
        const FileImage file = toFileImage(randomImage(m_rng), {});
        const auto pick = [&](std::size_t n) { return std::size_t(m_rng() % n); };
        int accepted = 0;
        for (int round = 0; round < 5000; ++round) {
            Bytes bytes(file.begin(), file.end());
            if (round % 4 == 0) { // noise of about the right size, sometimes tagged
                bytes.resize(1300 + pick(121));
                std::generate(bytes.begin(), bytes.end(), m_rng);
                if (round % 8 == 0)
                    std::copy_n("QK720M", 6, bytes.begin() + 4);
            } else if (round % 4 == 3) { // cut short or run on
                bytes.resize(pick(2) ? pick(1360) : 1361 + pick(200), std::uint8_t(m_rng()));
            } else { // bits flipped anywhere, or in the tag
                for (std::size_t n = 1 + pick(8); n > 0; --n)
                    bytes[round % 4 == 1 ? pick(bytes.size()) : 4 + pick(6)] ^= 1 << pick(8);
            }
            const bool wellFormed =
                bytes.size() == 1360 && std::equal(bytes.begin() + 4, bytes.begin() + 10, "QK720M");
            RadioImage image = before;
            FileError error = loadDataFileBytes(bytes, image);
            if (round % 20 == 0) { // now and then through the file system
                writeBytes(m_dir / "f.k720", bytes);
                error = openImageFile(m_dir / "f.k720", image = before).error;
            }
            QCOMPARE(error, wellFormed ? FileError::None : FileError::IncorrectFileType);
            QCOMPARE(image == before, !wellFormed);
            accepted += wellFormed;
        }
        QVERIFY(accepted > 500);
    }

#ifdef Q_OS_UNIX
    // Each way a save can fail leaves the old file as it was and nothing else.
    void failedSaveKeepsOldFile_data() {
        QTest::addColumn<int>("how");
        QTest::newRow("unwritable directory") << 0;
        QTest::newRow("stopped half-way") << 1;
        QTest::newRow("rename onto a directory") << 2;
    }
    void failedSaveKeepsOldFile() {
        QFETCH(int, how);
        const fs::path path = m_dir / "old.k720";
        QVERIFY(saveDataFile(path, randomImage(m_rng), {}).ok());
        const Bytes old = readBytes(path);
        std::optional<FileResult> result;
        if (how == 0) { // root writes anywhere: save as a plain user
            const bool root = geteuid() == 0;
            fs::permissions(m_dir, fs::perms::owner_read | fs::perms::owner_exec);
            if (!root || seteuid(65534) == 0)
                result = saveDataFile(path, RadioImage{}, {});
            if (root && seteuid(0) != 0)
                qFatal("cannot regain root rights");
            fs::permissions(m_dir, fs::perms::owner_all);
        } else if (how == 1) { // the write stops after 100 bytes
            rlimit saved{};
            getrlimit(RLIMIT_FSIZE, &saved);
            const rlimit small{100, saved.rlim_max};
            const auto handler = std::signal(SIGXFSZ, SIG_IGN);
            setrlimit(RLIMIT_FSIZE, &small);
            result = saveDataFile(path, RadioImage{}, {});
            setrlimit(RLIMIT_FSIZE, &saved);
            std::signal(SIGXFSZ, handler);
        } else if (fs::create_directories(m_dir / "taken" / "inside")) {
            result = saveDataFile(m_dir / "taken", RadioImage{}, {});
        }
        if (!result)
            QSKIP("cannot give up root rights");
        QCOMPARE(result->error, FileError::CannotWrite);
        QCOMPARE(readBytes(path), old);
        QCOMPARE(entryCount(m_dir), how == 2 ? 2 : 1);
    }
#endif
};

QTEST_APPLESS_MAIN(TestFileIo)
#include "tst_file_io.moc"
