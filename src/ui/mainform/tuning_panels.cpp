#include "tuning_panels.h"

#include "channel.h"
#include "common/texts.h"
#include "common/twips.h"

#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QScrollBar>
#include <QTableWidget>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace zr310::ui {

namespace {

constexpr int kTestGridRows = 1 + kTestChannelCount;
constexpr int kTestGridColumns = 7;
constexpr std::array<std::string_view, kTestGridColumns> kFrameUpHeaders{
    "信道",          "接收频率(MHz)", "步进值(KHz)", "接收CTC/DCS",
    "发射频率(MHz)", "步进值(KHz)",   "发射CTC/DCS"};
constexpr std::array<int, kTestGridColumns> kHeaderIds{1203, 1204, 1225, 1205, 1206, 1225, 1207};
constexpr std::array<int, kTestGridColumns> kColumnPercent{14, 15, 12, 15, 15, 12, 15};
constexpr double kHeaderRowTwips = 500;
constexpr double kTestRowTwips = 300;

template <typename T> T* named(T* widget, const char* name) {
    widget->setObjectName(QString::fromLatin1(name));
    return widget;
}

} // namespace

TuningPanels::TuningPanels(QWidget* frame1) : QObject(frame1) {
    m_tree = named(new QTreeWidget(frame1), "TreeViewTune");
    m_tree->setHeaderHidden(true);
    m_nodeT = new QTreeWidgetItem(m_tree);
    m_nodeT->setData(0, Qt::UserRole, QStringLiteral("T"));
    m_nodeS = new QTreeWidgetItem(m_nodeT);
    m_nodeS->setData(0, Qt::UserRole, QStringLiteral("S"));
    for (int k = 0; k < 5; ++k) {
        m_nodeItems[k] = new QTreeWidgetItem(m_nodeS);
        m_nodeItems[k]->setData(0, Qt::UserRole, QStringLiteral("S%1").arg(k + 1));
    }
    m_nodeQ = new QTreeWidgetItem(m_nodeS);
    m_nodeQ->setData(0, Qt::UserRole, QStringLiteral("Q"));
    m_nodeT->setExpanded(true);
    m_nodeS->setExpanded(true);

    m_fraTune = named(new QGroupBox(frame1), "FraTune");
    m_fraTuneCh = named(new QGroupBox(m_fraTune), "FraTuneCH");
    const char* labelNames[] = {"LblTuneRxFreq", "LblTuneRxTone", "LblTuneTxFreq", "LblTuneTxTone",
                                "LblTuneValue"};
    auto* chLayout = new QGridLayout(m_fraTuneCh);
    for (int k = 0; k < 5; ++k) {
        m_tuneLabels[k] = named(new QLabel(m_fraTuneCh), labelNames[k]);
        chLayout->addWidget(m_tuneLabels[k], k, 0);
    }
    m_hscTuneValue = named(new QScrollBar(Qt::Horizontal, m_fraTune), "HscTuneValue");
    m_hscTuneValue->setRange(0, 255);
    m_lblTuneValue = named(new QLabel(m_fraTune), "LblTuneAddjustValue");
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

    m_fraTestCh = named(new QGroupBox(frame1), "FraTestCH");
    m_lblTestCh = named(new QLabel(m_fraTestCh), "LblTestCH");
    m_lblTestType = named(new QLabel(m_fraTestCh), "LblTestType");
    m_lblTestBand = named(new QLabel(m_fraTestCh), "LblTestBand");
    m_lblClose = named(new QLabel(m_fraTestCh), "LblClose");
    m_lblForbidTx = named(new QLabel(m_fraTestCh), "LblForbidTX");
    m_testGrid =
        named(new QTableWidget(kTestGridRows, kTestGridColumns, m_fraTestCh), "TestChannelGrid");
    m_testGrid->horizontalHeader()->hide();
    m_testGrid->verticalHeader()->hide();
    m_testGrid->verticalHeader()->setMinimumSectionSize(1);
    m_testGrid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_testGrid->setSelectionMode(QAbstractItemView::NoSelection);
    m_testGrid->setWordWrap(true);
    for (int row = 0; row < kTestGridRows; ++row) {
        for (int column = 0; column < kTestGridColumns; ++column) {
            auto* item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsEnabled);
            item->setTextAlignment(Qt::AlignCenter);
            if (row == 0 || column == 0) {
                item->setBackground(m_testGrid->palette().color(QPalette::Button));
            }
            m_testGrid->setItem(row, column, item);
        }
    }
    m_cmdWriteTFreq = named(new QPushButton(m_fraTestCh), "CmdWriteTFreq");

    setShown(false);
}

void TuningPanels::frameUpTestGrid() {
    for (int column = 0; column < kTestGridColumns; ++column) {
        m_testGrid->item(0, column)->setText(qs(kFrameUpHeaders[column]));
    }
    for (int t = 1; t <= kTestChannelCount; ++t) {
        m_testGrid->item(t, 0)->setText(res(1203) + QLatin1Char(' ') + QString::number(t));
    }
}

void TuningPanels::refreshTestChannels(RadioImage& image, Language language) {
    const QColor closed = m_testGrid->palette().color(QPalette::Mid);
    for (int t = 1; t <= kTestChannelCount; ++t) {
        ChannelRecord record = ChannelRecord::testChannel(image, t);
        const ChannelTexts texts = decodeChannel(image, testChannelColumn(t), language);
        const std::array<std::string, 6> cells{
            texts.rxFreq, stepText(record.frequency(Side::Receive)),  texts.rxTone,
            texts.txFreq, stepText(record.frequency(Side::Transmit)), texts.txTone};
        for (int column = 1; column < kTestGridColumns; ++column) {
            QTableWidgetItem* item = m_testGrid->item(t, column);
            item->setText(qs(cells[column - 1]));
            item->setBackground(texts.close ? QBrush(closed) : QBrush());
        }
    }
}

void TuningPanels::applyLanguage(Language language) {
    const auto text = [language](int id) { return res(id, language); };
    m_nodeT->setText(0, text(1500));
    m_nodeS->setText(0, text(1501));
    for (int k = 0; k < 5; ++k) {
        m_nodeItems[k]->setText(0, text(1502 + k));
    }
    m_nodeQ->setText(0, text(1507));

    m_fraTuneCh->setTitle(text(1508));
    const int labelIds[] = {1204, 1205, 1206, 1207, 1509};
    for (int k = 0; k < 5; ++k) {
        m_tuneLabels[k]->setText(text(labelIds[k]) + QLatin1Char(':'));
    }
    m_cmdTuneOk->setText(text(1102));
    m_cmdTuneCancel->setText(text(1103));

    m_fraTestCh->setTitle(text(1508));
    m_lblTestCh->setText(text(1508));
    m_lblClose->setText(text(1201));
    m_lblForbidTx->setText(text(1202));
    m_lblTestType->setText(text(1301) + QLatin1Char(':'));
    m_lblTestBand->setText(text(1302) + QLatin1Char(':'));
    m_cmdWriteTFreq->setText(text(1510));
    for (int column = 0; column < kTestGridColumns; ++column) {
        m_testGrid->item(0, column)->setText(text(kHeaderIds[column]));
    }
    for (int t = 1; t <= kTestChannelCount; ++t) {
        m_testGrid->item(t, 0)->setText(text(1203) + QLatin1Char(' ') + QString::number(t));
    }
}

void TuningPanels::placeContents() {
    constexpr int kMargin = 6;
    const int width = m_fraTestCh->width() - 2 * kMargin;
    int y = m_fraTestCh->fontMetrics().height() + kMargin;
    const std::array<QLabel*, 5> labels{m_lblTestType, m_lblTestBand, m_lblTestCh, m_lblClose,
                                        m_lblForbidTx};
    const int lineHeight = m_lblTestType->sizeHint().height();
    for (std::size_t k = 0; k < labels.size(); ++k) {
        labels[k]->setGeometry(kMargin + static_cast<int>(k) * width / 5, y, width / 5, lineHeight);
    }
    y += lineHeight + 4;
    const int gridHeight = twipsToPixels(kHeaderRowTwips) +
                           kTestChannelCount * twipsToPixels(kTestRowTwips) +
                           2 * m_testGrid->frameWidth();
    m_testGrid->setGeometry(kMargin, y, width, gridHeight);
    m_testGrid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_testGrid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    y += gridHeight + 4;
    const QSize button = m_cmdWriteTFreq->sizeHint();
    m_cmdWriteTFreq->setGeometry(kMargin + width - button.width(), y, button.width(),
                                 button.height());

    const double w = pixelsToTwips(m_testGrid->width() - 2 * m_testGrid->frameWidth());
    for (int column = 0; column < kTestGridColumns; ++column) {
        double twips = w * kColumnPercent[column] / 100;
        if (column == 0) {
            twips += w / 430;
        }
        m_testGrid->setColumnWidth(column, twipsToPixels(twips));
    }
    m_testGrid->setRowHeight(0, twipsToPixels(kHeaderRowTwips));
    for (int t = 1; t <= kTestChannelCount; ++t) {
        m_testGrid->setRowHeight(t, twipsToPixels(kTestRowTwips));
    }
}

void TuningPanels::setShown(bool shown) {
    m_tree->setVisible(shown);
    m_fraTestCh->setVisible(shown);
    m_fraTune->setVisible(false); // shown while an item is adjusted
}

} // namespace zr310::ui
