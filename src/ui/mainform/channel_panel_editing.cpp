// What the channel grid and the boxes beside it do to the image: the click
// rules of each column, the frequency box, the signalling dialog and the
// Close, No TX and Simplex boxes.
#include "channel_grid.h"
#include "channel_panel.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "common/twips.h"
#include "frequency_box.h"
#include "frmQTDQT/frm_qtdqt.h"
#include "image_edit.h"
#include "image_editor.h"
#include "sizes.h"

#include <QApplication>
#include <QCheckBox>
#include <QKeyEvent>

namespace zr310::ui {

namespace {

ChannelField frequencyField(int column) {
    return column == kColRxFreq ? ChannelField::RxFreq : ChannelField::TxFreq;
}

} // namespace

void ChannelPanel::connectEditors() {
    connect(m_grid, &ChannelGrid::cellActivated, this, &ChannelPanel::actOnCell);
    connect(m_grid, &ChannelGrid::cellTyped, this, [this](int row, int column, const QString& t) {
        if (column == kColRxFreq || column == kColTxFreq) {
            openInputBox(row, column, t);
        }
    });
    connect(m_txtInputBox, &FrequencyBox::closed, this, &ChannelPanel::inputBoxClosed);
    connect(m_grid, &ChannelGrid::leftToTheRight, this,
            [this](int row) { m_chkClose[toIndex(row - 1)]->setFocus(Qt::TabFocusReason); });
    for (int i = 0; i < kChannelCount; ++i) {
        for (int k = 0; k < 3; ++k) {
            channelBox(i + 1, k)->installEventFilter(this);
        }
        connect(m_chkClose[toIndex(i)], &QCheckBox::clicked, this,
                [this, i](bool checked) { closeClicked(i, checked); });
        connect(m_chkForbidTx[toIndex(i)], &QCheckBox::clicked, this,
                [this, i](bool checked) { forbidTxClicked(i, checked); });
        connect(m_chkSameFreq[toIndex(i)], &QCheckBox::clicked, this,
                [this, i](bool checked) { sameFreqClicked(i, checked); });
    }
}

bool ChannelPanel::isBlank(int n) const {
    return m_chkClose[toIndex(n - 1)]->isChecked();
}

bool ChannelPanel::isNoTx(int n) const {
    return m_chkForbidTx[toIndex(n - 1)]->isChecked();
}

void ChannelPanel::actOnCell(int row, int column) {
    if (row < 1 || row > kChannelCount || m_editor == nullptr || isBlank(row)) {
        return;
    }
    const bool noTx = isNoTx(row);
    switch (column) {
    case kColRxFreq:
        openInputBox(row, column);
        break;
    case kColTxFreq:
        if (!noTx) {
            openInputBox(row, column);
        }
        break;
    case kColRxTone:
        openSignalling(row, Side::Receive);
        break;
    case kColTxTone:
        if (!noTx) {
            openSignalling(row, Side::Transmit);
        }
        break;
    case kColBusyLock:
        if (!noTx) {
            toggleCell(row, column);
        }
        break;
    case kColBandwidth:
        if (!m_narrowBandRadio) {
            toggleCell(row, column);
        }
        break;
    case kColScan:
    case kColPower: // transmit power toggles also on a channel with no TX
        toggleCell(row, column);
        break;
    default:
        break;
    }
}

// Each toggle reads the word in the cell and writes the other one's bit.
void ChannelPanel::toggleCell(int row, int column) {
    const QString word = m_grid->item(row, column)->text();
    ChannelChange change;
    switch (column) {
    case kColScan: {
        const bool del = word != res(txt::Del);
        change = [del](RadioImage& image, int c) { ChannelRecord(image, c).setScanDeleted(del); };
        break;
    }
    case kColBusyLock: {
        const bool on = word == res(txt::Off);
        change = [on](RadioImage& image, int c) { ChannelRecord(image, c).setBusyLock(on); };
        break;
    }
    case kColPower: {
        const bool low = word != res(txt::Low);
        change = [low](RadioImage& image, int c) { ChannelRecord(image, c).setLowPower(low); };
        break;
    }
    case kColBandwidth: {
        const bool narrow = word != res(txt::Narrow);
        change = [narrow](RadioImage& image, int c) { ChannelRecord(image, c).setNarrow(narrow); };
        break;
    }
    default:
        return;
    }
    editChannel(row, change);
}

void ChannelPanel::openInputBox(int row, int column, const QString& typed) {
    if (m_editor == nullptr || isBlank(row) || (column == kColTxFreq && isNoTx(row))) {
        return;
    }
    m_txtInputBox->finish();
    m_boxRow = row;
    m_boxColumn = column;
    m_grid->setCurrentCell(row, column);
    const QRect cell = m_grid->visualItemRect(m_grid->item(row, column));
    m_txtInputBox->open(cell, m_grid->item(row, column)->text(), m_editor->bandLimits(), typed);
}

void ChannelPanel::inputBoxClosed(bool accepted, bool moveRight) {
    const int row = m_boxRow;
    const int column = m_boxColumn;
    // An unchanged text is not an edit: a frequency outside the band stays
    // as the image holds it until the user types over it.
    if (const auto text = m_txtInputBox->frequencyToStore(accepted)) {
        editChannel(
            row,
            [column, text = *text](RadioImage& image, int c) {
                setChannelField(image, c, frequencyField(column), text);
            },
            column == kColRxFreq);
    }
    if (moveRight) {
        m_grid->setCurrentCell(row, std::min(column + 1, kGridColumns - 1));
    }
    if (moveRight || m_txtInputBox->hasFocus() || QApplication::focusWidget() == nullptr) {
        m_grid->setFocus(Qt::OtherFocusReason);
    }
}

void ChannelPanel::openSignalling(int row, Side side) {
    const int column = side == Side::Receive ? kColRxTone : kColTxTone;
    const auto chosen =
        FrmQTDQT::chooseFor(m_grid->item(row, column),
                            side == Side::Receive ? kSideChannelRx : kSideChannelTx, row, this);
    if (!chosen) {
        return;
    }
    const ChannelField field = side == Side::Receive ? ChannelField::RxTone : ChannelField::TxTone;
    editChannel(
        row,
        [field, text = chosen->toStdString()](RadioImage& image, int c) {
            setChannelField(image, c, field, text);
        },
        side == Side::Receive);
}

void ChannelPanel::closeClicked(int i, bool checked) {
    editChannel(i + 1,
                [checked](RadioImage& image, int c) { ChannelRecord(image, c).setOpen(!checked); });
}

void ChannelPanel::forbidTxClicked(int i, bool checked) {
    if (isBlank(i + 1)) {
        return;
    }
    editChannel(i + 1, [checked](RadioImage& image, int c) {
        ChannelRecord(image, c).setTxAllowed(!checked);
    });
}

void ChannelPanel::sameFreqClicked(int i, bool checked) {
    m_simplex[toIndex(i)] = checked;
    if (!checked) {
        return; // the cells keep their texts
    }
    editChannel(i + 1,
                [](RadioImage& image, int c) { ChannelRecord(image, c).copyReceiveToTransmit(); });
}

void ChannelPanel::editChannel(int n, const ChannelChange& change, bool receiveSide) {
    if (m_editor == nullptr) {
        return;
    }
    const bool followed = receiveSide && m_simplex[toIndex(n - 1)];
    try {
        m_editor->edit([&](RadioImage& image) {
            change(image, channelColumn(n));
            if (followed) {
                ChannelRecord(image, channelColumn(n)).copyReceiveToTransmit();
            }
        });
    } catch (const EditError& error) {
        showMessageBox(this, QMessageBox::Warning, res(txt::Error),
                       res(txt::Channel) + QLatin1Char(' ') + QString::number(n) +
                           QStringLiteral(": ") + qs(error.value()));
    }
    renderRow(n, m_editor->image(), currentLanguage());
}

QCheckBox* ChannelPanel::channelBox(int n, int k) const {
    const std::array<QCheckBox*, kChannelCount>* boxes[] = {&m_chkClose, &m_chkForbidTx,
                                                            &m_chkSameFreq};
    return (*boxes[k])[toIndex(n - 1)];
}

bool ChannelPanel::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        for (int n = 1; n <= kChannelCount; ++n) {
            for (int k = 0; k < 3; ++k) {
                if (watched == channelBox(n, k) && (key == Qt::Key_Left || key == Qt::Key_Right ||
                                                    key == Qt::Key_Up || key == Qt::Key_Down)) {
                    moveAmongBoxes(n, k, key);
                    return true;
                }
            }
        }
    }
    return QGroupBox::eventFilter(watched, event);
}

// The boxes beside the grid are three more columns for the arrow keys; Left
// from Close goes back to the row's W/N cell. A disabled No TX box is
// stepped over.
void ChannelPanel::moveAmongBoxes(int n, int k, int key) {
    const int dn = key == Qt::Key_Down ? 1 : key == Qt::Key_Up ? -1 : 0;
    const int dk = key == Qt::Key_Right ? 1 : key == Qt::Key_Left ? -1 : 0;
    for (int row = n + dn, column = k + dk;
         row >= 1 && row <= kChannelCount && column >= -1 && column <= 2; row += dn, column += dk) {
        if (column == -1) {
            m_grid->setCurrentCell(row, kColBandwidth);
            m_grid->setFocus(Qt::OtherFocusReason);
            return;
        }
        if (channelBox(row, column)->isEnabled()) {
            channelBox(row, column)->setFocus(Qt::OtherFocusReason);
            return;
        }
    }
}

void ChannelPanel::commitEdit() {
    const bool hadFocus = m_txtInputBox->hasFocus();
    m_txtInputBox->finish();
    if (hadFocus) {
        m_grid->setFocus(Qt::OtherFocusReason);
    }
}

bool ChannelPanel::isInputBoxOpen() const {
    return m_txtInputBox->isOpen();
}

void ChannelPanel::focusFirstCell() {
    m_grid->setCurrentCell(1, kColRxFreq);
    m_grid->setFocus(Qt::OtherFocusReason);
}

QList<int> ChannelPanel::selectedChannels() const {
    return m_grid->selectedRows();
}

} // namespace zr310::ui
