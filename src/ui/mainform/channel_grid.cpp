#include "channel_grid.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyledItemDelegate>

#include <set>

namespace zr310::ui {

namespace {

// Selected cells get a light tint instead of the selection colour, so the
// colours of the cell words stay readable; the current cell gets a frame.
class CellDelegate : public QStyledItemDelegate {
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    void paint(QPainter* painter, const QStyleOptionViewItem& option,
               const QModelIndex& index) const override {
        QStyleOptionViewItem plain(option);
        const bool selected = option.state & QStyle::State_Selected;
        plain.state &= ~(QStyle::State_Selected | QStyle::State_HasFocus);
        if (selected && !index.data(Qt::BackgroundRole).isValid()) {
            painter->fillRect(option.rect, selectionTint(option.palette));
        }
        QStyledItemDelegate::paint(painter, plain, index);

        const auto* view = qobject_cast<const QAbstractItemView*>(option.widget);
        if (view != nullptr && view->currentIndex() == index) {
            const bool focused = view->hasFocus();
            QPen pen(option.palette.color(QPalette::Highlight), focused ? 2 : 1);
            pen.setJoinStyle(Qt::MiterJoin);
            painter->save();
            painter->setPen(pen);
            painter->setBrush(Qt::NoBrush);
            painter->drawRect(QRectF(option.rect).adjusted(1, 1, -1, -1));
            painter->restore();
        }
    }

private:
    // A quarter of the selection colour over the cell colour.
    static QColor selectionTint(const QPalette& palette) {
        const QColor high = palette.color(QPalette::Highlight);
        const QColor base = palette.color(QPalette::Base);
        const auto mix = [](int a, int b) { return (a + 3 * b) / 4; };
        return QColor(mix(high.red(), base.red()), mix(high.green(), base.green()),
                      mix(high.blue(), base.blue()));
    }
};

bool isEditCell(int row, int column) {
    return row >= 1 && column >= 1;
}

} // namespace

ChannelGrid::ChannelGrid(int rows, int columns, QWidget* parent)
    : QTableWidget(rows, columns, parent) {
    setItemDelegate(new CellDelegate(this));
    setSelectionMode(QAbstractItemView::ExtendedSelection);
    setSelectionBehavior(QAbstractItemView::SelectItems);
    setTabKeyNavigation(true);
}

QList<int> ChannelGrid::selectedRows() const {
    std::set<int> rows;
    for (const QModelIndex& index : selectionModel()->selectedIndexes()) {
        if (isEditCell(index.row(), index.column())) {
            rows.insert(index.row());
        }
    }
    if (rows.empty() && currentRow() >= 1) {
        rows.insert(currentRow());
    }
    return QList<int>(rows.begin(), rows.end());
}

QModelIndex ChannelGrid::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers) {
    const QModelIndex current = currentIndex();
    QModelIndex next = QTableWidget::moveCursor(action, modifiers);
    if (!next.isValid()) {
        return next;
    }
    int row = next.row();
    int column = next.column();
    // Shift+Tab from the first channel cell of a row goes to the end of the
    // row above, past the label column.
    if (action == MovePrevious && column == 0 && current.isValid()) {
        row = current.row() > 1 ? current.row() - 1 : 1;
        column = current.row() > 1 ? columnCount() - 1 : 1;
    }
    row = std::max(row, 1);
    column = std::max(column, 1);
    return model()->index(row, column);
}

void ChannelGrid::keyPressEvent(QKeyEvent* event) {
    // Tab moves between the cells; Ctrl+Tab leaves the grid, as in a text
    // editor: forward to the boxes beside it, backward to the option lists.
    if ((event->key() == Qt::Key_Tab || event->key() == Qt::Key_Backtab) &&
        (event->modifiers() & Qt::ControlModifier)) {
        QWidget::focusNextPrevChild(event->key() == Qt::Key_Tab &&
                                    !(event->modifiers() & Qt::ShiftModifier));
        return;
    }
    const QModelIndex current = currentIndex();
    const bool onCell = current.isValid() && isEditCell(current.row(), current.column());
    const bool plain = !(event->modifiers() & (Qt::ControlModifier | Qt::AltModifier));
    if (onCell && plain) {
        switch (event->key()) {
        case Qt::Key_Return:
        case Qt::Key_Enter:
        case Qt::Key_F2:
        case Qt::Key_Space:
            emit cellActivated(current.row(), current.column());
            return;
        case Qt::Key_Right:
            if (current.column() == columnCount() - 1 &&
                !(event->modifiers() & Qt::ShiftModifier)) {
                emit leftToTheRight(current.row());
                return;
            }
            break;
        default:
            break;
        }
        const QString text = event->text();
        if (text.size() == 1 && (text.at(0).isDigit() || text.at(0) == QLatin1Char('.'))) {
            emit cellTyped(current.row(), current.column(), text);
            return;
        }
    }
    QTableWidget::keyPressEvent(event);
}

void ChannelGrid::mousePressEvent(QMouseEvent* event) {
    m_pressed = indexAt(event->position().toPoint());
    // A row label selects its channel's row; with Shift, the rows from the
    // current one.
    if (m_pressed.isValid() && m_pressed.column() == 0 && m_pressed.row() >= 1 &&
        event->button() == Qt::LeftButton) {
        const int row = m_pressed.row();
        const int from =
            (event->modifiers() & Qt::ShiftModifier) && currentRow() >= 1 ? currentRow() : row;
        clearSelection();
        setRangeSelected(QTableWidgetSelectionRange(std::min(from, row), 1, std::max(from, row),
                                                    columnCount() - 1),
                         true);
        selectionModel()->setCurrentIndex(model()->index(row, 1), QItemSelectionModel::NoUpdate);
        m_pressed = QModelIndex();
        return;
    }
    QTableWidget::mousePressEvent(event);
}

void ChannelGrid::mouseReleaseEvent(QMouseEvent* event) {
    const QModelIndex released = indexAt(event->position().toPoint());
    const QModelIndex pressed = m_pressed;
    m_pressed = QModelIndex();
    const bool plainClick = event->button() == Qt::LeftButton &&
                            !(event->modifiers() & (Qt::ShiftModifier | Qt::ControlModifier));
    QTableWidget::mouseReleaseEvent(event);
    if (plainClick && pressed.isValid() && pressed == released &&
        isEditCell(pressed.row(), pressed.column())) {
        emit cellActivated(pressed.row(), pressed.column());
    }
}

} // namespace zr310::ui
