#pragma once

#include "engine/mouse_tool.h"
#include "snap_session.h"

#include <QRectF>

#include <optional>

class CDXUTDialog;
class CGuiPlugScene;

namespace tarn {

/// Draws the frame of a new dialog or control with the mouse. A click without a drag makes it in its usual size, and so does
/// Enter, without the mouse. When
/// the object is made the scene goes back to selecting.
class CreateTool : public MouseTool {
public:
    /// `type` is the control type to make, or SceneTools::new_dialog.
    CreateTool(CGuiPlugScene& scene, AidsLayer& aids, int type) : m_scene(scene), m_aids(aids), m_type(type) {}

    bool mouse(const MouseEvent& event) override;
    bool key(int key, Qt::KeyboardModifiers modifiers) override;
    void paint(QPainter& painter) override;
    void cancel() override { m_start.reset(); }
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }

private:
    /// As it was drawn; Shift makes a square, Alt puts its centre where the press was.
    QRectF frame() const;
    void begin(const MouseEvent& event);
    QPointF snapped(const MouseEvent& event);
    CDXUTDialog* home() const;
    void paint_drawing(QPainter& painter) const;
    QSizeF usual_size() const;
    void create_usual();
    void create(const QRectF& drawn, CDXUTDialog* owner);

    CGuiPlugScene& m_scene;
    AidsLayer& m_aids;
    int m_type;
    std::optional<QPointF> m_press;    ///< where the mouse went down
    std::optional<QPointF> m_start;    ///< where the drawing begins, which may have snapped; none between drawings
    std::optional<SnapSession> m_snap; ///< made where the drawing begins
    QPointF m_end;
    Qt::KeyboardModifiers m_modifiers;
};

} // namespace tarn
