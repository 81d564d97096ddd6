// The signalling dialog frmQTDQT, driven through its own controls.
#include "frmQTDQT/frm_qtdqt.h"
#include "ui_test_support.h"

#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QRadioButton>

using zr310::ui::FrmQTDQT;

namespace {

// A dialog for a channel's receive side, shown and active.
std::unique_ptr<FrmQTDQT> openDialog(const QString& sideText) {
    auto dialog = std::make_unique<FrmQTDQT>(zr310::ui::kSideChannelRx, 3, sideText);
    dialog->show();
    dialog->activateWindow();
    if (!QTest::qWaitForWindowActive(dialog.get())) {
        qWarning("dialog not active");
    }
    return dialog;
}

QComboBox* list(QWidget* dialog, const QString& name) {
    return child<QComboBox>(dialog, name);
}

} // namespace

class TestSignalling : public QObject {
    Q_OBJECT
private slots:
    void opening_data() {
        QTest::addColumn<QString>("sideText");
        QTest::addColumn<bool>("invert");
        const auto row = [](const char* name, const QString& sideText, bool invert,
                            const QString& shown) {
            QTest::newRow(name) << sideText << invert << shown;
        };
        QTest::addColumn<QString>("shown"); // checked option, tone, code
        row("off", "OFF", false, "OptOFF 67.0 023");
        row("tone", "CTC 88.5", false, "OptCTC 88.5 023");
        row("unlisted tone: nearest", "CTC 100.5", false, "OptCTC 100.0 023");
        row("code", "DCS 754", false, "OptDCS 67.0 754");
        row("inverted code", "-DCS 023", true, "OptDCS 67.0 023");
        row("unlisted code as text", "DCS 017", false, "OptDCS 67.0 017");
    }

    void opening() {
        QFETCH(QString, sideText);
        QFETCH(bool, invert);
        QFETCH(QString, shown);
        auto dialog = openDialog(sideText);
        QString option;
        for (const QRadioButton* button : dialog->findChildren<QRadioButton*>()) {
            option += button->isChecked() ? button->objectName() : QString();
        }
        QCOMPARE(QStringList({option, list(dialog.get(), "CboCTC")->currentText(),
                              list(dialog.get(), "CboDCS")->currentText()})
                     .join(' '),
                 shown);
        QCOMPARE(child<QCheckBox>(dialog.get(), "ChkDCS")->isChecked(), invert);
    }

    void typing_data() {
        QTest::addColumn<QString>("before");
        QTest::addColumn<int>("selected"); // characters selected at the end
        QTest::addColumn<QString>("keys");
        const auto row = [](const char* name, const QString& before, int selected,
                            const QString& keys, bool paste, const QString& code) {
            QTest::newRow(name) << before << selected << keys << paste << code;
        };
        QTest::addColumn<bool>("paste");   // the keys' text pasted instead
        QTest::addColumn<QString>("code"); // after Return
        row("nothing", "", 0, "", false, "000");
        row("one digit padded", "", 0, "1", false, "001");
        row("8 and 9 lowered", "", 0, "189", false, "177");
        row("three digits at most", "", 0, "12345", false, "123");
        row("digit over selection", "123", 1, "4", false, "124");
        row("backspace passes", "123", 0, "\b4", false, "124");
        row("letters dropped", "", 0, "a1-b. 2", false, "012");
        row("paste digits only", "", 0, "x6-0 9z", true, "607");
        row("paste into room left", "1", 0, "2345", true, "123");
    }

    // Return moves to OK with the code made valid, and does not close the
    // dialog; OK then gives that code.
    void typing() {
        QFETCH(QString, before);
        QFETCH(int, selected);
        QFETCH(QString, keys);
        QFETCH(bool, paste);
        QFETCH(QString, code);
        auto dialog = openDialog("DCS 023");
        QComboBox* codes = list(dialog.get(), "CboDCS");
        codes->setFocus();
        codes->lineEdit()->setText(before);
        codes->lineEdit()->setSelection(before.size() - selected, selected);
        if (paste) {
            QApplication::clipboard()->setText(keys);
            QTest::keySequence(codes, QKeySequence::Paste);
        } else {
            QTest::keyClicks(codes, keys);
        }
        QTest::keyClick(codes, Qt::Key_Return);
        QCOMPARE(codes->currentText(), code);
        QVERIFY(dialog->isVisible() && child(dialog.get(), "CmdOK")->hasFocus());
        QTest::keyClick(child(dialog.get(), "CmdOK"), Qt::Key_Return);
        QCOMPARE(dialog->result(), int(QDialog::Accepted));
        QCOMPARE(dialog->resultText(), "DCS " + code);
    }
};

QTEST_MAIN(TestSignalling)
#include "tst_signalling.moc"
