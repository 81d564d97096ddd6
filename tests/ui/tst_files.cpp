// Open, Save and the unsaved-data question, driven through the menus and
// the file dialogs.
#include "channel.h"
#include "k720_file.h"
#include "ui_test_support.h"

#include <QFile>
#include <QTemporaryDir>

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
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
