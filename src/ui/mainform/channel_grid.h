#pragma once

#include <QTableWidget>

namespace zr310::ui {

// The channel grid `channelGrid`: a header row and a label column that never
// take the current cell, cells that can be selected with the mouse and with
// Shift + arrows, and the keys of a spreadsheet. The grid only reports what
// the user asks of a cell; the channel panel decides what it does.
class ChannelGrid : public QTableWidget {
    Q_OBJECT
public:
    ChannelGrid(int rows, int columns, QWidget* parent = nullptr);

    // The channel rows (1..16) with a selected cell, top to bottom; the
    // current row when nothing is selected.
    QList<int> selectedRows() const;

signals:
    // A click without Shift or Ctrl, or Enter, F2 or Space on the current cell.
    void cellActivated(int row, int column);
    // A character typed on a cell ("145", "." ...), for the frequency box.
    void cellTyped(int row, int column, const QString& text);
    // Right on the last column: on to the boxes beside the row.
    void leftToTheRight(int row);

protected:
    // Typing on a cell is for the frequency box, not a search of the texts.
    void keyboardSearch(const QString&) override {}
    QModelIndex moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) override;
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;

private:
    QPersistentModelIndex m_pressed; // a click is a press and a release on one cell
};

} // namespace zr310::ui
