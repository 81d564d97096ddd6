#include "toolbar_icons.h"

#include <QPainter>
#include <QPixmap>
#include <QPolygonF>

#include <functional>

namespace zr310::icons {

namespace {

constexpr int kCanvas = 32; // every picture is drawn on a 32 x 32 grid

const QColor kOutline(0x30, 0x30, 0x30);
const QColor kFolder(0xF0, 0xC0, 0x40);
const QColor kFolderBack(0xD8, 0xA0, 0x28);
const QColor kDisk(0x30, 0x60, 0xB0);
const QColor kPaper(0xFF, 0xFF, 0xFF);
const QColor kMetal(0xB8, 0xB8, 0xC0);
const QColor kRadioBody(0x40, 0x48, 0x50);
const QColor kReadArrow(0x20, 0x90, 0x30);
const QColor kWriteArrow(0xC0, 0x30, 0x20);
const QColor kScreen(0x90, 0xD0, 0xE0);

using Painter = std::function<void(QPainter&)>;

QPixmap render(int size, const Painter& paint) {
    QPixmap pixmap(size, size);
    pixmap.fill(Qt::transparent);
    QPainter p(&pixmap);
    p.setRenderHint(QPainter::Antialiasing);
    p.scale(size / double(kCanvas), size / double(kCanvas));
    paint(p);
    return pixmap;
}

QIcon iconFrom(const Painter& paint) {
    QIcon icon;
    for (int size : {16, 24, 32, 48, 64}) {
        icon.addPixmap(render(size, paint));
    }
    return icon;
}

void outline(QPainter& p, qreal width = 1.2) {
    p.setPen(QPen(kOutline, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
}

// A closed outline through the points, filled with the current brush.
void drawOutline(QPainter& p, std::initializer_list<QPointF> points) {
    p.drawPolygon(QPolygonF(QList<QPointF>(points)));
}

void paintOpen(QPainter& p) {
    outline(p);
    p.setBrush(kFolderBack);
    drawOutline(p, {{3, 8}, {12, 8}, {14, 11}, {27, 11}, {27, 26}, {3, 26}});
    p.setBrush(kFolder);
    drawOutline(p, {{3, 26}, {8, 15}, {31, 15}, {27, 26}});
}

void paintSave(QPainter& p) {
    outline(p);
    p.setBrush(kDisk);
    drawOutline(p, {{4, 4}, {24, 4}, {28, 8}, {28, 28}, {4, 28}});
    p.setBrush(kPaper);
    p.drawRect(QRectF(9, 4, 14, 9));
    p.setBrush(kMetal);
    p.drawRect(QRectF(18, 5.5, 3, 6));
    p.setBrush(kPaper);
    p.drawRect(QRectF(8, 17, 16, 11));
    p.setPen(QPen(kMetal, 1));
    for (qreal y : {20.5, 23.5}) {
        p.drawLine(QPointF(10, y), QPointF(22, y));
    }
}

void paintPrint(QPainter& p) {
    outline(p);
    p.setBrush(kPaper);
    p.drawRect(QRectF(9, 3, 14, 10));
    p.setBrush(kMetal);
    p.drawRoundedRect(QRectF(3, 12, 26, 11), 2, 2);
    p.setBrush(kPaper);
    p.drawRect(QRectF(8, 19, 16, 10));
    p.setPen(QPen(kOutline, 1));
    for (qreal y : {22.5, 25.5}) {
        p.drawLine(QPointF(10, y), QPointF(22, y));
    }
    p.setPen(Qt::NoPen);
    p.setBrush(kReadArrow);
    p.drawEllipse(QPointF(25, 15.5), 1.3, 1.3);
}

// A handheld radio standing on the left half of the picture.
void paintRadio(QPainter& p, qreal x) {
    outline(p);
    p.setBrush(kRadioBody);
    p.drawRect(QRectF(x + 2.5, 2, 2, 8)); // antenna
    p.drawRoundedRect(QRectF(x, 9, 11, 20), 2, 2);
    p.setBrush(kScreen);
    p.drawRect(QRectF(x + 2, 12, 7, 5));
    p.setPen(Qt::NoPen);
    p.setBrush(kMetal);
    for (int row = 0; row < 3; ++row) {
        for (int col = 0; col < 2; ++col) {
            p.drawEllipse(QPointF(x + 3.5 + col * 4, 20 + row * 2.8), 1.0, 1.0);
        }
    }
}

void arrow(QPainter& p, QPointF from, QPointF to, const QColor& colour) {
    p.setPen(QPen(colour, 3, Qt::SolidLine, Qt::RoundCap));
    const QPointF d = to - from;
    const qreal dir = d.x() >= 0 ? 1 : -1;
    p.drawLine(from, to - QPointF(3 * dir, 0));
    p.setPen(Qt::NoPen);
    p.setBrush(colour);
    drawOutline(p, {to, to - QPointF(6 * dir, 5), to - QPointF(6 * dir, -5)});
}

void paintRead(QPainter& p) {
    paintRadio(p, 2);
    arrow(p, QPointF(15, 19), QPointF(30, 19), kReadArrow); // radio to computer
}

void paintWrite(QPainter& p) {
    paintRadio(p, 19);
    arrow(p, QPointF(2, 19), QPointF(17, 19), kWriteArrow); // computer to radio
}

void paintPort(QPainter& p) {
    outline(p);
    // A nine-pin serial plug seen from the front, with its cable.
    p.setBrush(kMetal);
    drawOutline(p, {{3, 9}, {29, 9}, {26, 21}, {6, 21}});
    p.setPen(Qt::NoPen);
    p.setBrush(kOutline);
    for (int i = 0; i < 5; ++i) {
        p.drawEllipse(QPointF(8 + i * 4, 13), 1.2, 1.2);
    }
    for (int i = 0; i < 4; ++i) {
        p.drawEllipse(QPointF(10 + i * 4, 17), 1.2, 1.2);
    }
    p.setPen(QPen(kDisk, 3, Qt::SolidLine, Qt::RoundCap));
    p.drawLine(QPointF(16, 22), QPointF(16, 30));
}

void paintApplication(QPainter& p) {
    paintRadio(p, 10.5);
}

} // namespace

QIcon toolbarIcon(ToolbarIcon which) {
    switch (which) {
    case ToolbarIcon::Open:
        return iconFrom(paintOpen);
    case ToolbarIcon::Save:
        return iconFrom(paintSave);
    case ToolbarIcon::Print:
        return iconFrom(paintPrint);
    case ToolbarIcon::Read:
        return iconFrom(paintRead);
    case ToolbarIcon::Write:
        return iconFrom(paintWrite);
    case ToolbarIcon::Port:
        return iconFrom(paintPort);
    }
    return {};
}

QIcon applicationIcon() {
    return iconFrom(paintApplication);
}

} // namespace zr310::icons
