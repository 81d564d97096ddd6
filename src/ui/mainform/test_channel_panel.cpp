#include "test_channel_panel.h"

#include "channel_grid.h"
#include "common/box_columns.h"
#include "common/message_box.h"
#include "common/texts.h"
#include "common/twips.h"
#include "frequency_box.h"
#include "frmQTDQT/frm_qtdqt.h"
#include "image_edit.h"
#include "image_editor.h"
#include "sizes.h"

#include <QApplication>
#include <QButtonGroup>
#include <QCheckBox>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>

namespace zr310::ui {

namespace {

enum TestColumn {
    kColLabel = 0,
    kColRxFreq,
    kColRxStep,
    kColRxTone,
    kColTxFreq,
    kColTxStep,
    kColTxTone,
    kTestColumns
};
constexpr int kTestRows = 1 + kTestChannelCount;

constexpr std::array<std::string_view, kTestColumns> kFrameUpHeaders{
    "信道",          "接收频率(MHz)", "步进值(KHz)", "接收CTC/DCS",
    "发射频率(MHz)", "步进值(KHz)",   "发射CTC/DCS"};
constexpr std::array<int, kTestColumns> kHeaderIds{
    txt::Channel, txt::RxFreq, txt::Step, txt::RxTone, txt::TxFreq, txt::Step, txt::TxTone};
// Fractions of the grid width per column, in hundredths, so that a row
// label ("信道 11"), a frequency and a "CTC 254.1" fit their cells.
constexpr std::array<int, kTestColumns> kColumnPercent{14, 17, 10, 16, 17, 10, 16};
constexpr double kHeaderRowTwips = 500;
constexpr double kTestRowTwips = 300;
constexpr int kBoxColumnWidth = 44;
constexpr int kMargin = 6;

// The row of the test channel being adjusted is red (0x0000FF).
constexpr std::uint32_t kAdjustedRow = 0x0000FF;

QString rowLabel(int t, Language language) {
    return res(txt::Channel, language) + QLatin1Char(' ') + QString::number(t);
}

template <typename T> T* named(T* widget, const QString& name) {
    widget->setObjectName(name);
    return widget;
}

} // namespace

TestChannelPanel::TestChannelPanel(QWidget* parent) : QGroupBox(parent) {
    setObjectName(QStringLiteral("FraTestCH"));
    m_grid =
        named(new ChannelGrid(kTestRows, kTestColumns, this), QStringLiteral("TestChannelGrid"));
    m_grid->horizontalHeader()->hide();
    m_grid->verticalHeader()->hide();
    m_grid->verticalHeader()->setMinimumSectionSize(1);
    m_grid->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_grid->setSelectionMode(QAbstractItemView::SingleSelection);
    m_grid->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_grid->setWordWrap(true);
    for (int row = 0; row < kTestRows; ++row) {
        for (int column = 0; column < kTestColumns; ++column) {
            auto* item = new QTableWidgetItem;
            item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
            item->setTextAlignment(Qt::AlignCenter);
            if (row == 0 || column == kColLabel) {
                item->setFlags(Qt::ItemIsEnabled);
                item->setBackground(palette().color(QPalette::Button));
            }
            m_grid->setItem(row, column, item);
        }
    }
    m_txtInputTest = new FrequencyBox(m_grid->viewport());
    m_txtInputTest->setObjectName(QStringLiteral("TxtInputTest"));

    m_lblTestType = named(new QLabel(this), QStringLiteral("LblTestType"));
    m_lblTestModel =
        named(new QLabel(QStringLiteral("ZR-310"), this), QStringLiteral("LblTestModel"));
    m_lblTestBand = named(new QLabel(this), QStringLiteral("LblTestBand"));
    m_lblTestBandValue = named(new QLabel(this), QStringLiteral("LblTestBandValue"));
    m_lblTestCh = named(new QLabel(this), QStringLiteral("LblTestCH"));
    m_lblClose = named(new QLabel(this), QStringLiteral("LblClose"));
    m_lblForbidTx = named(new QLabel(this), QStringLiteral("LblForbidTX"));
    for (QLabel* legend : {m_lblTestCh, m_lblClose, m_lblForbidTx}) {
        legend->setAlignment(Qt::AlignCenter);
        legend->setWordWrap(true);
    }
    m_cmdWriteTFreq = named(new QPushButton(this), QStringLiteral("CmdWriteTFreq"));

    m_adjustGroup = new QButtonGroup(this);
    m_adjustGroup->setExclusive(true);
    for (int i = 0; i < kTestChannelCount; ++i) {
        const QString index = QString::number(i);
        const std::size_t at = toIndex(i);
        m_chkClose[at] = named(new QCheckBox(this), QStringLiteral("TestChkClose_") + index);
        m_chkForbidTx[at] = named(new QCheckBox(this), QStringLiteral("TestChkForbidTX_") + index);
        m_optAdjust[at] = named(new QRadioButton(this), QStringLiteral("OptAddjust_") + index);
        m_adjustGroup->addButton(m_optAdjust[at], i);
        connect(m_chkClose[at], &QCheckBox::clicked, this, [this, i](bool checked) {
            editRecord(i + 1, [checked](RadioImage& image, int c) {
                ChannelRecord(image, c).setOpen(!checked);
            });
        });
        connect(m_chkForbidTx[at], &QCheckBox::clicked, this, [this, i](bool checked) {
            editRecord(i + 1, [checked](RadioImage& image, int c) {
                ChannelRecord(image, c).setTxAllowed(!checked);
            });
        });
    }
    m_optAdjust[0]->setChecked(true);
    connect(m_adjustGroup, &QButtonGroup::idClicked, this, [this] {
        for (int t = 1; t <= kTestChannelCount; ++t) {
            paintRow(t);
        }
    });

    connect(m_grid, &ChannelGrid::cellActivated, this, &TestChannelPanel::actOnCell);
    connect(m_grid, &ChannelGrid::cellTyped, this, [this](int row, int column, const QString& t) {
        if (column == kColRxFreq || column == kColTxFreq) {
            openInputBox(row, column, t);
        }
    });
    connect(m_txtInputTest, &FrequencyBox::closed, this, &TestChannelPanel::inputBoxClosed);
    connect(m_cmdWriteTFreq, &QPushButton::clicked, this, [this] {
        commitEdit();
        emit writeRequested();
    });
}

QTableWidget* TestChannelPanel::grid() const {
    return m_grid;
}

int TestChannelPanel::adjustedChannel() const {
    const int chosen = m_adjustGroup->checkedId();
    return chosen >= 0 && !isClosed(chosen + 1) ? chosen + 1 : 0;
}

void TestChannelPanel::frameUp() {
    for (int column = 0; column < kTestColumns; ++column) {
        m_grid->item(0, column)->setText(qs(kFrameUpHeaders[toIndex(column)]));
    }
    for (int t = 1; t <= kTestChannelCount; ++t) {
        m_grid->item(t, kColLabel)->setText(rowLabel(t, currentLanguage()));
    }
}

void TestChannelPanel::applyLanguage(Language language) {
    setTitle(res(txt::AdjustChannel, language));
    m_lblTestCh->setText(res(txt::AdjustChannel, language));
    m_lblClose->setText(res(txt::Close, language));
    m_lblForbidTx->setText(res(txt::NoTx, language));
    m_lblTestType->setText(res(txt::ModelType, language) + QLatin1Char(':'));
    m_lblTestBand->setText(res(txt::FrequencyBand, language) + QLatin1Char(':'));
    m_cmdWriteTFreq->setText(res(txt::WriteTestFrequencyButton, language));
    for (int column = 0; column < kTestColumns; ++column) {
        m_grid->item(0, column)->setText(res(kHeaderIds[toIndex(column)], language));
    }
    for (int t = 1; t <= kTestChannelCount; ++t) {
        m_grid->item(t, kColLabel)->setText(rowLabel(t, language));
    }
}

void TestChannelPanel::refresh(const RadioImage& image, const QString& bandText,
                               Language language) {
    m_lblTestBandValue->setText(bandText);
    for (int t = 1; t <= kTestChannelCount; ++t) {
        renderRow(t, image, language);
    }
}

void TestChannelPanel::renderRow(int t, const RadioImage& image, Language language) {
    const ChannelView record(image, testChannelColumn(t));
    const ChannelTexts texts = decodeChannel(image, testChannelColumn(t), language);
    const std::array<std::string, kTestColumns - 1> cells{
        texts.rxFreq, stepText(record.frequency(Side::Receive)),  texts.rxTone,
        texts.txFreq, stepText(record.frequency(Side::Transmit)), texts.txTone};
    for (int column = kColRxFreq; column < kTestColumns; ++column) {
        m_grid->item(t, column)->setText(qs(cells[toIndex(column - 1)]));
    }
    const std::size_t i = toIndex(t - 1);
    m_chkClose[i]->setChecked(texts.close);
    m_chkForbidTx[i]->setChecked(texts.noTx);
    m_chkForbidTx[i]->setEnabled(!texts.close);
    m_optAdjust[i]->setEnabled(!texts.close);
    paintRow(t);
}

// Closed rows in the button-shadow colour, the adjusted row red, others plain.
void TestChannelPanel::paintRow(int t) {
    QBrush background;
    if (isClosed(t)) {
        background = palette().color(QPalette::Mid);
    } else if (m_optAdjust[toIndex(t - 1)]->isChecked()) {
        background = colorFromBgr(kAdjustedRow);
    }
    for (int column = kColRxFreq; column < kTestColumns; ++column) {
        m_grid->item(t, column)->setBackground(background);
    }
}

bool TestChannelPanel::isClosed(int t) const {
    return m_chkClose[toIndex(t - 1)]->isChecked();
}

// The frequency and signalling cells open their editors as in the channel
// grid; a closed test channel, and the transmit side of one with no TX, take
// no edit. The step columns follow the stored frequencies.
void TestChannelPanel::actOnCell(int row, int column) {
    if (row < 1 || row > kTestChannelCount || m_editor == nullptr || isClosed(row)) {
        return;
    }
    const bool transmit = column == kColTxFreq || column == kColTxTone;
    if (transmit && m_chkForbidTx[toIndex(row - 1)]->isChecked()) {
        return;
    }
    if (column == kColRxFreq || column == kColTxFreq) {
        openInputBox(row, column);
    } else if (column == kColRxTone || column == kColTxTone) {
        openSignalling(row, transmit ? Side::Transmit : Side::Receive);
    }
}

void TestChannelPanel::openInputBox(int row, int column, const QString& typed) {
    const bool transmit = column == kColTxFreq;
    if (m_editor == nullptr || isClosed(row) ||
        (transmit && m_chkForbidTx[toIndex(row - 1)]->isChecked())) {
        return;
    }
    m_txtInputTest->finish();
    m_boxRow = row;
    m_boxColumn = column;
    m_grid->setCurrentCell(row, column);
    m_txtInputTest->open(m_grid->visualItemRect(m_grid->item(row, column)),
                         m_grid->item(row, column)->text(), m_editor->bandLimits(), typed);
}

void TestChannelPanel::inputBoxClosed(bool accepted, bool moveRight) {
    const int row = m_boxRow;
    const int column = m_boxColumn;
    if (const auto text = m_txtInputTest->frequencyToStore(accepted)) {
        const ChannelField field =
            column == kColRxFreq ? ChannelField::RxFreq : ChannelField::TxFreq;
        editRecord(row, [field, text = *text](RadioImage& image, int c) {
            setChannelField(image, c, field, text);
        });
    }
    if (moveRight) {
        m_grid->setCurrentCell(row, std::min(column + 1, kTestColumns - 1));
    }
    if (moveRight || QApplication::focusWidget() == nullptr) {
        m_grid->setFocus(Qt::OtherFocusReason);
    }
}

void TestChannelPanel::openSignalling(int row, Side side) {
    const int column = side == Side::Receive ? kColRxTone : kColTxTone;
    const auto chosen = FrmQTDQT::chooseFor(
        m_grid->item(row, column), side == Side::Receive ? kSideTestRx : kSideTestTx, row, this);
    if (!chosen) {
        return;
    }
    const ChannelField field = side == Side::Receive ? ChannelField::RxTone : ChannelField::TxTone;
    editRecord(row, [field, text = chosen->toStdString()](RadioImage& image, int c) {
        setChannelField(image, c, field, text);
    });
}

void TestChannelPanel::editRecord(int t, const RecordChange& change) {
    if (m_editor == nullptr) {
        return;
    }
    try {
        m_editor->edit([&](RadioImage& image) { change(image, testChannelColumn(t)); });
    } catch (const EditError& error) {
        showMessageBox(this, QMessageBox::Warning, res(txt::Error), qs(error.value()));
    }
    renderRow(t, m_editor->image(), currentLanguage());
}

void TestChannelPanel::commitEdit() {
    const bool hadFocus = m_txtInputTest->hasFocus();
    m_txtInputTest->finish();
    if (hadFocus) {
        m_grid->setFocus(Qt::OtherFocusReason);
    }
}

void TestChannelPanel::placeContents(double rowGrowth) {
    const int lineHeight = m_lblTestType->sizeHint().height();
    int y = fontMetrics().height() + kMargin;
    int x = kMargin;
    for (QLabel* label : {m_lblTestType, m_lblTestModel, m_lblTestBand, m_lblTestBandValue}) {
        // The band's text changes after the layout: it takes what is left.
        const int w =
            label == m_lblTestBandValue ? width() - kMargin - x : label->sizeHint().width();
        label->setGeometry(x, y, w, lineHeight);
        x += w + (label == m_lblTestModel ? 3 * kMargin : kMargin);
    }
    y += lineHeight + 4;

    const int boxesWidth = 3 * kBoxColumnWidth;
    const int gridWidth = width() - 2 * kMargin - boxesWidth;
    const int frame = m_grid->frameWidth();
    const int headerHeight = twipsToPixels(kHeaderRowTwips * rowGrowth);
    const int rowHeight = twipsToPixels(kTestRowTwips * rowGrowth);
    const int gridHeight = headerHeight + kTestChannelCount * rowHeight + 2 * frame;
    m_grid->setGeometry(kMargin, y, gridWidth, gridHeight);
    const double w = pixelsToTwips(gridWidth - 2 * frame);
    for (int column = 0; column < kTestColumns; ++column) {
        double twips = w * kColumnPercent[toIndex(column)] / 100;
        m_grid->setColumnWidth(column, twipsToPixels(twips));
    }
    m_grid->setRowHeight(0, headerHeight);
    for (int t = 1; t <= kTestChannelCount; ++t) {
        m_grid->setRowHeight(t, rowHeight);
    }

    const std::array<QWidget*, 3> legends{m_lblClose, m_lblForbidTx, m_lblTestCh};
    std::vector<QWidget*> boxes;
    for (std::size_t i = 0; i < m_chkClose.size(); ++i) {
        boxes.insert(boxes.end(), {m_chkClose[i], m_chkForbidTx[i], m_optAdjust[i]});
    }
    placeBoxColumns(legends, boxes, QPoint(kMargin + gridWidth, y + frame), kBoxColumnWidth,
                    headerHeight, rowHeight);
    y += gridHeight + 4;
    const QSize button = m_cmdWriteTFreq->sizeHint();
    m_cmdWriteTFreq->setGeometry(width() - kMargin - button.width(), y, button.width(),
                                 button.height());
    if (m_txtInputTest->isOpen()) {
        m_txtInputTest->setGeometry(m_grid->visualItemRect(m_grid->item(m_boxRow, m_boxColumn)));
    }
}

} // namespace zr310::ui
