#pragma once

// The printed report of an image: the channel settings, the scan information
// and radio functions, and the tuning values, under fixed Chinese captions.
// The values are the texts the main window shows, in the chosen language.

#include "radio_image.h"
#include "string_table.h"

#include <QColor>
#include <QDateTime>
#include <QFont>
#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QString>

#include <vector>

class QPagedPaintDevice;
class QPaintDevice;
class QPainter;

namespace zr310 {

// One piece of text of the report, in the coordinates of the painted area.
struct PlacedText {
    int page = 0;   // from 0
    QPointF origin; // the left end of the baseline
    QRectF bounds;  // the box the text takes, for checks of the layout
    QString text;
    QFont font;
    QColor colour;
};

struct ReportLayout {
    QSizeF pageSize; // the painted area of a page, in device pixels
    int pageCount = 0;
    std::vector<PlacedText> texts; // in the order they are painted
};

// The font of the report: a CJK-capable family, with fallbacks.
QFont reportFont();

// Places every text for pages of the device's painted area (width() and
// height() in device pixels), measured with the device's font metrics.
// Positions are fractions of the page; what does not fit on a page goes on
// the next. A device with no area gives a layout with no pages.
ReportLayout layoutReport(const RadioImage& image, Language language, const QDateTime& printedAt,
                          const QPaintDevice& device);

// Paints a layout made for this device, starting a new page where it says.
void paintReport(QPainter& painter, QPagedPaintDevice& device, const ReportLayout& layout);

// Lays out and paints the report on the device. False when the device cannot
// be painted on (a printer that does not open) or has no area.
bool printReport(QPagedPaintDevice& device, const RadioImage& image, Language language,
                 const QDateTime& printedAt);

} // namespace zr310
