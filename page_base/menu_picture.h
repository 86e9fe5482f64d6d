#pragma once

#include "gui_core/menu_layout.h"
#include "gui_draw/element_cache.h"

#include <QWidget>

#include <vector>

class CGuiCore;
class CDXUTMenu;

/// A live picture of a menu as it will be seen: its outermost list, and beside it those on the way to one item. It keeps
/// room for all submenus, so that nothing moves or grows under the mouse when one is opened; in a narrow picture they cover
/// a part of the list before them.
class CMenuPicture : public QWidget {
    Q_OBJECT

public:
    explicit CMenuPicture(QWidget* parent = nullptr);

    /// Draws the menu, whose item `item` stands out; null and -1 for none. Neither is kept beyond a change of the model,
    /// after which this has to be called again.
    void show_menu(const CGuiCore* core, const CDXUTMenu* menu, int item = -1);

    QSize sizeHint() const override;

Q_SIGNALS:
    /// The user clicked a row: the index of its item.
    void item_clicked(int item);

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    struct Panel {
        tarn::MenuList list;
        double top; ///< in pixels of the interface
        int highlighted;
    };
    QSizeF room() const;
    double scale() const;
    QPointF origin() const;
    /// Where each list is, pixels of the interface.
    std::vector<QRectF> areas() const;

    tarn::ElementCache m_elements;
    const CGuiCore* m_core = nullptr;
    const CDXUTMenu* m_menu = nullptr;
    std::vector<Panel> m_panels;
    // Of all lists, wherever they are opened; pixels of the interface.
    QSizeF m_extent;          ///< with all of them side by side
    double m_least_width = 0; ///< with each covering what is before it but for a margin
};
