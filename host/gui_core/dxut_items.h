#pragma once

#include "dxut_control.h"
#include "scroll_geometry.h"

#include <QDeadlineTimer>

#include <memory>

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

    static constexpr double row_height = 22;   ///< pixels
    static constexpr double scroll_width = 12; ///< pixels
    /// Where the rows are seen; empty while they are not.
    virtual QRectF rows_area() const = 0;
    /// The topmost row that is seen.
    int first_row() const { return m_first; }
    /// The scroll bar of rows that are seen in `area`.
    tarn::ScrollGeometry scroll(const QRectF& area) const;

    bool is_interactive() const override { return true; }
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    /// Chooses the next item that begins with what was typed without a pause.
    bool text_typed(const QString& text, const QString& preedit) override;
    void reset_run_state() override;

protected:
    using CDXUTControl::CDXUTControl;

    /// The row at a place relative to the corner of `area`; -1 beside all rows.
    int row_at(const QRectF& area, QPointF inside) const;
    void scroll_to(int first, const QRectF& area);
    /// A press at a place relative to the corner of `area`; whether it took the thumb of the scroll bar.
    bool press_scroll_bar(const QRectF& area, QPointF inside);
    void drag_scroll_bar(const QRectF& area, QPointF inside);
    bool is_typing() const { return m_typing && !m_typing->pause.hasExpired(); }

    /// The user chooses an item; it is scrolled into view.
    void choose(int index);
    virtual void user_chose(bool changed) = 0;

    int m_first = 0;

private:
    int find_prefix(const QString& prefix, int from) const;

    struct Typing {
        QString text;
        QDeadlineTimer pause;
    };

    std::unique_ptr<Typing> m_typing; ///< null until something is typed
};
