#include "k720_file.h"
#include "random_image.h"

#include <QtTest>

#include <fstream>
#include <optional>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
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

    // Saving to NAME (a link to LINK when given) with THING made at "t" first:
    // only a regular file is replaced, links are followed and stay, and a
    // refusal says why and writes nothing anywhere.
    void oddSaveTargets_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("link");
        QTest::addColumn<QString>("thing");
        QTest::addColumn<QString>("why"); // in the refusal; empty: saved to "t"
        const auto row = [](const char* tag, const char* name, const char* link, const char* thing,
                            const char* why) {
            QTest::newRow(tag) << name << link << thing << why;
        };
        row("plain file", "t", "", "file", "");
        row("device node", "/dev/null", "", "", "device");
        row("link to a device", "a", "/dev/null", "", "device");
        row("fifo", "t", "", "fifo", "pipe");
        row("folder", "t", "", "folder", "folder");
        row("link to a file", "sub/a", "../t", "file", "");
        row("dangling link", "sub/a", "../t", "", "");
        row("dangling link, no folder", "a", "none/t", "", "No such file");
        row("link loop", "a", "a", "", "symbolic links");
    }
    void oddSaveTargets() {
        QFETCH(QString, name);
        QFETCH(QString, link);
        QFETCH(QString, thing);
        QFETCH(QString, why);
        const fs::path path = m_dir / name.toStdString(), t = m_dir / "t";
        fs::create_directory(m_dir / "sub");
        if (!link.isEmpty())
            fs::create_symlink(link.toStdString(), path);
        if (thing == "file" || thing == "folder")
            thing == "file" ? writeBytes(t, {1}) : void(fs::create_directory(t));
        QVERIFY(thing != "fifo" || mkfifo(t.c_str(), 0600) == 0);
        const FileResult result = saveDataFile(path, RadioImage{}, {});
        QVERIFY2(why.isEmpty() ? result.ok() : QString(result.detail.c_str()).contains(why),
                 result.detail.c_str());
        QCOMPARE(fs::is_symlink(path), !link.isEmpty());
        const bool plain = fs::is_regular_file(fs::symlink_status(t)); // kept or saved
        QCOMPARE(plain ? int(fs::file_size(t)) : 0, why.isEmpty() ? 1360 : int(thing == "file"));
        QVERIFY(fs::is_character_file("/dev/null"));
        for (const fs::path dir : {m_dir, m_dir / "sub", fs::path("/dev")})
            for (const auto& entry : fs::directory_iterator(dir))
                QVERIFY(entry.path().string().find(".zr310-") == std::string::npos);
    }

    // A save removes the temporary files killed saves left in its folder: ours
    // by name, this user's plain files, older than a minute; nothing else.
    void staleTempFilesGo_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("age");      // seconds
        QTest::addColumn<QString>("kind"); // file, link or foreign (another user's)
        QTest::addColumn<bool>("goes");
        const auto row = [](const char* tag, const char* name, int age, const char* kind,
                            bool goes) { QTest::newRow(tag) << name << age << kind << goes; };
        row("left by a killed save", "y.bin.zr310-1a2b3c-0", 120, "file", true);
        row("a save under way", "x.k720.zr310-1a2b3c-1", 5, "file", false);
        row("name not ours", "x.k720.zr310-keep", 3600, "file", false);
        row("a link", "x.k720.zr310-1-2", 3600, "link", false);
        row("another user's", "x.k720.zr310-1-2", 3600, "foreign", false);
    }
    void staleTempFilesGo() {
        QFETCH(QString, name);
        QFETCH(int, age);
        QFETCH(QString, kind);
        QFETCH(bool, goes);
        const fs::path stale = m_dir / name.toStdString(), kept = m_dir / "kept";
        writeBytes(kind == "link" ? kept : stale, {1});
        if (kind == "link")
            fs::create_symlink(kept, stale);
        if (kind == "foreign" && (geteuid() != 0 || chown(stale.c_str(), 65534, 65534) != 0))
            QSKIP("only root can give a file to another user");
        const auto then = fs::file_time_type::clock::now() - std::chrono::seconds(age);
        fs::last_write_time(kind == "link" ? kept : stale, then);
        QVERIFY(saveDataFile(m_dir / "x.k720", RadioImage{}, {}).ok());
        QCOMPARE(fs::exists(fs::symlink_status(stale)), !goes);
        QVERIFY(kind != "link" || fs::exists(kept));
    }
#endif

    // Bytes the layout gives no meaning survive an open and a save.
    void unnamedBytesSurviveASave() {
        FileImage file = toFileImage(randomImage(m_rng), {});
        const int unnamed[][2] = {{0x029, 0x037}, {0x138, 0x1AF}, {0x368, 0x393}, {0x3D4, 0x403},
                                  {0x40C, 0x41F}, {0x4E5, 0x4EB}, {0x540, 0x54F}};
        for (const auto& [first, last] : unnamed)
            std::generate(file.begin() + first, file.begin() + last + 1,
                          [&] { return 1 + m_rng() % 255; });
        writeBytes(m_dir / "in.k720", Bytes(file.begin(), file.end()));
        RadioImage image;
        FileExtras extras;
        QVERIFY(openImageFile(m_dir / "in.k720", image, &extras).ok());
        QVERIFY(saveImageFile(m_dir / "out.k720", image, {}, extras).ok());
        QVERIFY(readBytes(m_dir / "out.k720") == Bytes(file.begin(), file.end()));
    }
};

QTEST_APPLESS_MAIN(TestFileIo)
#include "tst_file_io.moc"
