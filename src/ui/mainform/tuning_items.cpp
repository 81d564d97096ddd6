// The tuning items of tuning mode: the tree, the value bar, OK and Cancel,
// and the exchanges they start on the tuning session.
#include "common/message_box.h"
#include "common/texts.h"
#include "image_editor.h"
#include "test_channel_panel.h"
#include "tuning.h"
#include "tuning_panels.h"
#include "tuning_session.h"

#include <QGroupBox>
#include <QLabel>
#include <QScrollBar>
#include <QTableWidget>
#include <QTreeWidget>

namespace zr310::ui {

namespace {

// The frames of the item being adjusted carry their captions in this colour.
const QColor kActiveItemText(0x00, 0x00, 0xC0);

int itemIndexOfCode(std::uint8_t code) {
    for (std::size_t k = 0; k < kTuningItems.size(); ++k) {
        if (kTuningItems[k].itemCode == code) {
            return static_cast<int>(k);
        }
    }
    return -1;
}

} // namespace

// Nodes are told apart by their item data, whatever the language.
void TuningPanels::nodeClicked(QTreeWidgetItem* node) {
    const int what = node->data(0, Qt::UserRole).toInt();
    if (what == kNodeAdjustFrequency) {
        showItemFrame(false);
        m_tuneItemCode = m_lastTuneItemCode;
        m_tuneItemActive = false;
        send(static_cast<int>(TuneCommand::Cancel));
    } else if (what == kNodeExit) {
        m_tuneItemCode = kLeaveTuningItemCode;
        m_tuneItemActive = false;
        m_fraTune->hide();
        emit leaveRequested();
    } else if (what >= 0 && what < static_cast<int>(kTuningItems.size())) {
        chooseItem(what);
    }
    m_lastTuneItemCode = m_tuneItemCode;
}

// With an item in progress the radio is sent a cancel carrying the new
// item's code, which switches it over; otherwise the item is entered. Either
// way the radio reports the item's stored value for the bar.
void TuningPanels::chooseItem(int index) {
    m_tuneItemCode = kTuningItems[static_cast<std::size_t>(index)].itemCode;
    const TuneCommand command = m_tuneItemActive ? TuneCommand::Cancel : TuneCommand::Enter;
    showItemFrame(true);
    m_fraTune->setTitle(m_nodeItems[index]->text(0));
    m_fraTuneCh->setTitle(res(txt::AdjustChannel));
    showAdjustedChannel();
    send(static_cast<int>(command));
}

// The test channel the radio is adjusted on, as the grid shows it.
void TuningPanels::showAdjustedChannel() {
    const int t = m_testChannels->adjustedChannel();
    QTableWidget* grid = m_testChannels->grid();
    const int columns[] = {1, 3, 4, 6}; // RX Freq, RX CTC/DCS, TX Freq, TX CTC/DCS
    for (int k = 0; k < 4; ++k) {
        m_tuneTexts[k]->setText(t > 0 ? grid->item(t, columns[k])->text() : QString());
    }
    m_tuneTexts[4]->setText(QString::number(m_hscTuneValue->value()));
}

void TuningPanels::showItemFrame(bool shown) {
    m_fraTune->setVisible(shown);
    m_testChannels->setVisible(!shown);
    for (QGroupBox* frame : {m_fraTune, m_fraTuneCh}) {
        QPalette palette = frame->palette();
        palette.setColor(QPalette::WindowText, kActiveItemText);
        frame->setPalette(palette);
    }
}

void TuningPanels::valueChanged(int value) {
    m_tuneValue = static_cast<std::uint8_t>(value);
    m_lblTuneValue->setText(QString::number(value));
    m_tuneTexts[4]->setText(QString::number(value));
    if (m_tuneValueSilent) {
        m_tuneValueSilent = false; // the radio's own value: not sent back
        return;
    }
    send(static_cast<int>(TuneCommand::Value));
}

// OK keeps the value in the radio and in the image (column 0x5E), Cancel
// drops it; both bring the test channels back.
void TuningPanels::finishItem(bool keep) {
    showItemFrame(false);
    m_tuneItemActive = false;
    const int index = itemIndexOfCode(m_tuneItemCode);
    if (keep && index >= 0 && m_editor != nullptr) {
        const auto item = kTuningItems[static_cast<std::size_t>(index)].item;
        const std::uint8_t value = m_tuneValue;
        m_editor->edit([item, value](RadioImage& image) { setTuningValue(image, item, value); });
    }
    send(static_cast<int>(keep ? TuneCommand::Confirm : TuneCommand::Cancel));
}

void TuningPanels::leaveTuningMode() {
    m_tuneItemActive = false;
    if (m_session != nullptr) {
        m_session->clearWaiting();
    }
    send(static_cast<int>(TuneCommand::Leave));
}

void TuningPanels::send(int command) {
    if (m_session == nullptr) {
        m_session = new TuningSession(m_portName, this);
        connect(m_session, &TuningSession::frameFinished, this,
                [this](const TuningFrame& frame, TuningExchange::Result result, int value) {
                    exchangeFinished(static_cast<int>(frame.command), static_cast<int>(result),
                                     value);
                });
    }
    m_session->submit(static_cast<TuneCommand>(command), m_tuneItemCode, m_tuneValue);
}

void TuningPanels::exchangeFinished(int frameCommand, int result, int value) {
    using Result = TuningExchange::Result;
    const auto command = static_cast<TuneCommand>(frameCommand);
    switch (static_cast<Result>(result)) {
    case Result::ValueReported:
        // The radio is adjusting the item and reports its stored value.
        m_tuneItemActive = true;
        m_tuneValueSilent = m_hscTuneValue->value() != value;
        m_hscTuneValue->setValue(value);
        m_lblTuneValue->setText(QString::number(value));
        m_tuneTexts[4]->setText(QString::number(value));
        break;
    case Result::Acknowledged:
        m_tuneItemActive = command == TuneCommand::Value && m_fraTune->isVisible();
        break;
    case Result::NoAnswer:
        if (command == TuneCommand::Leave) {
            break; // the channel view is back already; a silent radio is left as it is
        }
        if (const PortProblem problem = m_session ? m_session->portProblem() : PortProblem{}) {
            showMessageBox(m_tree, QMessageBox::Warning, res(txt::CommunicationError),
                           displayText(unreachableText(m_portName, problem, currentLanguage())));
        } else {
            showMessageBox(m_tree, QMessageBox::Warning, res(txt::CommunicationError),
                           resDisplay(txt::TuningInterrupted));
        }
        break;
    case Result::Refused:
        if (command == TuneCommand::Leave) {
            break;
        }
        showMessageBox(m_tree, QMessageBox::Warning, res(txt::CommunicationError),
                       resDisplay(txt::TuningError));
        break;
    default:
        break;
    }
    if (command == TuneCommand::Leave && m_session != nullptr) {
        m_session->deleteLater(); // the port is closed; the next tuning mode opens it anew
        m_session = nullptr;
    }
}

} // namespace zr310::ui
