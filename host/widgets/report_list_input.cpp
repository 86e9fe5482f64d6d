// What the user does to a CReportList: mouse, keyboard, header.

#include "widgets/report_list.h"

#include "widgets/report_model.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QDateTime>
#include <QHeaderView>
#include <QMetaMethod>
#include <QMouseEvent>
#include <QPainter>
#include <QScrollBar>

#include <algorithm>
#include <utility>

CReportList::Cell CReportList::cell_at(const QPoint& pos) const
{
    const QModelIndex index = indexAt(pos);
    return index.isValid() ? Cell{index.row(), index.column()} : Cell{};
}

void CReportList::get_item_index_under_mouse(int& row, int& column) const
{
    const Cell cell = m_clicked.row < row_count() ? m_clicked : Cell{};
    row = cell.row;
    column = cell.column;
}

void CReportList::mousePressEvent(QMouseEvent* event)
{
    m_pressed = m_clicked = cell_at(event->position().toPoint());
    m_was_double_click = false;
    m_pressed_at = event->position().toPoint();
    m_pressed_icon = taking_icon_at(m_pressed_at);
    m_may_drag = begins_drag(*event);
    // Several rows are dragged together; which of them a mere click means shows when the button is let go.
    m_selects_on_release = m_may_drag && selected_rows().size() > 1 && selectionModel()->isRowSelected(m_pressed.row);
    // A press that selects nothing is kept from the view altogether: the view would start a drag of selection from it.
    const bool is_for_menu = event->button() == Qt::RightButton;
    m_press_is_ours = is_for_menu || m_pressed.row < 0 || !selects_on_click(m_pressed.column) || m_pressed_icon >= 0
        || m_selects_on_release;
    if (!m_press_is_ours)
        QTableView::mousePressEvent(event);
    else if (is_for_menu)
        select_for_menu(m_pressed.row);
    else if (m_pressed.row < 0)
        clearSelection();
}

void CReportList::select_for_menu(int row)
{
    if (row < 0)
        clearSelection();
    else if (!selectionModel()->isRowSelected(row))
        replace_selection({row}, row);
}

void CReportList::contextMenuEvent(QContextMenuEvent* event)
{
    if (event->reason() != QContextMenuEvent::Keyboard) {
        Q_EMIT menu_requested(cell_at(event->pos()).row, event->globalPos());
        return;
    }
    const int row = get_last_sel_index();
    const QRect cell = visualRect(m_model->index(row, 0));
    Q_EMIT menu_requested(row, viewport()->mapToGlobal(cell.bottomLeft()));
}

void CReportList::mouseMoveEvent(QMouseEvent* event)
{
    const QPoint pos = event->position().toPoint();
    if (m_may_drag && event->buttons() & Qt::LeftButton) {
        if (!m_is_dragging && (pos - m_pressed_at).manhattanLength() >= QApplication::startDragDistance()) {
            m_is_dragging = true;
            viewport()->setCursor(Qt::ClosedHandCursor);
            Q_EMIT drag_started();
        }
        if (m_is_dragging)
            drag_to(pos);
        return;
    }
    if (!(m_press_is_ours && event->buttons()))
        QTableView::mouseMoveEvent(event);
}

void CReportList::mouseReleaseEvent(QMouseEvent* event)
{
    m_clicked = cell_at(event->position().toPoint());
    if (!m_press_is_ours)
        QTableView::mouseReleaseEvent(event);
    m_press_is_ours = false;
    m_may_drag = false;
    if (m_is_dragging)
        return end_drag(true);
    const bool is_click = event->button() == Qt::LeftButton && m_clicked == m_pressed && !m_was_double_click;
    if (is_click && m_pressed_icon >= 0) {
        if (taking_icon_at(event->position().toPoint()) == m_pressed_icon)
            Q_EMIT cell_icon_clicked(m_clicked.row, m_clicked.column, m_pressed_icon);
        return;
    }
    if (m_selects_on_release && is_click)
        replace_selection({m_clicked.row}, m_clicked.row);
    if (is_click)
        Q_EMIT item_clicked(m_clicked.row, m_clicked.column);
}

void CReportList::mouseDoubleClickEvent(QMouseEvent* event)
{
    const Cell cell = cell_at(event->position().toPoint());
    // In a column that toggles something two quick clicks are two clicks.
    if (cell.row < 0 || taking_icon_at(event->position().toPoint()) >= 0 || !selects_on_click(cell.column)) {
        mousePressEvent(event);
        return;
    }
    QTableView::mouseDoubleClickEvent(event);
    m_pressed = m_clicked = cell;
    m_press_is_ours = false;
    m_was_double_click = true;
    if (event->button() == Qt::LeftButton)
        Q_EMIT item_double_clicked(cell.row, cell.column);
}

/// The icon under the mouse that takes clicks, -1 for none.
int CReportList::taking_icon_at(const QPoint& pos) const
{
    const Cell cell = cell_at(pos);
    const auto icons = cell_icons_at(cell.row, cell.column);
    for (size_t i = 0; i < icons.size(); ++i)
        if (icons[i].takes_clicks && cell_icon_rect(cell.row, cell.column, int(i)).contains(pos))
            return int(i);
    return -1;
}

bool CReportList::begins_drag(const QMouseEvent& event) const
{
    return m_rows_draggable && event.button() == Qt::LeftButton && event.modifiers() == Qt::NoModifier
        && m_pressed.row >= 0 && selects_on_click(m_pressed.column) && m_pressed_icon < 0;
}

/// None where nothing can be dropped.
std::optional<CReportList::Drop> CReportList::drop_at(const QPoint& pos) const
{
    const int row = viewport()->rect().contains(pos) ? rowAt(pos.y()) : -1;
    if (row < 0 || selectionModel()->isRowSelected(row) || !accepts_drop_at(get_binded_ptr(row)))
        return {};
    const bool upper_half = pos.y() < rowViewportPosition(row) + rowHeight(row) / 2;
    return Drop{row, upper_half ? DropPlace::Above : DropPlace::Below};
}

void CReportList::drag_to(const QPoint& pos)
{
    QScrollBar& bar = *verticalScrollBar();
    if (pos.y() < 0)
        bar.setValue(bar.value() - bar.singleStep());
    else if (pos.y() >= viewport()->height())
        bar.setValue(bar.value() + bar.singleStep());
    m_drop = drop_at(pos);
    viewport()->setCursor(m_drop ? Qt::ClosedHandCursor : Qt::ForbiddenCursor);
    viewport()->update();
}

void CReportList::end_drag(bool dropped)
{
    m_is_dragging = m_may_drag = false;
    if (!dropped) { // What is left of the press means nothing.
        m_press_is_ours = true;
        m_pressed = {};
    }
    const auto drop = std::exchange(m_drop, {});
    viewport()->unsetCursor();
    viewport()->update();
    if (dropped && drop)
        Q_EMIT rows_dropped(drop->row, drop->place);
}

void CReportList::paint_drop(QPainter& painter) const
{
    const int top = rowViewportPosition(m_drop->row);
    const int y = std::max(1, m_drop->place == DropPlace::Above ? top : top + rowHeight(m_drop->row));
    painter.setPen(QPen(palette().color(QPalette::Highlight), 2));
    painter.drawLine(0, y, viewport()->width(), y);
}

void CReportList::selectionChanged(const QItemSelection& selected, const QItemSelection& deselected)
{
    QTableView::selectionChanged(selected, deselected);
    if (m_code_depth == 0 && !(selected.isEmpty() && deselected.isEmpty()))
        Q_EMIT selection_changed_by_user();
}

void CReportList::on_header_clicked(int column)
{
    // The header has turned its indicator already.
    sort_by_column(column, horizontalHeader()->sortIndicatorOrder() == Qt::AscendingOrder);
}

bool CReportList::hears_delete() const
{
    static const QMetaMethod signal = QMetaMethod::fromSignal(&CReportList::delete_pressed);
    return isSignalConnected(signal);
}

bool CReportList::event(QEvent* event)
{
    // Otherwise a Delete shortcut of the main window would win over the list that has the focus.
    if (event->type() == QEvent::ShortcutOverride && hears_delete()) {
        const auto* key = static_cast<QKeyEvent*>(event);
        if (key->key() == Qt::Key_Delete && key->modifiers() == Qt::NoModifier) {
            event->accept();
            return true;
        }
    }
    return QTableView::event(event);
}

void CReportList::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Delete && event->modifiers() == Qt::NoModifier) {
        if (hears_delete())
            Q_EMIT delete_pressed();
        else
            event->ignore();
        return;
    }
    if (event->key() == Qt::Key_F2 && event->modifiers() == Qt::NoModifier) {
        if (selectionModel()->hasSelection())
            Q_EMIT rename_pressed();
        return;
    }
    if (m_is_dragging && event->key() == Qt::Key_Escape)
        return end_drag(false);
    const bool is_enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (is_enter && open_current_row())
        return;
    QTableView::keyPressEvent(event);
}

void CReportList::closeEditor(QWidget* editor, QAbstractItemDelegate::EndEditHint)
{
    // Tab ends the edit; a view would go on to the next cell and select it.
    QTableView::closeEditor(editor, QAbstractItemDelegate::NoHint);
    m_model->set_editable({});
}

bool CReportList::open_current_row()
{
    static const QMetaMethod signal = QMetaMethod::fromSignal(&CReportList::item_double_clicked);
    const QModelIndex at = currentIndex();
    if (!isSignalConnected(signal) || !selectionModel()->isSelected(at))
        return false;
    Q_EMIT item_double_clicked(at.row(), at.column());
    return true;
}

QModelIndex CReportList::moveCursor(CursorAction action, Qt::KeyboardModifiers modifiers)
{
    // A list is gone through by rows; a table would go to the first and the last column.
    if (row_count() > 0 && action == MoveHome)
        return m_model->index(0, 0);
    if (row_count() > 0 && action == MoveEnd)
        return m_model->index(row_count() - 1, 0);
    if (action == MoveLeft || action == MoveRight)
        return currentIndex();
    return QTableView::moveCursor(action, modifiers);
}

void CReportList::keyboardSearch(const QString& text)
{
    if (!m_use_match_info || row_count() == 0)
        return;
    const qint64 now = QDateTime::currentMSecsSinceEpoch();
    const bool goes_on = now - m_typed_at <= QApplication::keyboardInputInterval();
    m_typed = goes_on ? m_typed + text : text;
    m_typed_at = now;

    // The same letter again and again goes through the rows that begin with it.
    const bool same_letter = std::all_of(m_typed.begin(), m_typed.end(), [&](QChar c) { return c == m_typed.front(); });
    const QString wanted = same_letter ? m_typed.left(1) : m_typed;
    const int current = currentIndex().row();
    const int start = same_letter ? current + 1 : std::max(current, 0);
    for (int i = 0; i < row_count(); ++i) {
        const int row = (start + i) % row_count();
        if (item_caption(row, 0).startsWith(wanted, Qt::CaseInsensitive)) {
            setCurrentIndex(m_model->index(row, 0));
            return;
        }
    }
}

void CReportList::set_hovered_row(int row)
{
    if (row == m_hovered_row)
        return;
    update_row(m_hovered_row);
    m_hovered_row = row;
    update_row(row);
}

bool CReportList::viewportEvent(QEvent* event)
{
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::HoverEnter)
        set_hovered_row(cell_at(static_cast<QHoverEvent*>(event)->position().toPoint()).row);
    else if (event->type() == QEvent::HoverLeave || event->type() == QEvent::Leave)
        set_hovered_row(-1);
    return QTableView::viewportEvent(event);
}

void CReportList::reset()
{
    m_hovered_row = -1;
    m_drop.reset();
    QTableView::reset();
}

void CReportList::changeEvent(QEvent* event)
{
    QTableView::changeEvent(event);
    switch (event->type()) {
    case QEvent::FontChange:
        update_row_height();
        update_header_height();
        break;
    case QEvent::PaletteChange:
    case QEvent::StyleChange:
    case QEvent::ThemeChange: reload_icons(); break;
    default: break;
    }
}

void CReportList::resizeEvent(QResizeEvent* event)
{
    QTableView::resizeEvent(event);
    apply_width_shares();
}

void CReportList::paintEvent(QPaintEvent* event)
{
    QTableView::paintEvent(event);
    QPainter painter(viewport());
    if (m_drop)
        paint_drop(painter);
    if (row_count() > 0 || m_empty_hint.isEmpty())
        return;
    painter.setPen(palette().color(QPalette::PlaceholderText));
    painter.drawText(viewport()->rect().adjusted(8, 8, -8, -8), Qt::AlignCenter | Qt::TextWordWrap, m_empty_hint);
}
