// The radio information window: what it shows of the image, the 96-character
// limit of the user text, and Read and Write against the simulated radio.
#include "frmInfo/frm_info.h"
#include "radio_info.h"
#include "simulated_radio.h"
#include "ui_test_support.h"

#include <QClipboard>
#include <QFontDialog>
#include <QPlainTextEdit>

using namespace zr310;

namespace {

const QString kFull = "LoadResString(1404 + gbytLang * 1000), vbOKOnly, LoadResString(1406 + "
                      "gbytLang * 1000) '超出文本最大输入限度!\"ZR-310 PC编程软件";

// Radio addresses 0x300..0x3EF: the user text (UTF-16LE), the date, the ID.
QByteArray infoArea(const QString& text, const QByteArray& date, const QByteArray& id) {
    QByteArray bytes(0xF0, '\0');
    for (int i = 0; i < text.size(); ++i) {
        bytes[2 * i] = char(text[i].unicode() & 0xFF);
        bytes[2 * i + 1] = char(text[i].unicode() >> 8);
    }
    bytes.replace(0xC0, date.size(), date);
    return bytes.replace(0xE0, id.size(), id);
}

QString nowText() {
    const QDateTime now = QDateTime::currentDateTime();
    return QLocale::system().toString(now.date(), QLocale::ShortFormat) + ", " +
           QLocale::system().toString(now.time(), QLocale::ShortFormat);
}

} // namespace

class TestInfo : public QObject {
    Q_OBJECT
private slots:
    // `shown`: ID, date ("now": the PC's), text. The model suite has the
    // hidden bytes of each field.
    void load() {
        const auto row = [](const QByteArray& area, const QStringList& shown) {
            auto window = startWindow();
            window->edit([&](RadioImage& image) {
                for (int i = 0; i < area.size(); ++i)
                    image.setAtAddress(0x300 + i, std::uint8_t(area[i]));
            });
            const QString before = nowText();
            ui::FrmInfo info(*window);
            QStringList actual{child<QLineEdit>(&info, "txtRadioID")->text(),
                               child<QLineEdit>(&info, "txtWriteData")->text(),
                               child<QPlainTextEdit>(&info, "rtbFont")->toPlainText()};
            if (actual[1] == before || actual[1] == nowText())
                actual[1] = "now";
            QCOMPARE(actual, shown);
        };
        row(QByteArray(0xF0, '\xFF'), {"", "now", ""}); // erased
        row(infoArea("对讲机信息 ZR-310", "20240131090503", "\xC9t"),
            {"Ét", "2024-01-31, 09:05:03", "对讲机信息 ZR-310"});
    }

    // 96 characters typed, the cursor at the start, then one key. The
    // clipboard holds 97 units, the last two an emoji the cut falls inside.
    // `length` 96: refused with the box.
    void limit() {
        const auto row = [](const QKeySequence& key, bool selectAll, int length) {
            auto window = startWindow();
            ui::FrmInfo info(*window);
            info.show();
            auto* box = child<QPlainTextEdit>(&info, "rtbFont");
            QTest::keyClicks(box, QString(96, 'a'));
            box->moveCursor(QTextCursor::Start);
            if (selectAll)
                box->selectAll();
            QApplication::clipboard()->setText(QString(95, 'y') + "😀");
            ModalAnswerer answers;
            QTest::keySequence(box, key);
            const QString full = "msgBox: " + text(txt::ProgramTitle) + ": " + kFull;
            QCOMPARE(answers.log(), length == 96 ? QStringList{full} : QStringList{});
            QCOMPARE(box->toPlainText().size(), length);
        };
        row(Qt::Key_X, false, 96);
        row(Qt::Key_Backspace, false, 96);
        row(QKeySequence::Paste, false, 96);
        row(Qt::Key_Delete, false, 95);
        row(Qt::Key_X, true, 1);
        row(QKeySequence::Paste, true, 95);
    }

    // The simulated radio lives as long as the process, so a write is read
    // back. A font was chosen first: only the characters are written.
    void writeThenRead() {
        auto window = startWindow("en_US", "sim");
        const QString chinese = "对讲机信息: 第三组 ZR-310";
        ui::FrmInfo info(*window);
        info.show();
        auto* box = child<QPlainTextEdit>(&info, "rtbFont");
        box->setPlainText(chinese);
        ModalAnswerer answers;
        answers.answer([](QWidget* modal) {
            auto* fonts = static_cast<QFontDialog*>(modal);
            fonts->setCurrentFont(QFont(fonts->currentFont().family(), 31));
            fonts->accept();
        });
        child<QAbstractButton>(&info, "CmdFont")->click();
        QVERIFY(answers.log().first().startsWith("dlgFont: "));
        QCOMPARE(box->font().pointSize(), 31);
        child<QAbstractButton>(&info, "CmdWrite")->click();
        QTRY_COMPARE_WITH_TIMEOUT(answers.log().size(), 2, 30000);
        QCOMPARE(answers.log().last(),
                 seen("msgBox", txt::WriteFinished, text(txt::WriteCompleted)));
        const auto sim = RadioImage::fromRadioOrder(SimulatedRadio::shared()->memory());
        QCOMPARE(QString::fromStdString(decodeUserText(sim)), chinese);
        trigger(window.get(), "MenuEditUndo"); // the write's one step
        QCOMPARE(QString::fromStdString(decodeUserText(window->image())), QString());

        box->setPlainText("edited, not written");
        child<QAbstractButton>(&info, "CmdRead")->click();
        QTRY_COMPARE_WITH_TIMEOUT(answers.log().size(), 3, 30000);
        QCOMPARE(answers.log().last(), seen("msgBox", txt::ReadFinished, text(txt::ReadCompleted)));
        QCOMPARE(box->toPlainText(), chinese);
        QCOMPARE(QString::fromStdString(decodeUserText(window->image())), chinese);
    }
};

QTEST_MAIN(TestInfo)
#include "tst_info.moc"
