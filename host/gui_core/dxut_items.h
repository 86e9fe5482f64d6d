#pragma once

#include "dxut_control.h"
#include "scroll_geometry.h"
#include "text_cache.h"

#include <vector>

/// What the list box and the combo box share: a list of texts of which at most one is selected.
class CDXUTItems : public CDXUTControl {
public:
    const QStringList& items() const { return state<tarn::ItemsState>().items; }
    int GetSize() const { return int(items().size()); }
    int GetNumItems() const { return GetSize(); }
    /// Empty when there is no such item.
    QString GetItem(int index) const { return items().value(index); }
    /// Appends an item, cut to the type's limit.
    void AddItem(const QString& text);
    /// The selection stays on its item; without it, on the one that took its place.
    bool RemoveItem(int index);
    int GetSelectedIndex() const { return state<tarn::ItemsState>().selected; }
    QString GetSelectedItem() const { return GetItem(GetSelectedIndex()); }
    /// -1 selects nothing; false for an index that there is not, and when it is selected already.
    bool SelectItem(int index);

    bool is_interactive() const override { return true; }
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    void reset_run_state() override;
    void state_changed() override;

protected:
    using CDXUTControl::CDXUTControl;

    static constexpr double row_height = 22;   ///< pixels
    static constexpr double scroll_width = 12; ///< pixels

    tarn::TextLook text_look() const;
    /// The rows that fit into `area`, from row m_first on, with a scroll bar when there are more.
    void draw_rows(tarn::DrawContext& context, const QRectF& area, int hovered) const;
    tarn::ScrollGeometry scroll(const QRectF& area) const;
    /// The row at a place relative to the corner of `area`; -1 beside all rows.
    int row_at(const QRectF& area, QPointF inside) const;
    void scroll_to(int first, const QRectF& area);

    /// The user chooses an item; it is scrolled into view.
    void choose(int index);
    virtual void user_chose(bool changed) = 0;
    /// Where the rows are seen; empty while they are not.
    virtual QRectF rows_area() const = 0;

    int m_first = 0; ///< topmost row that is seen

private:
    mutable std::vector<tarn::TextCache> m_texts;
};
