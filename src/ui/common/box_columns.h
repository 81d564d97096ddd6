#pragma once

#include "sizes.h"

#include <QWidget>

#include <span>

namespace zr310::ui {

// Lays out the columns of boxes that stand beside a grid: a legend over
// each column at the height of the grid's heading row, then one widget per
// column for each grid row, centred in its cell. `boxes` holds the rows one
// after another, `legends.size()` widgets a row.
inline void placeBoxColumns(std::span<QWidget* const> legends, std::span<QWidget* const> boxes,
                            QPoint topLeft, int columnWidth, int headerHeight, int rowHeight) {
    const int columns = static_cast<int>(legends.size());
    for (int k = 0; k < columns; ++k) {
        legends[toIndex(k)]->setGeometry(topLeft.x() + k * columnWidth, topLeft.y(), columnWidth,
                                         headerHeight);
    }
    for (int i = 0; i < static_cast<int>(boxes.size()); ++i) {
        const int row = i / columns;
        const int column = i % columns;
        QWidget* box = boxes[toIndex(i)];
        const QSize hint = box->sizeHint();
        box->setGeometry(topLeft.x() + column * columnWidth + (columnWidth - hint.width()) / 2,
                         topLeft.y() + headerHeight + row * rowHeight +
                             (rowHeight - hint.height()) / 2,
                         hint.width(), hint.height());
    }
}

} // namespace zr310::ui
