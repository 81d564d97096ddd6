#pragma once

#include "options.h"
#include "radio_image.h"

#include <QGroupBox>

#include <array>

class QComboBox;
class QLabel;

namespace zr310::ui {

class ImageEditor;

// The "Optional Features" frame `fraFunction`: one labelled drop-down list
// per radio-wide option, each named after its `OptionId` (`CboTXLimit` ...
// `CboBandSel`); the labels are named "Lbl" + the list's name.
//
// A list writes the item the user chose in it when it is left (Enter moves
// on to the next control), exactly as `zr310-cli set` writes that item; a
// list left without a choice writes nothing. The radio-wide W/N list and
// Power Sel act at once.
class OptionsPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit OptionsPanel(QWidget* parent = nullptr);

    void setEditor(ImageEditor* editor) { m_editor = editor; }

    // Caption and labels in the current language; list items rebuilt in it
    // with each list keeping its selection.
    void applyLanguage(const RadioImage& image, Language language);
    // Fills every list from the image and selects the item it stores.
    void refresh(const RadioImage& image, Language language);
    // Writes every list's choice not written yet, as leaving the lists would.
    void commitEdits();

    QComboBox* list(OptionId id) const { return m_lists[static_cast<std::size_t>(id)]; }
    // True while `CboBandSel` stands on "Narrow".
    bool narrowBandRadio() const;

signals:
    // The radio-wide W/N changed the channels: the grid must be drawn again.
    void channelsChanged();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void fill(OptionId id, const RadioImage& image, Language language, int index);
    void chosen(OptionId id);
    void commit(OptionId id);

    ImageEditor* m_editor = nullptr;
    std::array<QComboBox*, kAllOptions.size()> m_lists{};
    std::array<QLabel*, kAllOptions.size()> m_labels{};
    // Lists whose item the user chose since they were filled from the image
    // and that have not written it yet.
    std::array<bool, kAllOptions.size()> m_pending{};
};

} // namespace zr310::ui
