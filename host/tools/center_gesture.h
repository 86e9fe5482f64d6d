#pragma once

#include "gesture.h"

class CDXUTControl;
class CGuiPlugScene;

namespace tarn {

/// The control whose turning point is edited; null for none.
CDXUTControl* control_with_center(const CGuiPlugScene& scene);
/// Whether the mouse at `place` takes hold of the turning point; `pixel` is one of the view, in pixels of the screen.
bool hits_center(const CDXUTControl& control, QPointF place, double pixel);
void paint_center(QPainter& painter, const CDXUTControl& control);

/// Moves the turning point of a control. The scene changes once, at the end.
class CenterGesture : public Gesture {
public:
    CenterGesture(CGuiPlugScene& scene, const CDXUTControl& control);

    void drag(QPointF place, Qt::KeyboardModifiers modifiers) override;
    void finish() override;
    void cancel() override;
    void paint(QPainter& painter) const override;
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }

private:
    CGuiPlugScene& m_scene;
    quint32 m_control; ///< id
    QPointF m_place;   ///< where it is wanted, pixels of the screen
};

} // namespace tarn
