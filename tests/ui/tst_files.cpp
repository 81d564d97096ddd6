// Open, Save and the unsaved-data question, driven through the menus and
// the file dialogs.
#include "channel.h"
#include "k720_file.h"
#include "ui_test_support.h"

#include <QDragEnterEvent>
#include <QDropEvent>
#include <QFile>
#include <QMimeData>
#include <QTemporaryDir>
#include <QUrl>

using namespace zr310;

namespace {

// A data file whose channel 1 receives on 145.5125 MHz.
QByteArray dataFileBytes() {
    RadioImage image = makeStartImage();
    auto channel = ChannelRecord::channel(image, 1);
    channel.setOpen(true);
    channel.setTxAllowed(true);
    channel.setFrequency(Side::Receive, 145.5125);
    const FileImage file = toFileImage(image, DateTime{2008, 3, 7, 9, 5, 3});
    return QByteArray(reinterpret_cast<const char*>(file.data()), qsizetype(file.size()));
}

QString writeFile(const QTemporaryDir& dir, const QByteArray& bytes) {
    const QString path = dir.filePath("data.k720");
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size()) {
        qWarning("cannot write %s", qPrintable(path));
    }
    return path;
}

} // namespace

class TestFiles : public QObject {
    Q_OBJECT
private slots:
    // Starting and opening take the reference copy (saving and reading are in
    // unsavedPrompt and the transfer tests).
    void closingAsksNothing_data() {
        QTest::addColumn<bool>("open");
        QTest::newRow("fresh start") << false;
        QTest::newRow("after open") << true;
    }

    void closingAsksNothing() {
        QFETCH(bool, open);
        QTemporaryDir dir;
        const QString path = writeFile(dir, dataFileBytes());
        auto window = startWindow();
        ModalAnswerer answers;
        if (open) {
            answers.answerFileDialog(path);
            trigger(window.get(), "menuFileopen");
            QCOMPARE(cell(window.get(), 1, 1)->text(), QString("145.51250"));
            QCOMPARE(window->currentFileName(), path);
        }
        QVERIFY(window->close());
        QCOMPARE(answers.log(), open ? QStringList{seen("dlgOpen", 1050)} : QStringList{});
    }

    void refusedFileLeavesEverything_data() {
        QTest::addColumn<QByteArray>("bytes");
        const QByteArray good = dataFileBytes();
        QTest::newRow("one byte short") << good.left(good.size() - 1);
        QByteArray tag = good;
        tag[9] = 'm';
        QTest::newRow("tag differs in case") << tag;
    }

    void refusedFileLeavesEverything() {
        QFETCH(QByteArray, bytes);
        QTemporaryDir dir;
        const QString path = writeFile(dir, bytes);
        auto window = startWindow();
        window->image()[0x101] ^= 0x10; // an edit the file must not undo
        const RadioImage before = window->image();
        const QString shown = cell(window.get(), 1, 1)->text();
        const QString fileName = window->currentFileName();

        ModalAnswerer answers;
        answers.answerFileDialog(path);
        trigger(window.get(), "menuFileopen");

        QCOMPARE(answers.log(),
                 (QStringList{seen("dlgOpen", 1050), seen("msgBox", 1104, text(1124))}));
        QVERIFY(window->image() == before);
        QCOMPARE(cell(window.get(), 1, 1)->text(), shown);
        QCOMPARE(window->currentFileName(), fileName);
    }

    void unsavedPrompt_data() {
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("closes");
        QTest::addColumn<bool>("saves");
        QTest::newRow("Yes saves and closes") << int(QMessageBox::Yes) << true << true;
        QTest::newRow("No closes") << int(QMessageBox::No) << true << false;
        QTest::newRow("Cancel stays") << int(QMessageBox::Cancel) << false << false;
    }

    void unsavedPrompt() {
        QFETCH(int, answer);
        QFETCH(bool, closes);
        QFETCH(bool, saves);
        QTemporaryDir dir;
        const QString target = dir.filePath("saved.k720");
        auto window = startWindow();
        window->image()[0x101] ^= 0x10; // one bit of channel 1
        const int edited = window->image()[0x101];

        ModalAnswerer answers;
        answers.answerBox(static_cast<QMessageBox::StandardButton>(answer));
        answers.answerFileDialog(target); // the first save asks for a name
        trigger(window.get(), "menuFileExit");

        QCOMPARE(answers.log().first(), seen("msgBox", 1410, text(1123)));
        QCOMPARE(window->isVisible(), !closes);
        QCOMPARE(QFile::exists(target), saves);
        if (saves) {
            RadioImage reread;
            QVERIFY(openDataFile(target.toStdString(), reread).ok());
            QCOMPARE(int(reread[0x101]), edited);
            QVERIFY(!window->isModified());
        }
    }

    // `zr310 FILE`: the file opens once the window shows; one it refuses
    // leaves the start data and says why.
    void openAtStart_data() {
        QTest::addColumn<QByteArray>("bytes");
        QTest::addColumn<QStringList>("windows");
        QTest::newRow("data file") << dataFileBytes() << QStringList{};
        QTest::newRow("not a data file")
            << QByteArray("hello") << QStringList{seen("msgBox", 1104, text(1124))};
    }

    void openAtStart() {
        QFETCH(QByteArray, bytes);
        QFETCH(QStringList, windows);
        QTemporaryDir dir;
        zr310::ui::StartOptions options;
        options.locale = QLocale("en_US");
        options.fileToOpen = writeFile(dir, bytes);
        zr310::ui::MainForm window(options);
        ModalAnswerer answers;
        window.showAndOpen();
        QCOMPARE(answers.log(), windows);
        const bool opened = windows.isEmpty();
        QCOMPARE(cell(&window, 1, 1)->text(), opened ? QString("145.51250") : QString("000.00000"));
        QCOMPARE(window.currentFileName() == options.fileToOpen, opened);
    }

    // A file dropped on the window opens, after the question when there are
    // edits; anything but one .k720 or .bin file is not taken.
    void dropOpens_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("edited");
        QTest::addColumn<int>("answer");
        QTest::addColumn<bool>("opens");
        const int none = QMessageBox::NoButton;
        QTest::newRow("no edits") << "data.k720" << false << none << true;
        QTest::newRow("raw image") << "RADIO.BIN" << false << none << true;
        QTest::newRow("edits, No") << "data.k720" << true << int(QMessageBox::No) << true;
        QTest::newRow("edits, Cancel") << "data.k720" << true << int(QMessageBox::Cancel) << false;
        QTest::newRow("other file") << "data.txt" << false << none << false;
    }

    void dropOpens() {
        QFETCH(QString, name);
        QFETCH(bool, edited);
        QFETCH(int, answer);
        QFETCH(bool, opens);
        QTemporaryDir dir;
        RadioImage dropped = makeStartImage();
        dropped[0x101] ^= 0x20;
        const QString path = dir.filePath(name);
        QVERIFY(saveImageFile(path.toStdString(), dropped, DateTime{2008, 3, 7, 9, 5, 3}).ok());
        auto window = startWindow();
        if (edited) {
            window->image()[0x102] ^= 0x01;
        }
        const RadioImage before = window->image();

        ModalAnswerer answers;
        answers.answerBox(static_cast<QMessageBox::StandardButton>(answer));
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
        QApplication::sendEvent(window.get(), &enter);
        QCOMPARE(enter.isAccepted(), name != "data.txt");
        if (enter.isAccepted()) {
            QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(window.get(), &drop);
        }
        QTest::qWait(50);
        QCOMPARE(answers.log().size(), edited ? 1 : 0);
        QVERIFY(window->image() == (opens ? dropped : before));
        QCOMPARE(window->currentFileName() == path, opens);
    }
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
