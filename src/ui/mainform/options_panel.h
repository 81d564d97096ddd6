#pragma once

#include "options.h"
#include "radio_image.h"

#include <QGroupBox>

#include <array>

class QComboBox;
class QLabel;

namespace zr310::ui {

// The "Optional Features" frame `fraFunction`: one labelled drop-down list
// per radio-wide option, each named after its `OptionId` (`CboTXLimit` ...
// `CboBandSel`); the labels are named "Lbl" + the list's name.
class OptionsPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit OptionsPanel(QWidget* parent = nullptr);

    // Caption and labels in the current language; list items rebuilt in it
    // with each list keeping its selection.
    void applyLanguage(const RadioImage& image, Language language);
    // Fills every list from the image and selects the item it stores.
    void refresh(const RadioImage& image, Language language);

    QComboBox* list(OptionId id) const { return m_lists[static_cast<std::size_t>(id)]; }
    // True while `CboBandSel` stands on "Narrow".
    bool narrowBandRadio() const;

private:
    void fill(OptionId id, const RadioImage& image, Language language, int index);

    std::array<QComboBox*, kAllOptions.size()> m_lists{};
    std::array<QLabel*, kAllOptions.size()> m_labels{};
};

} // namespace zr310::ui
