#pragma once

#include <QRectF>
#include <QSizeF>

#include <algorithm>

namespace zr310::ui {

// Home position and start size of the content frame `Frame1`, in twips.
inline constexpr double kFrame1HomeLeft = 17.103;
inline constexpr double kFrame1HomeTop = 263.861;
inline constexpr double kFrame1StartHeight = 4250;
inline constexpr double kFrame1StartWidth = 6835;
// Moving the vertical bar measures from this top, not from the home top.
inline constexpr double kFrame1ScrollTopBase = 230.75;

// Below these inside sizes of the window the scroll bars are shown.
inline constexpr double kMinInsideHeightTwips = 9000;
inline constexpr double kMinInsideWidthTwips = 12000;

struct ScrollBarNeeds {
    bool vertical = false;
    bool horizontal = false;
    bool corner() const { return vertical && horizontal; }
    bool operator==(const ScrollBarNeeds&) const = default;
};

constexpr ScrollBarNeeds scrollBarsFor(double insideWidthTwips, double insideHeightTwips) {
    return {insideHeightTwips < kMinInsideHeightTwips, insideWidthTwips < kMinInsideWidthTwips};
}

// A window larger than the start size gives `Frame1` more room: its H and W
// grow so that the panels, placed by their ratios, reach the far sides of
// the window's content area (view width and height in twips, below the
// toolbar); never below the start size. The panels reach W * 350/200 across
// and H * 362/200 down from the home position.
inline constexpr double kFrame1EdgeTwips = 30;

inline QSizeF frame1SizeFor(double viewWidth, double viewHeight) {
    const double w = (viewWidth - kFrame1HomeLeft - kFrame1EdgeTwips) * 200 / 350;
    const double h = (viewHeight - kFrame1HomeTop - kFrame1EdgeTwips) * 200 / 362;
    return {std::max(w, kFrame1StartWidth), std::max(h, kFrame1StartHeight)};
}

// The grids' rows grow with H, up to twice their start height.
inline double rowGrowth(double h) {
    return std::min(h / kFrame1StartHeight, 2.0);
}

// The panels of `Frame1`, placed from its height h and width w (twips), left
// and top relative to `Frame1`.
struct PanelRects {
    QRectF fraModel, fraFunction, fraChSet, fraTune, treeViewTune, fraTestCh;
};

constexpr PanelRects panelRects(double h, double w) {
    PanelRects r;
    r.fraModel = QRectF(kFrame1HomeLeft, h / 300, w * 75 / 200, h * 90 / 200);
    r.fraFunction = QRectF(w * 79 / 200, h / 300, w * 271 / 200, h * 90 / 200);
    r.fraChSet = QRectF(kFrame1HomeLeft, h * 92 / 200, w * 350 / 200, h * 270 / 200);
    r.fraTune = QRectF(w * 95 / 200, h * 40 / 200, w * 150 / 200, h);
    // The tuning tree stands left of the item frame and the test channel
    // frame takes the item frame's place when no item is being adjusted.
    r.treeViewTune = QRectF(kFrame1HomeLeft, h * 40 / 200, w * 88 / 200, h);
    r.fraTestCh = QRectF(w * 95 / 200, h * 40 / 200, w * 255 / 200, h * 235 / 200);
    return r;
}

} // namespace zr310::ui
