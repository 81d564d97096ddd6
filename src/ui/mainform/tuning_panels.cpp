#include "tuning_panels.h"

#include "channel.h"
#include "common/texts.h"
#include "test_channel_panel.h"
#include "tuning_session.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zr310::ui {

namespace {

template <typename T> T* named(T* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

TuningPanels::TuningPanels(QWidget* frame1) : QObject(frame1) {
    m_tree = named(new QTreeWidget(frame1), "TreeViewTune");
    m_tree->setHeaderHidden(true);
    m_nodeT = new QTreeWidgetItem(m_tree);
    m_nodeT->setData(0, Qt::UserRole, kNodeAdjustFrequency);
    m_nodeS = new QTreeWidgetItem(m_nodeT);
    m_nodeS->setData(0, Qt::UserRole, kNodeAllItems);
    for (int k = 0; k < 5; ++k) {
        m_nodeItems[k] = new QTreeWidgetItem(m_nodeS);
        m_nodeItems[k]->setData(0, Qt::UserRole, k);
    }
    m_nodeQ = new QTreeWidgetItem(m_nodeS);
    m_nodeQ->setData(0, Qt::UserRole, kNodeExit);
    m_nodeT->setExpanded(true);
    m_nodeS->setExpanded(true);

    m_fraTune = named(new QGroupBox(frame1), "FraTune");
    m_fraTuneCh = named(new QGroupBox(m_fraTune), "FraTuneCH");
    const char* labelNames[] = {"LblTuneRxFreq", "LblTuneRxTone", "LblTuneTxFreq", "LblTuneTxTone",
                                "LblTuneValue"};
    auto* chLayout = new QGridLayout(m_fraTuneCh);
    for (int k = 0; k < 5; ++k) {
        m_tuneLabels[k] = named(new QLabel(m_fraTuneCh), labelNames[k]);
        m_tuneTexts[k] = new QLabel(m_fraTuneCh);
        m_tuneTexts[k]->setObjectName(QString::fromLatin1(labelNames[k]) + QStringLiteral("Text"));
        chLayout->addWidget(m_tuneLabels[k], k, 0);
        chLayout->addWidget(m_tuneTexts[k], k, 1);
    }
    chLayout->setColumnStretch(1, 1);
    m_hscTuneValue = named(new QScrollBar(Qt::Horizontal, m_fraTune), "HscTuneValue");
    m_hscTuneValue->setRange(0, 255);
    m_hscTuneValue->setSingleStep(1);
    m_hscTuneValue->setPageStep(16);
    m_lblTuneValue = named(new QLabel(m_fraTune), "LblTuneAddjustValue");
    m_lblTuneValue->setMinimumWidth(m_lblTuneValue->fontMetrics().horizontalAdvance("0000"));
    m_cmdTuneOk = named(new QPushButton(m_fraTune), "CmdTuneOK");
    m_cmdTuneCancel = named(new QPushButton(m_fraTune), "CmdTuneCancel");
    auto* tuneLayout = new QVBoxLayout(m_fraTune);
    tuneLayout->addWidget(m_fraTuneCh);
    auto* valueRow = new QHBoxLayout;
    valueRow->addWidget(m_hscTuneValue, 1);
    valueRow->addWidget(m_lblTuneValue);
    tuneLayout->addLayout(valueRow);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(m_cmdTuneOk);
    buttons->addWidget(m_cmdTuneCancel);
    tuneLayout->addLayout(buttons);

    m_testChannels = new TestChannelPanel(frame1);
    connect(m_testChannels, &TestChannelPanel::writeRequested, this,
            &TuningPanels::writeTestFrequencyRequested);
    connect(m_tree, &QTreeWidget::itemClicked, this,
            [this](QTreeWidgetItem* node) { nodeClicked(node); });
    connect(m_hscTuneValue, &QScrollBar::valueChanged, this, &TuningPanels::valueChanged);
    connect(m_cmdTuneOk, &QPushButton::clicked, this, [this] { finishItem(true); });
    connect(m_cmdTuneCancel, &QPushButton::clicked, this, [this] { finishItem(false); });

    setShown(false);
}

TuningPanels::~TuningPanels() = default;

void TuningPanels::setEditor(ImageEditor* editor) {
    m_editor = editor;
    m_testChannels->setEditor(editor);
}

QGroupBox* TuningPanels::fraTestCh() const {
    return m_testChannels;
}

QTableWidget* TuningPanels::testGrid() const {
    return m_testChannels->grid();
}

void TuningPanels::frameUpTestGrid() {
    m_testChannels->frameUp();
}

void TuningPanels::refreshTestChannels(const RadioImage& image, const QString& bandText,
                                       Language language) {
    m_testChannels->refresh(image, bandText, language);
}

void TuningPanels::commitEdits() {
    m_testChannels->commitEdit();
}

void TuningPanels::applyLanguage(Language language) {
    const auto text = [language](int id) { return res(id, language); };
    m_nodeT->setText(0, text(txt::TuningAdjustFrequency));
    m_nodeS->setText(0, text(txt::TuningAllItems));
    for (int k = 0; k < 5; ++k) {
        m_nodeItems[k]->setText(0, text(txt::TuningLowBattery + k));
    }
    m_nodeQ->setText(0, text(txt::TuningExit));

    m_fraTuneCh->setTitle(text(txt::AdjustChannel));
    const int labelIds[] = {txt::RxFreq, txt::RxTone, txt::TxFreq, txt::TxTone, txt::TuningValue};
    for (int k = 0; k < 5; ++k) {
        m_tuneLabels[k]->setText(text(labelIds[k]) + QLatin1Char(':'));
    }
    m_cmdTuneOk->setText(text(txt::OkButton));
    m_cmdTuneCancel->setText(text(txt::CancelButton));
    m_testChannels->applyLanguage(language);
}

void TuningPanels::placeContents(double rowGrowth) {
    m_testChannels->placeContents(rowGrowth);
}

void TuningPanels::setShown(bool shown) {
    m_tree->setVisible(shown);
    m_testChannels->setVisible(shown);
    m_fraTune->setVisible(false); // shown while an item is adjusted
    if (!shown) {
        m_tuneItemActive = false;
    }
}

} // namespace zr310::ui
