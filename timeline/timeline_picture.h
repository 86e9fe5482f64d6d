#pragma once

#include "core/object_state.h"
#include "timeline_painter.h"

#include <memory>

class QWidget;

namespace tarn {

/// The timeline's picture apart from what moves often, and what it was made of: drawn anew only when that is another.
class TimelinePicture {
public:
    /// Whether the widget shows another picture than this one.
    bool is_stale(const TimelineView& view, const QWidget& widget) const;
    /// Draws what of the timeline lies in the region, and has the picture drawn anew for that if need be.
    void paint(QPainter& painter, const TimelineView& view, const QWidget& widget, const QRegion& region);
    /// The places of the cursor and of the rest that moves, as they were drawn last and as they would be drawn now.
    QRegion overlay_change(const TimelineView& view, const QWidget& widget);

private:
    /// All that the picture shows. States are values that are never written once they are shared, so the same ones say the
    /// same.
    struct Content {
        Content(const TimelineView& view, const QWidget& widget);
        bool operator==(const Content&) const = default;

        double ratio;
        qint64 palette;
        QFont font;
        int language;
        QSize size;
        TimeAxis axis;
        TimelineRowsView rows;
        std::vector<TimeFault> faults;
        KeySelection keys;
        std::vector<float> scripts;
        const CTVar* current_variable = nullptr;
        const CTimerObject* current_object = nullptr;
        std::vector<StatePtr> states;
        std::vector<QString> names; ///< of visible rows: that of a target is not in its timer object's state
    };

    void draw(const TimelineView& view, const QWidget& widget);

    std::unique_ptr<Content> m_content;
    std::unique_ptr<TimelineLook> m_look;
    QImage m_image;
    std::vector<QRect> m_overlay;
};

} // namespace tarn
