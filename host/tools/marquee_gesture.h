#pragma once

#include "gesture.h"

#include <QRectF>

#include <vector>

class CDXUTControl;
class CDXUTDialog;
class CGuiPlugScene;

namespace tarn {

/// Draws a frame and selects the controls that it catches; Shift adds them to the selection, Ctrl changes whether they
/// are in it.
class MarqueeGesture : public Gesture {
public:
    /// `home` null catches controls of all dialogs.
    MarqueeGesture(CGuiPlugScene& scene, QPointF start, const CDXUTDialog* home)
        : m_scene(scene), m_home(home), m_start(start)
    {
    }

    void drag(QPointF place, Qt::KeyboardModifiers modifiers) override;
    void finish() override;
    void paint(QPainter& painter) const override;
    Qt::CursorShape cursor() const override { return Qt::CrossCursor; }

private:
    void catch_controls();

    CGuiPlugScene& m_scene;
    const CDXUTDialog* m_home;
    QPointF m_start;
    QRectF m_frame;
    Qt::KeyboardModifiers m_modifiers;
    std::vector<CDXUTControl*> m_caught;
};

} // namespace tarn
