#pragma once

#include "gui_core/menu_layout.h"
#include "gui_draw/element_cache.h"

#include <QWidget>

#include <vector>

class CGuiCore;
class CDXUTMenu;

/// A live picture of a menu as it will be seen: its outermost list, and beside it those on the way to one item. It keeps
/// room for all submenus, so that nothing moves or grows under the mouse when one is opened.
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
        QPointF corner; ///< in pixels of the interface
        int highlighted;
    };
    double scale() const;
    QPointF origin() const;

    tarn::ElementCache m_elements;
    const CGuiCore* m_core = nullptr;
    const CDXUTMenu* m_menu = nullptr;
    std::vector<Panel> m_panels;
    QSizeF m_extent; ///< of all lists, wherever they are opened; pixels of the interface
};
