#pragma once

#include <QRectF>
#include <QSizeF>

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
