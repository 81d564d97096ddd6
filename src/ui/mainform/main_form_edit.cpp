// The Edit menu: whole channels through the clipboard, undo and redo, and
// the one door through which the panels change the image.
#include "bands.h"
#include "channel_panel.h"
#include "channel_rows.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "frequency_box.h"
#include "main_form.h"
#include "menus.h"
#include "model_panel.h"
#include "options_panel.h"
#include "tuning_panels.h"

#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QMimeData>

namespace zr310::ui {

namespace {

QString mimeType() {
    return qs(kChannelRecordsMimeType);
}

std::vector<int> toVector(const QList<int>& list) {
    return {list.begin(), list.end()};
}

} // namespace

bool MainForm::edit(const std::function<void(RadioImage&)>& change) {
    RadioImage edited = m_image;
    change(edited);
    if (!m_history.record(m_image, edited)) {
        return false;
    }
    m_image = edited;
    updateEditActions();
    return true;
}

void MainForm::commitEdits() {
    m_fraChSet->commitEdit();
    m_fraFunction->commitEdits();
    m_tuning->commitEdits();
}

void MainForm::startFreshHistory() {
    m_history.clear();
    updateEditActions();
}

void MainForm::updateEditActions() {
    m_menus->MenuEditUndo->setEnabled(m_history.canUndo());
    m_menus->MenuEditRedo->setEnabled(m_history.canRedo());
}

void MainForm::editUndo() {
    if (const RadioImage* before = m_history.undo()) {
        m_image = *before;
        ReFlashData();
        ReFlashTestData();
    }
    updateEditActions();
}

void MainForm::editRedo() {
    if (const RadioImage* after = m_history.redo()) {
        m_image = *after;
        ReFlashData();
        ReFlashTestData();
    }
    updateEditActions();
}

void MainForm::refreshChannels() {
    m_fraChSet->refresh(m_image, m_fraFunction->narrowBandRadio(), currentLanguage());
}

void MainForm::bandChosen(int index) {
    edit([index](RadioImage& image) { setBand(image, index); });
    refreshChannels();
}

// While the frequency box is open, Copy takes its selected text; otherwise
// the selected channels go to the clipboard as the program's own record and
// as text a spreadsheet takes.
void MainForm::editCopy() {
    FrequencyBox* box = m_fraChSet->inputBox();
    if (box->isOpen()) {
        QApplication::clipboard()->clear();
        QApplication::clipboard()->setText(box->selectedText());
        return;
    }
    commitEdits();
    const std::vector<int> channels = toVector(m_fraChSet->selectedChannels());
    if (channels.empty()) {
        return;
    }
    const std::vector<std::uint8_t> record = encodeChannelRecords(m_image, channels);
    auto* mime = new QMimeData;
    mime->setData(mimeType(), QByteArray(reinterpret_cast<const char*>(record.data()),
                                         static_cast<qsizetype>(record.size())));
    mime->setText(qs(channelRowsText(m_image, channels, currentLanguage())));
    QApplication::clipboard()->setMimeData(mime);
}

// While the frequency box is open, Paste puts the clipboard's text in place
// of the box's text (checked when the box is left).
void MainForm::editPaste() {
    FrequencyBox* box = m_fraChSet->inputBox();
    if (box->isOpen()) {
        box->setText(QApplication::clipboard()->text());
        return;
    }
    commitEdits();
    pasteChannels();
}

// Pastes onto the selected channels, all or nothing. The program's own
// record is taken byte for byte when it comes from a radio of the same band;
// otherwise the text goes through the rules of typed input, so frequencies
// are brought into this band.
void MainForm::pasteChannels() {
    const QMimeData* mime = QApplication::clipboard()->mimeData();
    if (mime == nullptr) {
        return;
    }
    const std::vector<int> selected = toVector(m_fraChSet->selectedChannels());
    const auto warn = [this](const QString& text) {
        showMessageBox(this, QMessageBox::Warning, res(txt::Warning), text);
    };
    const auto targetsFor = [&](int count) {
        auto targets = pasteTargets(count, selected);
        if (!targets && !selected.empty()) {
            const int first = selected.front();
            warn(res(txt::PasteTooManyChannels)
                     .arg(count)
                     .arg(first)
                     .arg(kChannelCount - first + 1));
        }
        return targets;
    };

    if (mime->hasFormat(mimeType())) {
        const QByteArray bytes = mime->data(mimeType());
        const auto records = decodeChannelRecords(
            std::span<const std::uint8_t>(reinterpret_cast<const std::uint8_t*>(bytes.constData()),
                                          static_cast<std::size_t>(bytes.size())));
        if (records && records->bandCode == m_image[kBandCodeOffset]) {
            const auto targets = targetsFor(static_cast<int>(records->channels.size()));
            if (targets) {
                edit([&](RadioImage& image) { pasteChannelRecords(image, *records, *targets); });
                ReFlashData();
            }
            return;
        }
    }

    // Sixteen channels with a header line are a few kilobytes: anything much
    // larger is not channels, and is not worth reading through.
    constexpr qsizetype kLongestChannelText = 64 * 1024;
    const QString text = mime->text();
    if (text.size() > kLongestChannelText) {
        warn(res(txt::PasteNoChannels));
        return;
    }
    try {
        const auto rows = splitChannelRows(text.toStdString());
        if (rows.empty()) {
            warn(res(txt::PasteNoChannels));
            return;
        }
        const auto targets = targetsFor(static_cast<int>(rows.size()));
        if (!targets) {
            return;
        }
        edit([&](RadioImage& image) { pasteChannelRows(image, rows, *targets); });
        ReFlashData();
    } catch (const RowError& error) {
        if (!error.cause()) {
            warn(res(txt::PasteNotChannelRow).arg(error.row()));
            return;
        }
        const EditError& cause = *error.cause();
        // The column the refused text was meant for, named as the grid names it.
        QString column = qs(cause.subject());
        for (ChannelField field : kChannelFields) {
            if (channelFieldKey(field) == cause.subject()) {
                column = res(channelFieldCaptionId(field));
            }
        }
        warn(res(txt::PasteBadCell)
                 .arg(error.row())
                 .arg(error.channel())
                 .arg(qs(cause.value()), column));
    }
}

} // namespace zr310::ui
