#include "model_panel.h"

#include "bands.h"
#include "common/texts.h"

#include <QComboBox>
#include <QGridLayout>
#include <QLabel>
#include <QSignalBlocker>

namespace zr310::ui {

namespace {
constexpr auto kModelName = "ZR-310";
}

ModelPanel::ModelPanel(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("fraModel"));
    m_lblType = new QLabel(this);
    m_lblType->setObjectName(QStringLiteral("LblType"));
    m_lblModel = new QLabel(QString::fromLatin1(kModelName), this);
    m_lblModel->setObjectName(QStringLiteral("LblModel"));
    m_lblBand = new QLabel(this);
    m_lblBand->setObjectName(QStringLiteral("LblBand"));
    m_cboBand = new QComboBox(this);
    m_cboBand->setObjectName(QStringLiteral("CboBand"));
    for (const Band& band : kBands) {
        m_cboBand->addItem(qs(band.text));
    }
    m_lblBandRange = new QLabel(this);
    m_lblBandRange->setObjectName(QStringLiteral("lblBandRange"));

    auto* grid = new QGridLayout(this);
    grid->setContentsMargins(6, 2, 6, 4);
    grid->setVerticalSpacing(2);
    grid->addWidget(m_lblType, 0, 0);
    grid->addWidget(m_lblModel, 0, 1);
    grid->addWidget(m_lblBand, 1, 0, 1, 2);
    grid->addWidget(m_cboBand, 2, 0, 1, 2);
    grid->addWidget(m_lblBandRange, 3, 0, 1, 2);
    grid->setColumnStretch(1, 1);

    connect(m_cboBand, &QComboBox::currentIndexChanged, this, [this] {
        InitSetData();
        emit bandChanged();
    });
    connect(m_cboBand, &QComboBox::activated, this, &ModelPanel::bandChosen);
}

void ModelPanel::applyLanguage(Language language) {
    setTitle(res(txt::ModelInformation, language));
    m_lblType->setText(res(txt::ModelType, language) + QLatin1Char(':'));
    m_lblBand->setText(res(txt::FrequencyBand, language) + QLatin1Char(':'));
}

void ModelPanel::refresh(const RadioImage& image) {
    {
        const QSignalBlocker quiet(m_cboBand);
        m_cboBand->setCurrentIndex(bandIndexFromImage(image));
    }
    InitSetData();
    emit bandChanged();
}

void ModelPanel::InitSetData() {
    // An unknown band text leaves the label empty.
    m_lblBandRange->setText(qs(bandRangeText(bandText().toStdString())));
}

QString ModelPanel::bandText() const {
    return m_cboBand->currentText();
}

} // namespace zr310::ui
