#pragma once

#include "aids_layer.h"
#include "gesture.h"

class CGuiPlugScene;

namespace tarn {

/// Moves a guide line, or brings a new one out of a ruler. It goes away where it leaves the view or comes back onto its
/// ruler. The scene changes once, at the end.
class GuideGesture : public Gesture {
public:
    GuideGesture(CGuiPlugScene& scene, AidsLayer& aids, const Guide& guide)
        : m_scene(scene), m_aids(aids), m_guide(guide)
    {
    }
    ~GuideGesture() override;

    void begin() override;
    void drag(QPointF place, Qt::KeyboardModifiers modifiers) override;
    void finish() override;
    void cancel() override;
    void paint(QPainter& painter) const override;
    Qt::CursorShape cursor() const override { return guide_cursor(m_guide.lines); }

    static Qt::CursorShape guide_cursor(Qt::Orientation lines)
    {
        return lines == Qt::Vertical ? Qt::SplitHCursor : Qt::SplitVCursor;
    }

private:
    QString step_name() const;

    CGuiPlugScene& m_scene;
    AidsLayer& m_aids;
    Guide m_guide;
    std::optional<quint32> m_wanted; ///< none where it would go away
    QPointF m_mouse;
};

} // namespace tarn
