#pragma once

#include "control_class.h"
#include "control_state.h"
#include "core/model_object.h"
#include "draw_slot.h"
#include "gui_event.h"
#include "look.h"

#include <QPolygonF>
#include <QRectF>
#include <QTransform>

#include <algorithm>

class CDXUTDialog;
class CGuiCore;

namespace tarn {
struct SelectionRecord;
} // namespace tarn

/// A control of the interface. Places and sizes are pixels of its dialog's client area; they are read as they stand on
/// the present screen, after anchoring.
class CDXUTControl : public tarn::ModelObject {
public:
    /// `state` is one of the class.
    CDXUTControl(CGuiCore& core, tarn::StatePtr state);

    int GetType() const { return control_state().type; }
    const QString& name() const { return control_state().name; }
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
    /// 1 when place and size scale with the dialog, else 0. Turned off, the anchor from before is in force again.
    int scale_mode() const;
    bool set_scale_mode(int mode);

    /// Degrees clockwise about center(), held to -7200 to 7200. rect() and what it is set by do not rotate.
    float rotation() const { return control_state().extras->rotation; }
    /// What the control is rotated about, pixels from its unrotated corner: its middle, wherever that is, until a point
    /// is set.
    QPointF center() const;
    bool has_own_center() const { return control_state().extras->has_center; }
    bool set_center(QPointF from_corner);
    bool reset_center();
    /// False for whole turns too.
    bool is_rotated() const { return !control_state().extras.is_fresh() && turn() != 0; }

    // Where a rotated control is seen; in_client are pixels of the client area.
    QTransform rotation_transform() const; ///< from places in the unrotated control, in_client, to where they are seen
    QPointF to_local(QPointF in_client) const; ///< pixels from the unrotated control's corner
    bool contains(QPointF in_client) const;
    QPolygonF outline() const; ///< the four corners, clockwise from the unrotated top left one
    QRectF bounds() const;
    QPolygonF screen_outline() const; ///< in pixels of the screen, like screen_bounds(); empty without a dialog
    QRectF screen_bounds() const;
    /// Nothing of the control is drawn outside.
    QRectF drawn_bounds() const { return is_rotated() ? bounds().adjusted(-1, -1, 1, 1) : rect(); }
    void redraw() const; ///< what is drawn of the control is damaged, above all others too

    // What the author chose at this control instead of the style's looks; `look` is a tarn::look_name(). Empty texts and
    // colours that are 0 take the style's. tarn::element_look() tells what is drawn.
    QString style_image(const QString& look) const { return control_state().extras->style_images.value(look); }
    quint32 style_color(const QString& look) const { return control_state().extras->style_colors.value(look); }
    const QString& font_family() const { return control_state().extras->font_family; }
    bool font_italic() const { return control_state().extras->font_italic; }
    bool has_extras() const { return !control_state().extras.is_fresh(); }

    bool GetVisible() const { return control_state().visible; }
    bool SetVisible(bool visible);
    quint32 color() const { return control_state().extras->color; }
    float transparency() const { return control_state().extras->transparency; }
    /// Neither hidden nor faded out; its dialog may be. What is not seen takes no mouse.
    bool is_seen() const { return GetVisible() && !(has_extras() && tarn::opacity_of(color(), transparency()) <= 0); }
    bool GetEnabled() const { return control_state().enabled; }
    /// From 1 on; 0 for none of its own.
    int tab_order() const { return control_state().extras->tab_order; }
    bool locked() const { return control_state().locked; }
    bool set_locked(bool locked);
    quint32 color_tag() const { return control_state().color_tag; }

    CGuiCore& core() const { return m_core; }
    virtual tarn::VisualState visual_state() const;
    tarn::DrawSlot& draw_slot() const { return m_draw_slot; }
    /// Whether the control takes the mouse and the keyboard while the interface runs.
    virtual bool is_interactive() const { return false; }
    /// A click, or Space, while the interface runs.
    virtual void clicked() {}
    /// The mouse went down in the control, and moved while it was down. Places are pixels from the control's corner.
    virtual void mouse_pressed(QPointF) {}
    virtual void mouse_dragged(QPointF) {}
    /// It went up again, wherever that was; it is over the control, or was until now.
    virtual void mouse_released(QPointF) {}
    virtual void mouse_over(QPointF) {}
    virtual void mouse_left() {}
    /// The second press of a double-click, after mouse_pressed().
    virtual void double_clicked(QPointF) {}
    /// True when the control took the wheel; positive steps go up.
    virtual bool wheel_turned(double) { return false; }
    /// A key, or text from the keyboard or an input method, while the control has the focus. `preedit` is what the
    /// input method is about to put in. True when the control took it.
    virtual bool key_pressed(int, Qt::KeyboardModifiers) { return false; }
    virtual bool text_typed(const QString&, const QString&) { return false; }
    virtual void key_released(int) {}
    /// Where the next character goes, in pixels of the client area; empty for a control that takes no text.
    virtual QRectF caret_rect() const { return {}; }
    /// Whether mouse and keyboard reach the control now.
    bool can_be_reached() const;

    /// Where the control takes the mouse beyond its frame, in pixels of the client area: a list that is dropped down.
    virtual QRectF popup_rect() const { return {}; }
    /// The mouse went down in the list, and moved or went up anywhere while it is down. Pixels of the client area.
    virtual void popup_pressed(QPointF) {}
    virtual void popup_moved(QPointF) {}
    virtual void popup_released(QPointF) {}
    virtual void close_popup() {}
    /// Where the control shows something above all others, pixels of the client area; empty while it does not.
    virtual QRectF raised_area() const { return {}; }
    /// A preview begins or ends: nothing is scrolled, and no caret was moved, while it ran before.
    virtual void reset_run_state() {}

    const char* class_name() const override;
    tarn::Status set_property(const tarn::FieldBase& field, const tarn::Value& value) override;
    void state_changed() override;
    void after_write(const tarn::WrittenFields& written) override;

protected:
    tarn::Value value_in(const tarn::ObjectState& state, const tarn::FieldBase& field) const override;
    const tarn::ControlState& control_state() const { return state<tarn::ControlState>(); }
    /// The look of a control whose parts are dragged: it stays pressed while the mouse is beside it.
    tarn::VisualState dragged_state() const;
    /// Tells that the user made this happen to the control; nothing when it does not happen to its type.
    void raise(GuiEventType type);

private:
    friend class CDXUTDialog;
    friend class CGuiCore;
    friend struct tarn::SelectionRecord;
    CDXUTDialog* home() const; ///< kept while that dialog is away from the scene
    QRectF rect_of(const tarn::ControlState& state) const;
    QPointF center_of(const tarn::ControlState& state) const;
    bool set_rect(const QRectF& rect);
    void store_place(tarn::ControlState& state, const QRectF& rect, QPointF pivot) const;
    void store_driven_place(tarn::ControlState& state, const QRectF& rect) const;
    double turn() const; ///< the rotation without whole turns

    CGuiCore& m_core;
    quint32 m_selected_in = 0;      ///< the selection's round in which it holds the control
    mutable int m_layer_guess = -1; ///< where the dialog last found the control in its list; the dialog checks it
    QRectF m_last_bounds;           ///< where the control was drawn last, to be redrawn when it moves
    mutable tarn::DrawSlot m_draw_slot;
};
