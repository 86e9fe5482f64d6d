#pragma once

#include "control_class.h"
#include "control_state.h"
#include "core/model_object.h"
#include "skin.h"

#include <QRectF>

class CDXUTDialog;
class CGuiCore;

namespace tarn {
struct DrawContext;
struct SelectionRecord;
} // namespace tarn

/// A control of the interface. Places and sizes are pixels of its dialog's client area; they are read as they stand on
/// the present screen, after anchoring.
class CDXUTControl : public tarn::ModelObject {
public:
    int GetType() const { return control_state().type; }
    const QString& name() const { return control_state().name; }
    bool set_name(const QString& name);
    /// Null while the control is not part of the scene.
    CDXUTDialog* dialog() const;

    QRectF rect() const;
    float x() const { return float(rect().x()); }
    float y() const { return float(rect().y()); }
    float width() const { return float(rect().width()); }
    float height() const { return float(rect().height()); }
    /// In pixels of the screen; empty without a dialog.
    QRectF screen_rect() const;
    bool SetLocation(float x, float y);
    /// Negative sizes count as 0.
    bool SetSize(float width, float height);
    int align_type() const { return control_state().align_type; }
    /// The control stays where it is; from now on it keeps that distance to the sides that `anchor` (0 to 9) names.
    bool set_align_type(int anchor);

    bool GetVisible() const { return control_state().visible; }
    bool SetVisible(bool visible);
    bool GetEnabled() const { return control_state().enabled; }
    bool SetEnabled(bool enabled);
    bool locked() const { return control_state().locked; }
    bool set_locked(bool locked);
    quint32 color_tag() const { return control_state().color_tag; }
    bool set_color_tag(quint32 argb);

    /// Draws the control into `area`, pixels of the client area.
    virtual void draw(tarn::DrawContext& context, const QRectF& area) const = 0;
    tarn::VisualState visual_state() const;
    /// Whether the control takes the mouse and the keyboard while the interface runs.
    virtual bool is_interactive() const { return false; }
    /// A click, or Space, while the interface runs.
    virtual void clicked() {}
    /// The mouse went down in the control, and moved while it was down. Places are pixels from the control's corner.
    virtual void mouse_pressed(QPointF) {}
    virtual void mouse_dragged(QPointF) {}
    /// True when the control took the wheel; positive steps go up.
    virtual bool wheel_turned(double) { return false; }
    /// A key, or text from the keyboard or an input method, while the control has the focus. `preedit` is what the
    /// input method is about to put in. True when the control took it.
    virtual bool key_pressed(int, Qt::KeyboardModifiers) { return false; }
    virtual bool text_typed(const QString&, const QString&) { return false; }
    /// Where the next character goes, in pixels of the client area; empty for a control that takes no text.
    virtual QRectF caret_rect() const { return {}; }
    /// Where the control takes the mouse beyond its frame, in pixels of the client area: a list that is dropped down.
    virtual QRectF popup_rect() const { return {}; }
    /// Draws that, above all other controls.
    virtual void draw_popup(tarn::DrawContext&) const {}
    virtual void close_popup() {}

    const char* class_name() const override;
    bool is_attached() const override;
    tarn::Value property(const tarn::FieldBase& field) const override;
    tarn::Status set_property(const tarn::FieldBase& field, const tarn::Value& value) override;
    void state_changed() override;

protected:
    CDXUTControl(tarn::Journal& journal, CGuiCore& core, tarn::ControlState* state);
    const tarn::ControlState& control_state() const { return state<tarn::ControlState>(); }
    CGuiCore& core() const { return m_core; }

private:
    friend class CDXUTDialog;
    friend class CGuiCore;
    friend struct tarn::SelectionRecord;
    bool set_rect(const QRectF& rect);

    CGuiCore& m_core;
    CDXUTDialog* m_dialog = nullptr; ///< kept while that dialog is away from the scene
    bool m_selected = false;         ///< in the core's selection
    mutable int m_layer_guess = -1;  ///< where the dialog last found the control in its list; the dialog checks it
    QRectF m_last_rect;              ///< where the control was drawn last, to be redrawn when it moves
};
