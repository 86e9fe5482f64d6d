#pragma once

#include "menu_layout.h"

#include <QString>

#include <memory>
#include <vector>

class CDXUTMenu;
class CDXUTMenuItem;
class CGuiCore;

namespace tarn {

class ModelObject;

/// A menu that is open in the running interface: its lists on the screen, and what mouse and keyboard do in them. Places
/// are pixels of the screen. What choosing an item does is the caller's business.
class OpenMenu {
public:
    /// A list of items that is open.
    struct Panel {
        MenuList list;
        QRectF area;          ///< on the screen
        double scrolled = 0;  ///< pixels of the list above the area
        int highlighted = -1; ///< row; -1 for none

        QRectF row_area(int row) const; ///< on the screen, what is scrolled away included
        bool can_scroll() const { return list.size.height() > area.height(); }
    };

    /// `owner` is what the menu was opened for; null for nothing.
    OpenMenu(CGuiCore& core, CDXUTMenu& menu, ModelObject* owner, QPointF place);

    CDXUTMenu& menu() const { return m_menu; }
    /// What the menu was opened for; null when that is gone.
    std::shared_ptr<ModelObject> owner() const { return m_owner.lock(); }
    /// The outermost list first, then the submenu that is open in it, and so on.
    const std::vector<Panel>& panels() const { return m_panels; }
    bool contains(QPointF place) const { return panel_at(place) >= 0; }
    /// The item whose row is there; null for none.
    CDXUTMenuItem* item_at(QPointF place) const;
    QRectF bounds() const;

    void mouse_moved(QPointF place);
    /// The item that was chosen by letting go of the mouse there; null for none.
    CDXUTMenuItem* mouse_released(QPointF place);
    /// Positive steps go up.
    void wheel_turned(QPointF place, double steps);
    struct Answer {
        CDXUTMenuItem* chosen = nullptr;
        bool closes = false; ///< the whole menu
    };
    Answer key_pressed(int key);
    /// Goes to the next item that begins so.
    void text_typed(const QString& text);
    /// The menu's look or items changed.
    void follow_menu();

private:
    int panel_at(QPointF place) const;
    static int row_at(const Panel& panel, QPointF place);
    void open_panel(int opener, QPointF corner, const QRectF& avoided);
    void open_submenu(bool highlight_first);
    void close_from(std::size_t panel);
    void highlight(std::size_t panel, int row);
    void step(int from, int by);
    void show_row(Panel& panel, int row);
    void scroll(Panel& panel, double to);
    bool heads_for_submenu(QPointF place) const;
    CDXUTMenuItem& item_of(const Panel& panel, int row) const;
    bool can_be_chosen(const Panel& panel, int row) const;
    CDXUTMenuItem* choose(std::size_t panel, int row, bool by_key);
    void redraw() const;

    CGuiCore& m_core;
    CDXUTMenu& m_menu;
    std::weak_ptr<ModelObject> m_owner;
    QPointF m_corner;
    QPointF m_mouse;
    std::vector<Panel> m_panels;
};

} // namespace tarn
