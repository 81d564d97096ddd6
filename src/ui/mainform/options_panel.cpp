#include "options_panel.h"

#include <algorithm>

#include "common/message_box.h"
#include "common/texts.h"
#include "image_edit.h"
#include "image_editor.h"

#include <QComboBox>
#include <QFocusEvent>
#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QSignalBlocker>

namespace zr310::ui {

namespace {

struct ListPlace {
    OptionId id;
    int labelId;
    int row, group; // four groups of four lists, side by side
};

// Timers; beep, squelch, manual, battery; band width and scanning; scan
// recovery and the Moni key.
constexpr std::array<ListPlace, 16> kPlaces{{
    {OptionId::CboTXLimit, txt::TimeOutTimer, 0, 0},
    {OptionId::CboPreAlert, txt::TotPreAlert, 1, 0},
    {OptionId::CboTOTAgain, txt::TotRekeyTime, 2, 0},
    {OptionId::CboTOTReset, txt::TotResetTime, 3, 0},
    {OptionId::CboRing, txt::Beep, 0, 1},
    {OptionId::CboSQ, txt::SquelchLevel, 1, 1},
    {OptionId::CboHandModel, txt::HandModel, 2, 1},
    {OptionId::CboBatFunction, txt::BatterySave, 3, 1},
    {OptionId::CboBandSel, txt::WideNarrow, 0, 2},
    {OptionId::CboScan, txt::ScanMode, 1, 2},
    {OptionId::CboPriorityCH, txt::PriorityChannel, 2, 2},
    {OptionId::CboBakScan, txt::LookBackPeriod, 3, 2},
    {OptionId::CboBakCH, txt::RevertChannel, 0, 3},
    {OptionId::CboScanHold, txt::ScanDelay, 1, 3},
    {OptionId::CboMoni, txt::Monitor, 2, 3},
    {OptionId::CboPowSel, txt::PowerSelect, 3, 3},
}};

constexpr std::size_t indexOf(OptionId id) {
    return static_cast<std::size_t>(id);
}

} // namespace

OptionsPanel::OptionsPanel(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("fraFunction"));
    // Each list is as wide as its longest item, so the four groups only just
    // fit the frame at its start width: narrow margins and gaps.
    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(3, 2, 3, 2);
    grid->setHorizontalSpacing(3);
    grid->setVerticalSpacing(2);
    for (const ListPlace& place : kPlaces) {
        const QString name = qs(optionName(place.id));
        auto* label = new QLabel(this);
        label->setObjectName(QStringLiteral("Lbl") + name);
        auto* list = new QComboBox(this);
        list->setObjectName(name);
        list->setSizeAdjustPolicy(QComboBox::AdjustToContents);
        label->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Preferred);
        list->setMaxVisibleItems(15);
        label->setBuddy(list);
        grid->addWidget(label, place.row, place.group * 2);
        grid->addWidget(list, place.row, place.group * 2 + 1);
        grid->setColumnStretch(place.group * 2 + 1, 1);
        m_labels[indexOf(place.id)] = label;
        m_lists[indexOf(place.id)] = list;
        list->installEventFilter(this);
        // A choice is the user's: an item picked (also the one shown) or
        // the selection moved by keys, wheel or code; fill() is silent.
        connect(list, &QComboBox::currentIndexChanged, this,
                [this, id = place.id] { m_pending[indexOf(id)] = true; });
        connect(list, &QComboBox::activated, this, [this, id = place.id] { chosen(id); });
    }
    // The priority channel must name a channel that exists and is in use.
    list(OptionId::CboPriorityCH)
        ->setToolTip(QStringLiteral("Must be not beyond Max Number of channels and only valid "
                                    "when set to be not null channel"));
}

void OptionsPanel::applyLanguage(const RadioImage& image, Language language) {
    setTitle(res(txt::OptionalFeatures, language));
    for (const ListPlace& place : kPlaces) {
        m_labels[indexOf(place.id)]->setText(res(place.labelId, language));
        fill(place.id, image, language, list(place.id)->currentIndex());
    }
}

void OptionsPanel::refresh(const RadioImage& image, Language language) {
    for (OptionId id : kAllOptions) {
        fill(id, image, language, decodeOption(id, image));
    }
    m_pending.fill(false);
}

bool OptionsPanel::eventFilter(QObject* watched, QEvent* event) {
    const auto* box = qobject_cast<QComboBox*>(watched);
    const auto found = std::find(m_lists.begin(), m_lists.end(), box);
    if (box == nullptr || found == m_lists.end()) {
        return QGroupBox::eventFilter(watched, event);
    }
    const auto option = static_cast<OptionId>(found - m_lists.begin());
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            focusNextChild(); // leaving the list writes it
            return true;
        }
    } else if (event->type() == QEvent::FocusOut) {
        // The list's own popup (or a menu) opening is not leaving it.
        if (static_cast<QFocusEvent*>(event)->reason() != Qt::PopupFocusReason) {
            commit(option);
        }
    }
    return QGroupBox::eventFilter(watched, event);
}

// The radio-wide W/N and Power Sel act at once; so does a choice made
// without the focus (the mouse wheel over the list), which has no leaving to
// wait for.
void OptionsPanel::chosen(OptionId id) {
    m_pending[indexOf(id)] = true;
    if (id == OptionId::CboBandSel || id == OptionId::CboPowSel || !list(id)->hasFocus()) {
        commit(id);
    }
}

// The item as `zr310-cli set` writes it. A list that merely shows what the
// image selects writes nothing: the short monitor list shows a momentary
// function as "Off", and the bits stay until the user picks in the list.
void OptionsPanel::commit(OptionId id) {
    const int index = list(id)->currentIndex();
    if (m_editor == nullptr || !m_pending[indexOf(id)] || index < 0) {
        return;
    }
    if (id == OptionId::CboPowSel) {
        commit(OptionId::CboMoni); // a monitor choice comes first, as typed
    }
    m_pending[indexOf(id)] = false;
    m_editor->edit([id, index](RadioImage& image) { setOptionIndex(image, id, index); });
    const RadioImage& image = m_editor->image();
    if (id == OptionId::CboPowSel) {
        // Long-hit shortens the monitor list (and None lengthens it); the
        // monitor bits stay as they are.
        fill(OptionId::CboMoni, image, currentLanguage(), decodeOption(OptionId::CboMoni, image));
    } else if (id == OptionId::CboBandSel) {
        // Narrow for the whole radio makes every channel narrow; back to
        // Wide, the channels keep their width.
        emit channelsChanged();
    }
}

void OptionsPanel::commitEdits() {
    for (OptionId id : kAllOptions) {
        commit(id);
    }
}

bool OptionsPanel::narrowBandRadio() const {
    return list(OptionId::CboBandSel)->currentIndex() == 1;
}

void OptionsPanel::fill(OptionId id, const RadioImage& image, Language language, int index) {
    QComboBox* box = list(id);
    const QSignalBlocker quiet(box);
    box->clear();
    for (const std::string& item : optionItems(id, image, language)) {
        box->addItem(qs(item));
    }
    box->setCurrentIndex(std::clamp(index, 0, box->count() - 1));
}

} // namespace zr310::ui
