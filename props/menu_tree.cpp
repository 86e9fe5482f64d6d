#include "menu_tree.h"

#include "core/language.h"
#include "gui_core/dxut_menu.h"
#include "gui_core/dxut_menu_item.h"

#include <QDrag>
#include <QDropEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMimeData>
#include <QMouseEvent>
#include <QSignalBlocker>

#include <utility>

namespace {

constexpr int visible_rows = 7;

QString shown_text(const tarn::MenuItemState& item)
{
    return item.separator ? QString(6, QChar(0x2500)) : item.text;
}

} // namespace

CMenuTree::CMenuTree(QWidget* parent) : QTreeWidget(parent)
{
    setColumnCount(2);
    setHeaderLabels({tarn::lang(u"文本", u"Text"), tarn::lang(u"快捷键", u"Shortcut")});
    header()->setStretchLastSection(false);
    header()->setSectionResizeMode(0, QHeaderView::Stretch);
    header()->setSectionResizeMode(1, QHeaderView::ResizeToContents);
    setUniformRowHeights(true);
    setEditTriggers(DoubleClicked | EditKeyPressed);
    setDragDropMode(InternalMove);
    connect(this, &QTreeWidget::currentItemChanged, this,
            [this](QTreeWidgetItem* row) { Q_EMIT item_chosen(int(m_rows.indexOf(row))); });
    connect(this, &QTreeWidget::itemChanged, this, [this](QTreeWidgetItem* row, int column) {
        if (column == 0)
            Q_EMIT text_changed(int(m_rows.indexOf(row)), row->text(0));
    });
}

QSize CMenuTree::sizeHint() const
{
    const int row = fontMetrics().height() + 8;
    return {120, header()->sizeHint().height() + visible_rows * row + 2 * frameWidth()};
}

void CMenuTree::rebuild(const CDXUTMenu& menu)
{
    clear();
    m_rows.clear();
    m_levels = QList<int>(menu.levels().begin(), menu.levels().end());
    for (int index = 0; index < int(menu.items().size()); ++index) {
        const int opener = menu.opener_of(index);
        m_rows.append(opener < 0 ? new QTreeWidgetItem(this) : new QTreeWidgetItem(m_rows[opener]));
    }
    expandAll();
}

void CMenuTree::show_menu(const CDXUTMenu* menu, int chosen)
{
    const QSignalBlocker quiet(this);
    setEnabled(menu);
    if (!menu) {
        clear();
        m_rows.clear();
        m_levels.clear();
        return;
    }
    if (m_levels != QList<int>(menu->levels().begin(), menu->levels().end()))
        rebuild(*menu);
    for (int index = 0; index < int(m_rows.size()); ++index) {
        const tarn::MenuItemState& item = menu->items()[index]->item_state();
        QTreeWidgetItem& row = *m_rows[index];
        row.setText(0, shown_text(item));
        row.setText(1, item.separator ? QString() : item.shortcut);
        row.setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsDragEnabled
                     | (item.separator ? Qt::NoItemFlags : Qt::ItemIsEditable | Qt::ItemIsDropEnabled));
        const QPalette::ColorGroup group = item.enabled || item.separator ? QPalette::Normal : QPalette::Disabled;
        for (int column = 0; column < 2; ++column)
            row.setForeground(column, palette().brush(group, QPalette::Text));
    }
    setCurrentItem(m_rows.value(chosen));
    if (chosen < 0)
        clearSelection();
}

void CMenuTree::edit_current()
{
    setFocus();
    if (currentItem())
        editItem(currentItem(), 0);
}

void CMenuTree::keyPressEvent(QKeyEvent* event)
{
    const bool moves = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Delete: Q_EMIT delete_pressed(); return;
    case Qt::Key_Up:
        if (moves)
            return Q_EMIT move_pressed(Move::Up);
        break;
    case Qt::Key_Down:
        if (moves)
            return Q_EMIT move_pressed(Move::Down);
        break;
    case Qt::Key_Right:
        if (moves)
            return Q_EMIT move_pressed(Move::In);
        break;
    case Qt::Key_Left:
        if (moves)
            return Q_EMIT move_pressed(Move::Out);
        break;
    default: break;
    }
    QTreeWidget::keyPressEvent(event);
}

/// A click beside all rows chooses none.
void CMenuTree::mousePressEvent(QMouseEvent* event)
{
    QTreeWidget::mousePressEvent(event);
    if (!itemAt(event->position().toPoint())) {
        setCurrentItem(nullptr);
        clearSelection();
    }
}

int CMenuTree::end_of(int item) const
{
    int end = item + 1;
    while (end < m_levels.size() && m_levels[end] > m_levels[item])
        ++end;
    return end;
}

std::optional<tarn::MenuSpot> CMenuTree::spot_at(QPoint place) const
{
    const int dragged = int(m_rows.indexOf(currentItem()));
    const int row = int(m_rows.indexOf(itemAt(place)));
    tarn::MenuSpot spot{int(m_rows.size()), 0};
    if (row >= 0 && dropIndicatorPosition() == AboveItem)
        spot = {row, m_levels[row]};
    else if (row >= 0)
        spot = {end_of(row), m_levels[row] + (dropIndicatorPosition() == OnItem ? 1 : 0)};
    const bool within_itself = row >= dragged && row < end_of(dragged);
    return dragged < 0 || within_itself ? std::nullopt : std::optional(spot);
}

void CMenuTree::dragMoveEvent(QDragMoveEvent* event)
{
    QTreeWidget::dragMoveEvent(event);
    if (event->isAccepted() && !spot_at(event->position().toPoint()))
        event->ignore();
}

/// The rows follow the menu. The view's own drag would remove those that were moved.
void CMenuTree::startDrag(Qt::DropActions)
{
    m_dropped.reset();
    auto* drag = new QDrag(this);
    drag->setMimeData(model()->mimeData(selectedIndexes()));
    drag->exec(Qt::MoveAction);
    if (const auto spot = std::exchange(m_dropped, {}))
        Q_EMIT item_dropped(int(m_rows.indexOf(currentItem())), *spot);
}

void CMenuTree::dropEvent(QDropEvent* event)
{
    if (event->source() == this)
        m_dropped = spot_at(event->position().toPoint());
    event->setAccepted(m_dropped.has_value());
    stopAutoScroll();
    setState(NoState);
    viewport()->update();
}
