// The checks before Program > Write, and File > Compare With.
#include "channel_panel.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "image_diff.h"
#include "k720_file.h"
#include "main_form.h"
#include "write_checks.h"

#include <QDialog>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QLabel>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QVBoxLayout>

namespace zr310::ui {

namespace {

// A menu caption as a window title: "Co&mpare With..." gives "Compare With".
QString titleOf(QString caption) {
    caption.remove(QRegularExpression(QStringLiteral("\\(&.\\)")));
    caption.remove(QLatin1Char('&'));
    caption.remove(QStringLiteral("..."));
    return caption.trimmed();
}

// A dialog with a line of text over a read-only list; the caller adds the buttons.
struct ListDialog {
    ListDialog(QWidget* parent, const QString& name, const QString& title, const QString& intro,
               const QStringList& lines)
        : dialog(parent) {
        dialog.setObjectName(name);
        dialog.setWindowTitle(title);
        auto* layout = new QVBoxLayout(&dialog);
        auto* label = new QLabel(intro, &dialog);
        label->setWordWrap(true);
        layout->addWidget(label);
        if (!lines.isEmpty()) {
            auto* list = new QPlainTextEdit(lines.join(QLatin1Char('\n')), &dialog);
            list->setObjectName(QStringLiteral("txtList"));
            list->setReadOnly(true);
            list->setLineWrapMode(QPlainTextEdit::NoWrap);
            list->setMinimumSize(520, 200);
            layout->addWidget(list);
        }
        buttons = new QDialogButtonBox(&dialog);
        layout->addWidget(buttons);
        QObject::connect(buttons, &QDialogButtonBox::accepted, &dialog, &QDialog::accept);
        QObject::connect(buttons, &QDialogButtonBox::rejected, &dialog, &QDialog::reject);
    }

    QDialog dialog;
    QDialogButtonBox* buttons = nullptr;
};

// The grid cell that shows a channel's field; Close and No TX point at the row label.
int gridColumnOf(ChannelField field) {
    switch (field) {
    case ChannelField::Close:
    case ChannelField::NoTx:
        return kColLabel;
    default:
        return kColRxFreq + static_cast<int>(field);
    }
}

QString shown(const std::string& value) {
    return value.empty() ? QStringLiteral("\"\"") : qs(value);
}

} // namespace

bool MainForm::confirmWriteChecks() {
    const std::vector<WriteFinding> findings = checkBeforeWrite(m_image);
    if (findings.empty()) {
        return true;
    }
    QStringList lines;
    QList<QPoint> cells;
    for (const WriteFinding& finding : findings) {
        lines << qs(severityWord(finding.severity)) + QStringLiteral(": ") + qs(finding.message);
        if (finding.channel > 0 && finding.field) {
            cells << QPoint(gridColumnOf(*finding.field), finding.channel);
        }
    }
    m_fraChSet->markCells(cells);

    ListDialog list(this, QStringLiteral("dlgWriteChecks"), res(txt::CheckBeforeWriting),
                    res(txt::CheckFoundProblems), lines);
    QPushButton* writeAnyway =
        list.buttons->addButton(res(txt::WriteAnywayButton), QDialogButtonBox::AcceptRole);
    writeAnyway->setObjectName(QStringLiteral("CmdWriteAnyway"));
    QPushButton* cancel = list.buttons->addButton(QDialogButtonBox::Cancel);
    cancel->setObjectName(QStringLiteral("CmdCancel"));
    cancel->setDefault(true);
    return list.dialog.exec() == QDialog::Accepted;
}

// The file is taken onto a copy of the current data as Open would take it, so
// areas a foreign file does not hold compare equal.
void MainForm::fileCompare() {
    QFileDialog dialog(this, titleOf(res(txt::MenuCompareWith)), initialFolder(),
                       fileFilter() + QStringLiteral(";;*.bin"));
    dialog.setObjectName(QStringLiteral("dlgCompare"));
    dialog.setAcceptMode(QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::ExistingFile);
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
        return;
    }
    const QString path = dialog.selectedFiles().constFirst();
    RadioImage other = m_image;
    const FileResult result = openImageFile(std::filesystem::path(path.toStdU16String()), other);
    if (result.error == FileError::IncorrectFileType) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error), res(txt::IncorrectFileType));
        return;
    }
    if (!result.ok()) {
        showMessageBox(this, QMessageBox::Critical, res(txt::Error),
                       QDir::toNativeSeparators(path) + QLatin1Char('\n') +
                           QString::fromStdString(result.detail));
        return;
    }

    QStringList lines;
    for (const ImageDifference& d : diffImages(m_image, other)) {
        lines << qs(d.key) + QStringLiteral(": ") + shown(d.a) + QStringLiteral(" -> ") +
                     shown(d.b);
    }
    const QString title =
        titleOf(res(txt::MenuCompareWith)) + QStringLiteral(" - ") + QFileInfo(path).fileName();
    ListDialog list(this, QStringLiteral("dlgDiff"), title,
                    lines.isEmpty() ? res(txt::NoDifferences) : QDir::toNativeSeparators(path),
                    lines);
    list.buttons->addButton(QDialogButtonBox::Close);
    list.dialog.exec();
}

} // namespace zr310::ui
