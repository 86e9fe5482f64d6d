#pragma once

#include <QImage>
#include <QPointF>
#include <QString>

#include <vector>

class CDXUTControl;
class CDXUTDialog;

namespace tarn {

/// Something in the world that maps show.
struct MapSpot {
    quint32 object = 0; ///< its id
    QString name;
    QPointF place; ///< metres; as on a map, y points to the top
};

/// How an interface hangs on the 3D world that it lies over.
class WorldLink {
public:
    virtual ~WorldLink() = default;

    /// The world as a picture in picture or a map shows it; null where that cannot be had.
    virtual QImage view(const CDXUTControl& control, QSize pixels) = 0;
    /// Whether the dialog is shown by something in the world, and not on the screen.
    virtual bool is_in_world(const CDXUTDialog& dialog) const = 0;

    // What maps need. Places are metres seen from above, with y pointing to the map's top.
    /// The place that the views look at.
    virtual QPointF looked_at() const = 0;
    /// Has the views look at a place, as high as the object with the id `ground` is there; 0 and what is not there are flat.
    virtual void look_at(QPointF place, quint32 ground) = 0;
    virtual std::vector<MapSpot> spots() const = 0;
};

} // namespace tarn
