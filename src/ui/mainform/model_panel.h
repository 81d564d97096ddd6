#pragma once

#include "radio_image.h"
#include "string_table.h"

#include <QGroupBox>

class QComboBox;
class QLabel;

namespace zr310::ui {

// The "Model Information" frame `fraModel`: the model type, the band list
// `CboBand` and the band's range `lblBandRange`.
class ModelPanel : public QGroupBox {
    Q_OBJECT
public:
    explicit ModelPanel(QWidget* parent = nullptr);

    void applyLanguage(Language language);
    // Selects the band the image records.
    void refresh(const RadioImage& image);
    // Sets `lblBandRange` from the selected band's text.
    void InitSetData();

    QComboBox* bandList() const { return m_cboBand; }
    QString bandText() const;

signals:
    // The band shown changed (by the user or by a refresh).
    void bandChanged();
    // The user chose the band at this list index.
    void bandChosen(int index);

private:
    QLabel* m_lblType = nullptr;
    QLabel* m_lblModel = nullptr;
    QLabel* m_lblBand = nullptr;
    QComboBox* m_cboBand = nullptr;
    QLabel* m_lblBandRange = nullptr;
};

} // namespace zr310::ui
