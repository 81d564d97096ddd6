#pragma once

#include <QColor>
#include <QGuiApplication>
#include <QPoint>
#include <QRect>
#include <QScreen>
#include <QSize>

#include <cmath>
#include <cstdint>

namespace zr310::ui {

// Window geometry is designed in twips: 1440 per inch of the screen's
// logical resolution, as fonts are sized, so 15 per pixel at 96 dpi.
inline double twipsPerPixel() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    const double dpi = screen != nullptr ? screen->logicalDotsPerInchY() : 0;
    return 1440.0 / (dpi > 0 ? dpi : 96.0);
}

inline int twipsToPixels(double twips) {
    return static_cast<int>(std::lround(twips / twipsPerPixel()));
}
inline double pixelsToTwips(int pixels) {
    return pixels * twipsPerPixel();
}

inline QRect twipsRect(double left, double top, double width, double height) {
    return {twipsToPixels(left), twipsToPixels(top), twipsToPixels(width), twipsToPixels(height)};
}

// Colours of the design are written as 0x00BBGGRR values.
constexpr QRgb rgbFromBgr(std::uint32_t bgr) {
    return qRgb(static_cast<int>(bgr & 0xFF), static_cast<int>((bgr >> 8) & 0xFF),
                static_cast<int>((bgr >> 16) & 0xFF));
}
inline QColor colorFromBgr(std::uint32_t bgr) {
    return QColor::fromRgb(rgbFromBgr(bgr));
}

} // namespace zr310::ui
