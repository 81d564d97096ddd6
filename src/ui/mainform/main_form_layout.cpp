// The content frame `Frame1`, the panels placed in it and the scroll bars
// that move it when the window is too small.
#include "channel_panel.h"
#include "common/twips.h"
#include "layout_rules.h"
#include "main_form.h"
#include "model_panel.h"
#include "options_panel.h"
#include "tuning_panels.h"

#include <QGroupBox>
#include <QMenuBar>
#include <QResizeEvent>
#include <QScreen>
#include <QScrollBar>
#include <QTreeWidget>

#include <cmath>

namespace zr310::ui {

namespace {

constexpr int kScrollLargeChange = 100; // twips
constexpr int kScrollSmallChange = 50;  // twips

void setTwipsGeometry(QWidget* widget, const QRectF& twips) {
    widget->setGeometry(twipsRect(twips.left(), twips.top(), twips.width(), twips.height()));
}

} // namespace

void MainForm::createPanels() {
    m_viewport = new QWidget(this);
    m_viewport->setObjectName(QStringLiteral("Viewport"));
    setCentralWidget(m_viewport);

    m_frame1 = new QWidget(m_viewport);
    m_frame1->setObjectName(QStringLiteral("Frame1"));
    m_fraModel = new ModelPanel(m_frame1);
    m_fraFunction = new OptionsPanel(m_frame1);
    m_fraChSet = new ChannelPanel(m_frame1);
    m_tuning = new TuningPanels(m_frame1);
    connect(m_fraModel, &ModelPanel::bandChanged, this, &MainForm::SetFreqRange);

    m_vScroll = new QScrollBar(Qt::Vertical, m_viewport);
    m_vScroll->setObjectName(QStringLiteral("VScroll1"));
    m_hScroll = new QScrollBar(Qt::Horizontal, m_viewport);
    m_hScroll->setObjectName(QStringLiteral("HScroll1"));
    for (QScrollBar* bar : {m_vScroll, m_hScroll}) {
        bar->setMinimum(0);
        bar->setValue(0);
        bar->setPageStep(kScrollLargeChange);
        bar->setSingleStep(kScrollSmallChange);
        bar->hide();
    }
    m_picture2 = new QWidget(m_viewport);
    m_picture2->setObjectName(QStringLiteral("Picture2"));
    m_picture2->setAutoFillBackground(true);
    m_picture2->hide();

    // Both the drag and the release of a bar move the frame.
    connect(m_vScroll, &QScrollBar::valueChanged, this,
            [this](int value) { moveFrame1(m_frame1Left, kFrame1ScrollTopBase - value); });
    connect(m_hScroll, &QScrollBar::valueChanged, this,
            [this](int value) { moveFrame1(-value, m_frame1Top); });
}

void MainForm::placePanels() {
    // Frame1 grows into the content area beside the scroll bars shown.
    const QSizeF inside = insideSizeTwips();
    const ScrollBarNeeds needs = scrollBarsFor(inside.width(), inside.height());
    const int thickness = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int roomWidth = m_viewport->width() - (needs.vertical ? thickness : 0);
    const int roomHeight = m_viewport->height() - (needs.horizontal ? thickness : 0);
    const QSizeF frame = frame1SizeFor(pixelsToTwips(roomWidth), pixelsToTwips(roomHeight));
    const PanelRects rects = panelRects(frame.height(), frame.width());
    setTwipsGeometry(m_fraModel, rects.fraModel);
    setTwipsGeometry(m_fraFunction, rects.fraFunction);
    setTwipsGeometry(m_fraChSet, rects.fraChSet);
    setTwipsGeometry(m_tuning->fraTune(), rects.fraTune);
    setTwipsGeometry(m_tuning->tree(), rects.treeViewTune);
    setTwipsGeometry(m_tuning->fraTestCh(), rects.fraTestCh);
    m_fraChSet->placeContents(rowGrowth(frame.height()));
    m_tuning->placeContents(rowGrowth(frame.height()));

    // The frame is as large as the panels it holds.
    QRect extent;
    for (QWidget* panel : {static_cast<QWidget*>(m_fraModel), static_cast<QWidget*>(m_fraFunction),
                           static_cast<QWidget*>(m_fraChSet)}) {
        extent = extent.united(panel->geometry());
    }
    m_frame1->resize(extent.right() + 2, extent.bottom() + 2);
    if (m_frame1Left == 0 && m_frame1Top == 0) {
        moveFrame1(kFrame1HomeLeft, kFrame1HomeTop);
    }
    updateScrollBars();
}

QSizeF MainForm::insideSizeTwips() const {
    const int menuHeight = menuBar()->isVisible() ? menuBar()->height() : 0;
    return {pixelsToTwips(width()), pixelsToTwips(height() - menuHeight)};
}

// The content area has its new size here: the panels follow it.
void MainForm::resizeEvent(QResizeEvent* event) {
    QMainWindow::resizeEvent(event);
    placePanels();
}

// The start size, within the screen's room (a 200 % scale leaves half of
// it). A window cut short gets the vertical bar beside the panels, not over
// them, when the screen is wide enough.
void MainForm::resizeToStartSize() {
    const QSize room = screen()->availableGeometry().size();
    QSize start(twipsToPixels(kMinInsideWidthTwips) + 8,
                twipsToPixels(kMinInsideHeightTwips) + menuBar()->sizeHint().height());
    if (start.height() > room.height()) {
        start.rwidth() += style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    }
    resize(start.boundedTo(room));
}

void MainForm::updateScrollBars() {
    const QSizeF inside = insideSizeTwips();
    const ScrollBarNeeds needs = scrollBarsFor(inside.width(), inside.height());
    const int thickness = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const int viewWidth = m_viewport->width();
    const int viewHeight = m_viewport->height();

    if (needs.vertical) {
        const int barHeight = viewHeight - (needs.horizontal ? thickness : 0);
        m_vScroll->setGeometry(viewWidth - thickness, 0, thickness, barHeight);
        const double overflow =
            kFrame1ScrollTopBase + pixelsToTwips(m_frame1->height()) - pixelsToTwips(barHeight);
        m_vScroll->setMaximum(std::max(0, static_cast<int>(std::ceil(overflow))));
        m_vScroll->show();
        m_vScroll->raise();
    } else {
        m_vScroll->hide();
        moveFrame1(m_frame1Left, kFrame1HomeTop);
    }
    if (needs.horizontal) {
        const int barWidth = viewWidth - (needs.vertical ? thickness : 0);
        m_hScroll->setGeometry(0, viewHeight - thickness, barWidth, thickness);
        const double overflow =
            kFrame1HomeLeft + pixelsToTwips(m_frame1->width()) - pixelsToTwips(barWidth);
        m_hScroll->setMaximum(std::max(0, static_cast<int>(std::ceil(overflow))));
        m_hScroll->show();
        m_hScroll->raise();
    } else {
        m_hScroll->hide();
        moveFrame1(kFrame1HomeLeft, m_frame1Top);
    }
    if (needs.corner()) {
        m_picture2->setGeometry(viewWidth - thickness, viewHeight - thickness, thickness,
                                thickness);
        m_picture2->show();
        m_picture2->raise();
    } else {
        m_picture2->hide();
        moveFrame1(kFrame1HomeLeft, kFrame1HomeTop);
    }
}

void MainForm::moveFrame1(double leftTwips, double topTwips) {
    m_frame1Left = leftTwips;
    m_frame1Top = topTwips;
    m_frame1->move(twipsToPixels(leftTwips), twipsToPixels(topTwips));
}

} // namespace zr310::ui
