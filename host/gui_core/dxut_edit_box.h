#pragma once

#include "dxut_static.h"
#include "line_editor.h"

/// A field for one line of text.
class CDXUTEditBox : public CDXUTStatic {
public:
    using CDXUTStatic::CDXUTStatic;

    const tarn::LineEditor& editor() const { return m_editor; }

    /// Where the text is seen in a box with that frame.
    QRectF text_area(const QRectF& frame) const;
    /// What is laid out of the text, with what the input method is about to put in.
    QString shown_text() const;
    /// Where a position of the text is in that.
    int place_in_shown(int position) const;
    /// Pixels of it that are left of the field.
    double scroll() const { return m_scroll; }

    tarn::VisualState visual_state() const override;
    bool is_interactive() const override { return true; }
    void mouse_pressed(QPointF inside) override;
    void mouse_dragged(QPointF inside) override;
    void double_clicked(QPointF inside) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    bool text_typed(const QString& text, const QString& preedit) override;
    QRectF caret_rect() const override;
    void reset_run_state() override;
    void state_changed() override;

private:
    int laid_out_units() const;
    double x_in_shown(int place) const;
    int position_at(QPointF inside, bool on_character = false) const;
    void after_edit(bool changed);
    void scroll_to_caret();

    tarn::LineEditor m_editor;
    /// Where the laid-out part of the text begins: a text may be a million letters long, of which a hundred show.
    int m_first = 0;
    double m_scroll = 0;  ///< pixels of that part that are left of the field
    bool m_drags = false; ///< moves of the mouse select, until it goes up
};
