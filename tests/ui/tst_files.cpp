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
    // The files suite has each way a file is refused; File > Open says so
    // and keeps the edited data and its name.
    void refusedFileLeavesEverything() {
        QTemporaryDir dir;
        const QString path = writeFile(dir, dataFileBytes().chopped(1));
        auto window = startWindow();
        window->image()[0x101] ^= 0x10; // an edit the file must not undo
        const RadioImage before = window->image();
        const QString shown = cell(window.get(), 1, 1)->text();
        const QString fileName = window->currentFileName();

        ModalAnswerer answers;
        answers.answerFileDialog(path);
        trigger(window.get(), "menuFileopen");

        QCOMPARE(answers.log(),
                 (QStringList{seen("dlgOpen", txt::ToolOpen),
                              seen("msgBox", txt::Error, text(txt::IncorrectFileType))}));
        QVERIFY(window->image() == before);
        QCOMPARE(cell(window.get(), 1, 1)->text(), shown);
        QCOMPARE(window->currentFileName(), fileName);
    }

    // File > Exit with an edit: Yes saves (the first save asks for a name)
    // and closes, No closes, Cancel stays.
    void unsavedPrompt() {
        const auto row = [](QMessageBox::StandardButton answer, bool closes, bool saves) {
            QTemporaryDir dir;
            const QString target = dir.filePath("saved.k720");
            auto window = startWindow();
            window->image()[0x101] ^= 0x10; // one bit of channel 1
            const int edited = window->image()[0x101];

            ModalAnswerer answers;
            answers.answerBox(answer);
            answers.answerFileDialog(target);
            trigger(window.get(), "menuFileExit");

            QCOMPARE(answers.log().first(),
                     seen("msgBox", txt::ReadButton, text(txt::SaveChangesQuestion)));
            QCOMPARE(window->isVisible(), !closes);
            QCOMPARE(QFile::exists(target), saves);
            if (saves) {
                RadioImage reread;
                QVERIFY(openDataFile(target.toStdString(), reread).ok());
                QCOMPARE(int(reread[0x101]), edited);
                QVERIFY(!window->isModified());
            }
        };
        row(QMessageBox::Yes, true, true);
        row(QMessageBox::No, true, false);
        row(QMessageBox::Cancel, false, false);
    }

    // `zr310 FILE`: the file opens once the window shows; one it refuses
    // leaves the start data and says why. Starting and opening take the
    // reference copy: closing then asks nothing (saving and reading take it
    // in unsavedPrompt and the transfer tests).
    void openAtStart() {
        const auto row = [](const QByteArray& bytes, const QStringList& windows) {
            QTemporaryDir dir;
            zr310::ui::StartOptions options;
            options.locale = QLocale("en_US");
            options.fileToOpen = writeFile(dir, bytes);
            zr310::ui::MainForm window(options);
            ModalAnswerer answers;
            window.showAndOpen();
            QCOMPARE(answers.log(), windows);
            const bool opened = windows.isEmpty();
            QCOMPARE(cell(&window, 1, 1)->text(),
                     opened ? QString("145.51250") : QString("000.00000"));
            QCOMPARE(window.currentFileName() == options.fileToOpen, opened);
            QVERIFY(window.close());
            QCOMPARE(answers.log(), windows);
        };
        row(dataFileBytes(), {});
        row("hello", {seen("msgBox", txt::Error, text(txt::IncorrectFileType))});
    }

    // A file dropped on the window opens, after the question when there are
    // edits; anything but one .k720 or .bin file is not taken.
    void dropOpens() {
        const auto row = [](const QString& name, bool edited, QMessageBox::StandardButton answer,
                            bool opens) {
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
            answers.answerBox(answer);
            QMimeData data;
            data.setUrls({QUrl::fromLocalFile(path)});
            QDragEnterEvent enter(QPoint(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
            QApplication::sendEvent(window.get(), &enter);
            QCOMPARE(enter.isAccepted(), name != "data.txt");
            if (enter.isAccepted()) {
                QDropEvent drop(QPointF(10, 10), Qt::CopyAction, &data, Qt::LeftButton, {});
                QApplication::sendEvent(window.get(), &drop);
            }
            QCoreApplication::processEvents(); // the drop opens the file once it is over
            QCOMPARE(answers.log().size(), edited ? 1 : 0);
            QVERIFY(window->image() == (opens ? dropped : before));
            QCOMPARE(window->currentFileName() == path, opens);
        };
        row("RADIO.BIN", false, QMessageBox::NoButton, true);
        row("data.k720", true, QMessageBox::No, true);
        row("data.k720", true, QMessageBox::Cancel, false);
        row("data.txt", false, QMessageBox::NoButton, false);
    }
};

QTEST_MAIN(TestFiles)
#include "tst_files.moc"
