#pragma once

#include "dxut_items.h"

class CDXUTComboBox : public CDXUTItems {
public:
    using CDXUTItems::CDXUTItems;

    bool is_dropped() const { return m_dropped; }

    /// The row under the mouse while the list is down; -1 for none.
    int hot_row() const { return m_hot; }

    void mouse_pressed(QPointF) override { set_dropped(true); }
    bool wheel_turned(double steps) override;
    QRectF popup_rect() const override;
    QRectF rows_area() const override { return popup_rect(); }
    QRectF raised_area() const override;
    void popup_pressed(QPointF in_client) override;
    void popup_moved(QPointF in_client) override;
    void popup_released(QPointF in_client) override;
    void close_popup() override { set_dropped(false); }
    void reset_run_state() override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;

protected:
    void user_chose(bool changed) override;

private:
    void set_dropped(bool dropped);

    bool m_dropped = false;
    bool m_scrolling = false; ///< the mouse went down on the list's scroll bar
    int m_hot = -1;
    QPointF m_mouse; ///< in the client area, when it moved last
};
