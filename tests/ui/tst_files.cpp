// Open, Save and the unsaved-data question, driven through the menus and
// the file dialogs.
#include "channel.h"
#include "k720_file.h"
#include "main_form.h"
#include "modal_answerer.h"
#include "string_table.h"
#include "ui_test_support.h"

#include <QFile>
#include <QTemporaryDir>

using namespace zr310;

namespace {

QString text(int id) {
    return QString::fromUtf8(ResString(id));
}

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

QString writeFile(const QTemporaryDir& dir, const QString& name, const QByteArray& bytes) {
    const QString path = dir.filePath(name);
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
    void openShowsTheFile();
    void refusedFileLeavesEverything_data();
    void refusedFileLeavesEverything();
    void unsavedPrompt_data();
    void unsavedPrompt();
    void noPromptWithoutEdits_data();
    void noPromptWithoutEdits();
};

void TestFiles::openShowsTheFile() {
    QTemporaryDir dir;
    const QString path = writeFile(dir, "good.k720", dataFileBytes());
    auto window = startWindow();
    ModalAnswerer answers;
    answers.answerFileDialog(path);
    action(window.get(), "menuFileopen")->trigger();
    QCOMPARE(answers.seenNames(), QStringList{"dlgOpen"});
    QCOMPARE(cell(window.get(), 1, 1), QString("145.51250"));
    QCOMPARE(window->currentFileName(), path);
    QVERIFY(!window->isModified());
}

void TestFiles::refusedFileLeavesEverything_data() {
    QTest::addColumn<QByteArray>("bytes");
    const QByteArray good = dataFileBytes();
    QTest::newRow("one byte short") << good.left(1359);
    QTest::newRow("one byte long") << good + '\0';
    QByteArray tag = good;
    tag[9] = 'm';
    QTest::newRow("tag differs in case") << tag;
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text file") << QByteArray(1360, 'x');
}

void TestFiles::refusedFileLeavesEverything() {
    QFETCH(QByteArray, bytes);
    QTemporaryDir dir;
    const QString path = writeFile(dir, "bad.k720", bytes);
    auto window = startWindow();
    auto channel = ChannelRecord::channel(window->image(), 2);
    channel.setOpen(true);
    channel.setFrequency(Side::Receive, 438.0125);
    window->ReFlashData();
    const RadioImage before = window->image();
    const QString title = window->windowTitle();
    const QString fileName = window->currentFileName();
    const QString shown = cell(window.get(), 2, 1);

    ModalAnswerer answers;
    answers.answerFileDialog(path);
    answers.answerBox(QMessageBox::Ok);
    action(window.get(), "menuFileopen")->trigger();

    QCOMPARE(answers.seenNames(), (QStringList{"dlgOpen", "msgBox"}));
    QCOMPARE(answers.seen()[1].text, text(1124));
    QCOMPARE(answers.seen()[1].title, text(1104));
    QCOMPARE(answers.seen()[1].icon, QMessageBox::Critical);
    QVERIFY(window->image() == before);
    QCOMPARE(cell(window.get(), 2, 1), shown);
    QCOMPARE(window->windowTitle(), title);
    QCOMPARE(window->currentFileName(), fileName);
}

void TestFiles::unsavedPrompt_data() {
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("closes");
    QTest::addColumn<bool>("saves");
    QTest::newRow("Yes saves and closes") << int(QMessageBox::Yes) << true << true;
    QTest::newRow("No closes") << int(QMessageBox::No) << true << false;
    QTest::newRow("Cancel stays") << int(QMessageBox::Cancel) << false << false;
}

void TestFiles::unsavedPrompt() {
    QFETCH(int, answer);
    QFETCH(bool, closes);
    QFETCH(bool, saves);
    QTemporaryDir dir;
    const QString target = dir.filePath("saved.k720");
    auto window = startWindow();
    window->image()[0x101] ^= 0x10; // one bit of channel 1
    const RadioImage edited = window->image();

    ModalAnswerer answers;
    answers.answerBox(static_cast<QMessageBox::StandardButton>(answer));
    answers.answerFileDialog(target); // the first save asks for a name
    action(window.get(), "menuFileExit")->trigger();

    QCOMPARE(answers.seen().first().objectName, QString("msgBox"));
    QCOMPARE(answers.seen().first().text, text(1123));
    QCOMPARE(answers.seen().first().title, text(1410));
    QCOMPARE(window->isVisible(), !closes);
    QCOMPARE(QFile::exists(target), saves);
    QVERIFY(window->image() == edited);
    if (saves) {
        RadioImage reread;
        QVERIFY(openDataFile(target.toStdString(), reread).ok());
        QCOMPARE(int(reread[0x101]), int(edited[0x101]));
        QVERIFY(!window->isModified());
    }
}

// Opening, saving and (in the transfer tests) reading take the reference
// copy: closing right after asks nothing.
void TestFiles::noPromptWithoutEdits_data() {
    QTest::addColumn<QString>("step");
    QTest::newRow("fresh start") << "none";
    QTest::newRow("after open") << "open";
    QTest::newRow("after edit and save") << "save";
}

void TestFiles::noPromptWithoutEdits() {
    QFETCH(QString, step);
    QTemporaryDir dir;
    auto window = startWindow();
    if (step == "open") {
        QVERIFY(window->openFile(writeFile(dir, "a.k720", dataFileBytes())));
    } else if (step == "save") {
        window->image()[0x3D6] = 0x06;
        QVERIFY(window->isModified());
        QVERIFY(window->saveFile(dir.filePath("b.k720")));
    }
    ModalAnswerer answers;
    QVERIFY(window->close());
    QVERIFY(answers.seen().isEmpty());
}

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
