#include "channel_panel.h"

#include "channel_grid.h"
#include "common/box_columns.h"
#include "common/texts.h"
#include "common/twips.h"
#include "frequency_box.h"
#include "image_editor.h"
#include "sizes.h"

#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QTableWidget>

#include <algorithm>

namespace zr310::ui {

namespace {

// The grid's heading line as it is first set up, before the language is
// applied: a caption per column, then the row labels.
constexpr std::array<std::string_view, kGridColumns> kFrameUpHeaders{
    "信道",           "接收频率(MHz)", "接收CTC/DCS", "发射频率(MHz)", "发射CTC/DCS",
    "扫描 删除/添加", "繁忙锁定 ",     "发射功率",    "  带宽"};

// Fractions of the grid width per column, in hundredths; the last column
// also gets w / 110.
constexpr std::array<int, kGridColumns> kColumnPercent{10, 13, 11, 13, 11, 14, 9, 9, 8};

constexpr double kHeaderRowTwips = 500;
constexpr double kChannelRowTwips = 280;
constexpr int kBoxColumnWidth = 46; // pixels per column of check boxes
constexpr int kMargin = 6;

// The cell words that a language switch translates in place.
constexpr std::array<int, 8> kCellWordIds{txt::On,     txt::Off,  txt::Low, txt::High,
                                          txt::Narrow, txt::Wide, txt::Del, txt::Add};

QString rowLabel(int n) {
    return res(txt::Channel) + QLatin1Char(' ') + QString::number(n);
}

} // namespace

ChannelPanel::ChannelPanel(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("FraCHSet"));

    m_grid = new ChannelGrid(kGridRows, kGridColumns, this);
    m_grid->setObjectName(QStringLiteral("channelGrid"));
    m_grid->horizontalHeader()->hide();
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setMinimumSectionSize(1);
    m_grid->horizontalHeader()->setMinimumSectionSize(1);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setFocusPolicy(Qt::StrongFocus);
    m_grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setWordWrap(true);

    const QColor fixedBackground = palette().color(QPalette::Button);
    for (int row = 0; row < kGridRows; ++row) {
        for (int column = 0; column < kGridColumns; ++column) {
            auto* item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setTextAlignment(Qt::AlignCenter);
            if (row == 0 || column == kColLabel) {
                item->setFlags(Qt::ItemIsEnabled);
                item->setBackground(fixedBackground);
            }
            m_grid->setItem(row, column, item);
        }
    }

    m_txtInputBox = new FrequencyBox(m_grid->viewport());

    m_legendClose = new QLabel(this);
    m_legendClose->setObjectName(QStringLiteral("LblLegendClose"));
    m_legendNoTx = new QLabel(this);
    m_legendNoTx->setObjectName(QStringLiteral("LblLegendNoTx"));
    m_legendSimplex = new QLabel(this);
    m_legendSimplex->setObjectName(QStringLiteral("LblLegendSimplex"));
    for (QLabel* legend : {m_legendClose, m_legendNoTx, m_legendSimplex}) {
        legend->setAlignment(Qt::AlignCenter);
        legend->setWordWrap(true);
    }

    for (std::size_t i = 0; i < m_chkClose.size(); ++i) {
        const QString index = QString::number(i);
        m_chkClose[i] = new QCheckBox(this);
        m_chkClose[i]->setObjectName(QStringLiteral("chkClose_") + index);
        m_chkForbidTx[i] = new QCheckBox(this);
        m_chkForbidTx[i]->setObjectName(QStringLiteral("chkForbidTx_") + index);
        m_chkSameFreq[i] = new QCheckBox(this);
        m_chkSameFreq[i]->setObjectName(QStringLiteral("chkSameFreq_") + index);
    }
    connectEditors();
}

QTableWidget* ChannelPanel::grid() const {
    return m_grid;
}

void ChannelPanel::frameUp() {
    m_grid->setRowCount(kGridRows);
    m_grid->setColumnCount(kGridColumns);
    for (int column = 0; column < kGridColumns; ++column) {
        setCell(0, column, qs(kFrameUpHeaders[toIndex(column)]));
    }
    for (int n = 1; n <= kChannelCount; ++n) {
        setCell(n, kColLabel, rowLabel(n));
    }
}

void ChannelPanel::applyLanguage(Language from, Language to) {
    setTitle(res(txt::ChannelSetting, to));
    m_legendClose->setText(res(txt::Close, to));
    m_legendNoTx->setText(res(txt::NoTx, to));
    m_legendSimplex->setText(res(txt::Simplex, to));
    for (int column = 0; column < kGridColumns; ++column) {
        setCell(0, column, res(txt::Channel + column, to));
    }
    for (int n = 1; n <= kChannelCount; ++n) {
        setCell(n, kColLabel, res(txt::Channel, to) + QLatin1Char(' ') + QString::number(n));
    }
    if (from == to) {
        return;
    }
    for (int n = 1; n <= kChannelCount; ++n) {
        for (int column = kColScan; column <= kColBandwidth; ++column) {
            QTableWidgetItem* cell = m_grid->item(n, column);
            for (int id : kCellWordIds) {
                if (cell->text() == res(id, from)) {
                    cell->setText(res(id, to));
                    break;
                }
            }
        }
    }
}

void ChannelPanel::refresh(const RadioImage& image, bool narrowBandRadio, Language language) {
    m_narrowBandRadio = narrowBandRadio;
    for (const auto& [cell, background] : std::as_const(m_marks)) {
        m_grid->item(cell.y(), cell.x())->setBackground(background);
    }
    m_marks.clear();
    for (int n = 1; n <= kChannelCount; ++n) {
        const ChannelTexts texts = decodeChannel(image, channelColumn(n), language);
        // Simplex: an open channel that transmits as it receives.
        m_simplex[toIndex(n - 1)] =
            !texts.close && texts.rxFreq == texts.txFreq && texts.rxTone == texts.txTone;
        renderRow(n, image, language);
    }
}

void ChannelPanel::renderRow(int n, const RadioImage& image, Language language) {
    const ChannelTexts texts = decodeChannel(image, channelColumn(n), language);
    setCell(n, kColRxFreq, qs(texts.rxFreq));
    setCell(n, kColRxTone, qs(texts.rxTone));
    setCell(n, kColTxFreq, qs(texts.txFreq));
    setCell(n, kColTxTone, qs(texts.txTone));
    setCell(n, kColScan, qs(texts.scan));
    setCell(n, kColBusyLock, qs(texts.busyLock));
    setCell(n, kColPower, qs(texts.power));
    setCell(n, kColBandwidth, qs(texts.bandwidth));

    const std::size_t i = toIndex(n - 1);
    // A channel whose two sides differ is no longer simplex.
    if (texts.rxFreq != texts.txFreq || texts.rxTone != texts.txTone) {
        m_simplex[i] = false;
    }
    m_chkClose[i]->setChecked(texts.close);
    m_chkForbidTx[i]->setChecked(texts.noTx);
    m_chkForbidTx[i]->setEnabled(!texts.close);
    m_chkSameFreq[i]->setChecked(m_simplex[i]);
    colourChannel(n, texts, m_narrowBandRadio, language);
}

void ChannelPanel::colourChannel(int n, const ChannelTexts& texts, bool narrowBandRadio,
                                 Language language) {
    const QColor grey = systemGreyText();
    if (texts.close) {
        for (int column = kColRxFreq; column <= kColBandwidth; ++column) {
            colourCell(n, column, grey);
        }
        return;
    }
    const QColor normal = m_grid->palette().color(QPalette::Text);
    const QColor green = colorFromBgr(kCellGreen);
    const QColor darkRed = colorFromBgr(kCellDarkRed);
    const auto is = [language](const std::string& text, int id) {
        return text == ResString(id, language);
    };

    colourCell(n, kColRxFreq, normal);
    colourCell(n, kColRxTone, normal);
    colourCell(n, kColTxFreq, texts.noTx ? grey : normal);
    colourCell(n, kColTxTone, texts.noTx ? grey : normal);
    colourCell(n, kColScan, is(texts.scan, txt::Add) ? green : darkRed);
    if (texts.noTx) {
        colourCell(n, kColBusyLock, grey);
        colourCell(n, kColPower, grey);
    } else {
        colourCell(n, kColBusyLock, is(texts.busyLock, txt::Off) ? darkRed : green);
        colourCell(n, kColPower, is(texts.power, txt::High) ? green : darkRed);
    }
    if (narrowBandRadio) {
        colourCell(n, kColBandwidth, colorFromBgr(kCellMidGrey));
    } else {
        colourCell(n, kColBandwidth, is(texts.bandwidth, txt::Wide) ? green : darkRed);
    }
}

QColor ChannelPanel::systemGreyText() const {
    return palette().color(QPalette::Disabled, QPalette::WindowText);
}

void ChannelPanel::placeContents(double rowGrowth) {
    const int top = fontMetrics().height() + kMargin;
    const int boxesWidth = 3 * kBoxColumnWidth;
    const int gridWidth = width() - 2 * kMargin - boxesWidth;
    const int frame = m_grid->frameWidth();

    // Column widths are fractions of the grid's width.
    const double w = pixelsToTwips(gridWidth - 2 * frame);
    int used = 0;
    for (int column = 0; column < kGridColumns; ++column) {
        double twips = w * kColumnPercent[toIndex(column)] / 100;
        if (column == kColBandwidth) {
            twips += w / 110;
        }
        int pixels = twipsToPixels(twips);
        if (column == kColBandwidth) {
            pixels = std::min(pixels, gridWidth - 2 * frame - used);
        }
        m_grid->setColumnWidth(column, pixels);
        used += pixels;
    }
    const int headerHeight = twipsToPixels(kHeaderRowTwips * rowGrowth);
    const int rowHeight = twipsToPixels(kChannelRowTwips * rowGrowth);
    m_grid->setRowHeight(0, headerHeight);
    for (int n = 1; n <= kChannelCount; ++n) {
        m_grid->setRowHeight(n, rowHeight);
    }
    const int gridHeight = headerHeight + kChannelCount * rowHeight + 2 * frame;
    m_grid->setGeometry(kMargin, top, gridWidth, gridHeight);
    if (m_txtInputBox->isOpen()) {
        m_txtInputBox->setGeometry(m_grid->visualItemRect(m_grid->item(m_boxRow, m_boxColumn)));
    }

    const std::array<QWidget*, 3> legends{m_legendClose, m_legendNoTx, m_legendSimplex};
    std::vector<QWidget*> boxes;
    for (std::size_t i = 0; i < m_chkClose.size(); ++i) {
        boxes.insert(boxes.end(), {m_chkClose[i], m_chkForbidTx[i], m_chkSameFreq[i]});
    }
    placeBoxColumns(legends, boxes, QPoint(kMargin + gridWidth, top + frame), kBoxColumnWidth,
                    headerHeight, rowHeight);
}

void ChannelPanel::setCell(int row, int column, const QString& text) {
    m_grid->item(row, column)->setText(text);
}

void ChannelPanel::colourCell(int row, int column, const QColor& colour) {
    m_grid->item(row, column)->setForeground(colour);
}

void ChannelPanel::markCells(const QList<QPoint>& cells) {
    static const QColor kMarked(255, 160, 160);
    for (const QPoint& cell : cells) {
        QTableWidgetItem* item = m_grid->item(cell.y(), cell.x());
        const bool marked = std::any_of(m_marks.cbegin(), m_marks.cend(),
                                        [&cell](const auto& mark) { return mark.first == cell; });
        if (item == nullptr || marked) {
            continue;
        }
        m_marks.append({cell, item->background()});
        item->setBackground(kMarked);
    }
}

} // namespace zr310::ui
