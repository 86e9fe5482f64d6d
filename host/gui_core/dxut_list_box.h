#pragma once

#include "dxut_items.h"

class CDXUTListBox : public CDXUTItems {
public:
    using CDXUTItems::CDXUTItems;

    QRectF rows_area() const override { return rows(rect()); }
    void mouse_pressed(QPointF inside) override;
    void mouse_dragged(QPointF inside) override;
    bool wheel_turned(double steps) override;
    void double_clicked(QPointF inside) override;

protected:
    void user_chose(bool) override { raise(EVENT_LISTBOX_CLICKED); }

private:
    QRectF rows(const QRectF& area) const;

    bool m_scrolling = false;
};
