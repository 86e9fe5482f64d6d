#pragma once

#include "gui_core/menu_outline.h"

#include <QTreeWidget>

#include <optional>

/// The items of a menu as a tree in which their texts can be changed, and their places by dragging.
class CMenuTree : public QTreeWidget {
    Q_OBJECT

public:
    enum class Move { Up, Down, In, Out };

    explicit CMenuTree(QWidget* parent = nullptr);

    /// Shows the menu's items, null for none, with `chosen` (an index in the menu, -1 for none) as the current one. What the
    /// user folded stays folded as long as the outline is the same; a text that is being typed stays.
    void show_menu(const CDXUTMenu* menu, int chosen);
    /// Lets the user type the current item's text.
    void edit_current();

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return sizeHint(); }

Q_SIGNALS:
    // All of them are caused by the user only; -1 is no item.
    void item_chosen(int item);
    void text_changed(int item, const QString& text);
    void delete_pressed();
    void move_pressed(CMenuTree::Move move);
    void item_dropped(int item, tarn::MenuSpot spot);

protected:
    void keyPressEvent(QKeyEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void dragMoveEvent(QDragMoveEvent* event) override;
    void dropEvent(QDropEvent* event) override;
    void startDrag(Qt::DropActions actions) override;

private:
    void rebuild(const CDXUTMenu& menu);
    int end_of(int item) const;
    /// Where the current item would come to stand; nothing within itself.
    std::optional<tarn::MenuSpot> spot_at(QPoint place) const;

    QList<QTreeWidgetItem*> m_rows;          ///< by the items' places in the menu
    QList<int> m_levels;                     ///< for which the tree was built
    std::optional<tarn::MenuSpot> m_dropped; ///< where the drag that goes on ended
};
