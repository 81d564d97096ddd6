#include "../model/model_test_util.h"
#include "k720_file.h"

#include <QtTest>

#include <fstream>

#ifdef Q_OS_UNIX
#include <csignal>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#endif

Q_DECLARE_METATYPE(zr310::FileError)

using namespace zr310;
using namespace zr310::test;
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
    int m_dirs = 0;
    std::mt19937 m_rng{17};
    quint32 nextSeed() { return static_cast<quint32>(m_rng()); } // mt19937 makes 32 bits

    // An empty folder of its own for each test and row.
    fs::path freshDir() {
        const fs::path dir = m_temp.filePath(QString::number(++m_dirs)).toStdString();
        fs::create_directory(dir);
        return dir;
    }

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
        const FileImage file = toFileImage(image, {987, 12, 31, 23, 59, 5});
        QCOMPARE(QByteArray(reinterpret_cast<const char*>(file.data()), int(file.size())),
                 expected);
    }

    // Our files bring back every column; without our marker, the columns
    // outside the classic areas keep what the image held.
    void roundTripsEveryColumn() {
        const auto isExtra = [](int c) {
            return (c >= 0x36 && c <= 0x55) || (c >= 0x58 && c <= 0x5D) || c == 0x5F || c >= 0x78;
        };
        for (quint32 round = 0; round < 5; ++round) {
            const RadioImage saved = noiseImage(2 * round), old = noiseImage(2 * round + 1);
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

    // Opening by name: a saved file (replacing an older one) opens back in the
    // format its name chooses; anything else is refused and changes nothing.
    void opensByName() {
        // The size of the saved file, or of what stands there: -1 nothing, -2 a folder.
        const auto row = [this](const char* name, bool save, int size, FileError error) {
            const fs::path dir = freshDir(), path = dir / name;
            const RadioImage saved = noiseImage(nextSeed()), before = noiseImage(nextSeed());
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
            QCOMPARE(entryCount(dir), size == -1 ? 0 : 1);
        };
        row("ZR-310.k720", true, 1360, FileError::None);
        row("a.bin.k720", true, 1360, FileError::None); // the last extension counts
        row("IMAGE.Bin", true, 1024, FileError::None);  // a raw image, in any letter case
        row("a.k720", false, -1, FileError::CannotRead);
        row("a.k720", false, -2, FileError::CannotRead);
        row("a.k720", false, 1 << 20, FileError::IncorrectFileType);
        row("a.bin", false, 1023, FileError::IncorrectFileType);
    }

#ifdef Q_OS_UNIX
    // A save that fails leaves the old file as it was and nothing else: when no
    // new file can be made (no file descriptor left) or the write stops after
    // 100 bytes.
    void failedSaveKeepsOldFile() {
        for (const int resource : {RLIMIT_NOFILE, RLIMIT_FSIZE}) {
            const fs::path dir = freshDir(), path = dir / "old.k720";
            QVERIFY(saveDataFile(path, noiseImage(nextSeed()), {}).ok());
            const Bytes old = readBytes(path);
            rlimit saved{};
            getrlimit(resource, &saved);
            const rlimit small{resource == RLIMIT_FSIZE ? 100u : 0u, saved.rlim_max};
            const auto handler = std::signal(SIGXFSZ, SIG_IGN);
            setrlimit(resource, &small);
            const FileResult result = saveDataFile(path, RadioImage{}, {});
            setrlimit(resource, &saved);
            std::signal(SIGXFSZ, handler);
            QCOMPARE(result.error, FileError::CannotWrite);
            QVERIFY2(result.detail.starts_with(resource == RLIMIT_FSIZE ? "cannot write the new"
                                                                        : "cannot create a new"),
                     result.detail.c_str());
            QCOMPARE(readBytes(path), old);
            QCOMPARE(entryCount(dir), 1);
        }
    }

    // Saving to NAME (a link to LINK when given) with THING made at "t" first:
    // only a regular file is replaced, links are followed and stay, and a
    // refusal says WHY and writes nothing anywhere.
    void oddSaveTargets() {
        const auto row = [this](const char* name, const QString& link, const QString& thing,
                                const QString& why) { // why empty: saved to "t"
            const fs::path dir = freshDir(), path = dir / name, t = dir / "t";
            fs::create_directory(dir / "sub");
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
            QCOMPARE(plain ? int(fs::file_size(t)) : 0,
                     why.isEmpty() ? 1360 : int(thing == "file"));
            QVERIFY(fs::is_character_file("/dev/null"));
            for (const fs::path& folder : {dir, dir / "sub", fs::path("/dev")})
                for (const auto& entry : fs::directory_iterator(folder))
                    QVERIFY(entry.path().string().find(".zr310-") == std::string::npos);
        };
        row("a", "/dev/null", "", "device");
        row("t", "", "fifo", "pipe");
        row("t", "", "folder", "folder");
        row("sub/a", "../t", "file", "");
        row("sub/a", "../t", "", ""); // a dangling link
        row("a", "none/t", "", "No such file");
        row("a", "a", "", "symbolic links");
    }

    // A save removes the temporary files killed saves left in its folder: ours
    // by name, this user's plain files, older than a minute; nothing else.
    void staleTempFilesGo() {
        // kind: file, link or foreign (another user's); age in seconds.
        const auto row = [this](const char* name, int age, const QString& kind, bool goes) {
            const fs::path dir = freshDir(), stale = dir / name, kept = dir / "kept";
            writeBytes(kind == "link" ? kept : stale, {1});
            if (kind == "link")
                fs::create_symlink(kept, stale);
            if (kind == "foreign" && (geteuid() != 0 || chown(stale.c_str(), 65534, 65534) != 0))
                QSKIP("only root can give a file to another user");
            const auto then = fs::file_time_type::clock::now() - std::chrono::seconds(age);
            fs::last_write_time(kind == "link" ? kept : stale, then);
            QVERIFY(saveDataFile(dir / "x.k720", RadioImage{}, {}).ok());
            QCOMPARE(fs::exists(fs::symlink_status(stale)), !goes);
            QVERIFY(kind != "link" || fs::exists(kept));
        };
        row("y.bin.zr310-1a2b3c-0", 120, "file", true); // left by a killed save
        row("x.k720.zr310-1a2b3c-1", 5, "file", false); // a save under way
        row("x.k720.zr310-keep", 3600, "file", false);  // a name not ours
        row("x.k720.zr310-1-2", 3600, "link", false);
        row("x.k720.zr310-1-2", 3600, "foreign", false); // last: it may skip the rest
    }
#endif
};

QTEST_APPLESS_MAIN(TestFileIo)
#include "tst_file_io.moc"
