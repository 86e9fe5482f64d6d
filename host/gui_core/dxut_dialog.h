#pragma once

#include "core/model_object.h"
#include "dialog_state.h"
#include "draw_slot.h"
#include "look.h"

#include <QRect>
#include <QRectF>
#include <QSizeF>

#include <vector>

class CDXUTControl;
class CGuiCore;

namespace tarn {

struct SelectionRecord;

/// From places in a client area to the screen; taken once where there are many of them.
struct ClientMap {
    QPointF origin; ///< pixels of the screen
    double scale_x;
    double scale_y;

    QRectF to_screen(const QRectF& in_client) const
    {
        return {origin.x() + in_client.x() * scale_x, origin.y() + in_client.y() * scale_y, in_client.width() * scale_x,
                in_client.height() * scale_y};
    }
};

} // namespace tarn

/// A dialog: a caption bar, a frame and controls in layers. Places and sizes are whole pixels of the screen and are read as they stand
/// on the present screen, after anchoring. The root dialog has no frame and is as large as the screen.
class CDXUTDialog : public tarn::ModelObject {
public:
    CDXUTDialog(CGuiCore& core, tarn::StatePtr state);

    const QString& name() const { return dialog_state().name; }
    const QString& caption() const { return dialog_state().caption; }
    bool GetVisible() const { return dialog_state().visible; }
    bool SetVisible(bool visible);
    /// Neither hidden nor faded out. What is not seen takes no mouse.
    bool is_seen() const
    {
        return GetVisible() && tarn::opacity_of(dialog_state().color, dialog_state().transparency) > 0;
    }
    bool is_root() const;

    /// Place of the top left corner (of the caption bar when it is shown) and size without the caption bar.
    QRect rect() const;
    /// The whole dialog with its caption bar, or the caption bar alone while it is minimised.
    QRectF outer_rect() const;
    /// The caption bar; empty when it is not shown.
    QRectF caption_rect() const;
    /// The client area in pixels of the screen.
    QRectF client_rect() const;
    /// Size of the client area in the pixels of its controls, which differ from the screen's while it scales.
    QSizeF client_size() const;
    tarn::ClientMap client_map() const { return {client_rect().topLeft(), scale_x(), scale_y()}; }
    QRectF to_screen(const QRectF& in_client) const { return client_map().to_screen(in_client); }
    QPointF to_client(const QPointF& on_screen) const;
    double scale_x() const;
    double scale_y() const;

    bool SetLocation(int x, int y);
    /// Negative sizes count as 0.
    bool SetSize(int width, int height);
    int align_type() const { return dialog_state().align_type; }
    /// The dialog stays where it is; from now on it is anchored to the screen by `anchor` (0 to 9).
    bool set_align_type(int anchor);
    /// Turns scaling with the window on, or off again: then the anchor from before is in force.
    void set_scaled(bool scaled);
    /// Takes the place and size on the present screen as the ones that are meant, so that a later change of the screen's
    /// size is measured from here. A dialog that scales with the window keeps what it scales from.
    void on_pos_scale_changed();

    enum class CaptionButton { Close, Minimize };
    /// Where a button of the caption bar is; empty when the dialog does not show it.
    QRectF caption_button_rect(CaptionButton button) const;
    /// While the interface runs: reduced to its caption bar. Not saved.
    bool minimized() const { return m_minimized_as != 0; }
    /// How many were minimised before it and since, counted up; 0 while it is not minimised.
    quint32 minimized_as() const { return m_minimized_as; }
    void set_minimized(bool minimized);

    /// The name of the scene function that runs when the event happens to the dialog.
    QString get_func_str(quint32 event_type) const { return get_func_str(id(), event_type); }
    static QString get_func_str(quint32 id, quint32 event_type);

    const QList<CDXUTControl*>& controls() const
    {
        if (m_controls_stale)
            find_controls();
        return m_controls;
    }
    int GetControlNum() const { return int(dialog_state().controls.size()); }
    /// The layer of `control`, 0 at the bottom; -1 when it belongs to another dialog. Asking for all controls of a
    /// dialog costs one pass over its list.
    int GetControlIndex(const CDXUTControl* control) const;
    /// `where` 0 puts the control on top of the others, 1 below them.
    bool SetCtrlLayer(CDXUTControl* control, int where);
    /// `up` 1 moves the control one layer up, 0 one down.
    bool SetCtrlLayerUpDown(CDXUTControl* control, int up);
    /// `order` holds the present controls, from the lowest layer to the top one.
    void reorder_controls(const QList<CDXUTControl*>& order);

    /// Everything of the dialog is drawn inside it, controls that stick out included; it may be larger than that.
    const QRectF& drawn_bounds() const { return m_last_bounds; }

    tarn::ObjectState* fresh_state() const override;
    const char* class_name() const override { return "CDXUTDialog"; }
    tarn::Status set_property(const tarn::FieldBase& field, const tarn::Value& value) override;
    void state_changed() override;
    void after_write(const tarn::WrittenFields& written) override;
    void children_changed() override;

    const tarn::DialogState& dialog_state() const { return state<tarn::DialogState>(); }
    tarn::DrawSlot& draw_slot() const { return m_draw_slot; }

private:
    friend class CGuiCore;
    friend struct tarn::SelectionRecord;
    friend class CDXUTControl;
    /// A control is drawn there from now on, perhaps outside the dialog's frame.
    void control_drawn_at(const QRectF& on_screen);
    QSizeF base_size() const;
    bool set_rect(const QRect& rect);
    void damage_bounds();
    int shape() const;
    void set_base_to_screen(tarn::DialogState& state) const;
    void find_controls() const;
    bool move_control(CDXUTControl* control, int layer);
    QRect rect_of(const tarn::DialogState& state) const;
    tarn::Value value_in(const tarn::ObjectState& state, const tarn::FieldBase& field) const override;

    CGuiCore& m_core;
    quint32 m_minimized_as = 0;
    int m_last_shape = 0;
    quint32 m_selected_in = 0; ///< the selection's round in which it holds the dialog
    QRectF m_last_bounds;      ///< where anything of the dialog was drawn last, to be redrawn when it moves
    mutable QList<CDXUTControl*> m_controls; ///< the children, when they were last asked for
    mutable bool m_controls_stale = false;
    mutable tarn::DrawSlot m_draw_slot;
};
