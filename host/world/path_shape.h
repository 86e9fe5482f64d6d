#pragma once

#include <QList>
#include <QVector3D>

#include <vector>

namespace tarn {

/// A line through points in the order of their list, straight or as a curve, and where on it one is after a share of its
/// length.
class PathShape {
public:
    PathShape() = default;
    /// `smooth`: a Catmull-Rom curve (E. Catmull and R. Rom, "A class of local interpolating splines", 1974), as a chain of
    /// short straight pieces. `closed`: the last point leads to the first one.
    PathShape(const QList<QVector3D>& points, bool closed, bool smooth);

    bool is_empty() const { return m_corners.empty(); }
    float length() const { return m_lengths.empty() ? 0 : m_lengths.back(); }
    /// The corners of the pieces; of a closed path the first one comes again at the end.
    const std::vector<QVector3D>& corners() const { return m_corners; }
    /// At `share` of the length, 0 to 1; what lies beyond goes round a closed path and stays at the ends of another. The
    /// origin when there are no points.
    QVector3D place(float share) const;
    /// The share of the length at which the path comes nearest to a place, 0 to 1.
    float nearest_share(const QVector3D& place) const;
    /// Of length 1; (0, 0, 1) where the path leads nowhere.
    QVector3D direction(float share) const;

private:
    struct Spot {
        std::size_t corner; ///< behind which it lies
        float way;          ///< to the next one, 0 to 1
    };
    Spot spot(float share) const;

    std::vector<QVector3D> m_corners;
    std::vector<float> m_lengths; ///< from the begin to each corner
    bool m_closed = false;
};

} // namespace tarn
