#pragma once

#include "dxut_static.h"
#include "line_editor.h"

/// A field for one line of text.
class CDXUTEditBox : public CDXUTStatic {
public:
    CDXUTEditBox(tarn::Journal& journal, CGuiCore& core);

    const tarn::LineEditor& editor() const { return m_editor; }

    tarn::VisualState visual_state() const override;
    void draw(tarn::DrawContext& context, const QRectF& area) const override;
    bool is_interactive() const override { return true; }
    void mouse_pressed(QPointF inside) override;
    void mouse_dragged(QPointF inside) override;
    bool key_pressed(int key, Qt::KeyboardModifiers modifiers) override;
    bool text_typed(const QString& text, const QString& preedit) override;
    QRectF caret_rect() const override;
    void reset_run_state() override;
    void state_changed() override;

private:
    QRectF text_area(const QRectF& frame) const;
    QString shown_text() const;
    double x_of(int position) const;
    int position_at(double x) const;
    void after_edit(bool changed);
    void scroll_to_caret();

    tarn::LineEditor m_editor;
    double m_scroll = 0; ///< pixels of the text that are left of the field
};
