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
    // `shown`: the checked option, the tone and the code.
    void opening() {
        const auto row = [](const QString& sideText, bool invert, const QString& shown) {
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
        };
        row("OFF", false, "OptOFF 67.0 023");
        row("CTC 88.5", false, "OptCTC 88.5 023");
        row("CTC 100.5", false, "OptCTC 100.0 023"); // not listed: the nearest
        row("-DCS 023", true, "OptDCS 67.0 023");
        row("DCS 017", false, "OptDCS 67.0 017"); // not listed: as typed
    }

    // Typed (or pasted) with `selected` characters selected at the end of
    // `before`: Return moves to OK with the code made valid, and does not
    // close the dialog; OK then gives that code.
    void typing() {
        const auto row = [](const QString& before, int selected, const QString& keys, bool paste,
                            const QString& code) {
            auto dialog = openDialog("DCS 023");
            QComboBox* codes = list(dialog.get(), "CboDCS");
            codes->setFocus();
            codes->lineEdit()->setText(before);
            codes->lineEdit()->setSelection(static_cast<int>(before.size()) - selected, selected);
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
        };
        row("", 0, "189", false, "177"); // 8 and 9 are no octal digits
        row("", 0, "12345", false, "123");
        row("123", 1, "4", false, "124");
        row("123", 0, "\b4", false, "124");
        row("", 0, "a1-b. 2", false, "012");
        row("", 0, "x6-0 9z", true, "607");
        row("1", 0, "2345", true, "123"); // into the room left
    }
};

QTEST_MAIN(TestSignalling)
#include "tst_signalling.moc"
