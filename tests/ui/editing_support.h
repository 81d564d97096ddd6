#pragma once

// Helpers of the editing suites: a window with a few channels set up,
// clicks and keys on the grid, and the bytes an action changed.

#include "bands.h"
#include "channel.h"
#include "ui_test_support.h"

#include <QCheckBox>
#include <QComboBox>
#include <QMap>

// The bytes that differ between two images, "107=10 380=08" (linear offset
// and new value, hex), so a table row can say exactly what an edit wrote.
inline QString changedBytes(const zr310::RadioImage& before, const zr310::RadioImage& after) {
    QStringList changes;
    for (std::size_t i = 0; i < zr310::RadioImage::kSize; ++i) {
        if (before[i] != after[i]) {
            changes << QStringLiteral("%1=%2")
                           .arg(i, 3, 16, QLatin1Char('0'))
                           .arg(after[i], 2, 16, QLatin1Char('0'))
                           .toUpper();
        }
    }
    return changes.join(' ');
}

// A window on the 136 - 174MHz band whose channels 1..4 are open and may
// transmit, receiving on 145.5125 MHz and sending on 146.0 MHz, tones OFF.
inline std::unique_ptr<zr310::ui::MainForm> editingWindow(const QString& locale = "en_US") {
    using namespace zr310;
    auto window = startWindow(locale);
    RadioImage& image = window->image();
    setBand(image, 2);
    for (int n = 1; n <= 4; ++n) {
        auto channel = ChannelRecord::channel(image, n);
        channel.setOpen(true);
        channel.setTxAllowed(true);
        channel.setFrequency(Side::Receive, 145.5125);
        channel.setFrequency(Side::Transmit, 146.0);
    }
    window->ReFlashData();
    window->activateWindow();
    if (!QTest::qWaitForWindowActive(window.get())) {
        qWarning("the window did not become active");
    }
    return window;
}

inline QTableWidget* channelGrid(QWidget* window) {
    return child<QTableWidget>(window, "channelGrid");
}

inline void clickCell(QWidget* window, int row, int column,
                      Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTableWidget* grid = channelGrid(window);
    const QRect rect = grid->visualItemRect(grid->item(row, column));
    QTest::mouseClick(grid->viewport(), Qt::LeftButton, modifiers, rect.center());
}

inline QCheckBox* channelBox(QWidget* window, const char* name, int channel) {
    return child<QCheckBox>(window, QString::fromLatin1(name) + '_' + QString::number(channel - 1));
}

inline QLineEdit* inputBox(QWidget* window) {
    return child<QLineEdit>(window, "txtInputBox");
}

// Types into the frequency box a click on the cell opens, then Enter.
inline void typeFrequency(QWidget* window, int row, int column, const QString& typed) {
    clickCell(window, row, column);
    QTest::keyClicks(inputBox(window), typed);
    QTest::keyClick(inputBox(window), Qt::Key_Return);
}

// Makes `row`/`column` the grid's current cell with the keyboard focus.
inline void focusCell(QWidget* window, int row, int column) {
    QTableWidget* grid = channelGrid(window);
    grid->setFocus();
    grid->setCurrentCell(row, column);
}

// The colours of cells 1..8 of a row as letters: N the grid's text, g the
// system's grey text, G green 0x608030, R dark red 0x000090, M mid grey
// 0x808080 (0x00BBGGRR), ? any other.
inline QString rowColours(QWidget* window, int row) {
    QTableWidget* grid = channelGrid(window);
    const QColor grey =
        grid->parentWidget()->palette().color(QPalette::Disabled, QPalette::WindowText);
    // Inserted in order: N wins should the grid's text be the grey.
    const QMap<QRgb, QChar> letters{{qRgb(0x30, 0x80, 0x60), 'G'},
                                    {qRgb(0x90, 0, 0), 'R'},
                                    {qRgb(0x80, 0x80, 0x80), 'M'},
                                    {grey.rgb(), 'g'},
                                    {grid->palette().color(QPalette::Text).rgb(), 'N'}};
    QString colours;
    for (int column = 1; column <= 8; ++column) {
        colours += letters.value(cell(window, row, column)->foreground().color().rgb(), '?');
    }
    return colours;
}
