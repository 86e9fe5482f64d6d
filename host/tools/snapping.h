#pragma once

#include <QLineF>
#include <QRectF>

#include <optional>
#include <span>
#include <vector>

namespace tarn {

/// What a place on an axis snaps to; at equal distance the first one wins.
enum class SnapKind { Guide, Object, Grid };

struct SnapHit {
    double offset = 0; ///< how far what snaps has to move
    double place = 0;  ///< where it then stands
    SnapKind kind = SnapKind::Grid;
};

/// The places of one axis to which things snap. All lengths are pixels of the screen. Asking costs the logarithm of
/// their number.
class SnapAxis {
public:
    /// A grid through `origin`; a step of 0 or less: none.
    void set_grid(double origin, double step);
    void add_guide(double place);
    /// The edges and the centre of an object that extends from `low` to `high` on this axis and from `across_low` to
    /// `across_high` on the other.
    void add_object(double low, double high, double across_low, double across_high);
    /// Once, after the last place was added.
    void prepare();

    /// The hit with the least way for any of `own`, at most `reach`; only the first of them snaps to the grid.
    std::optional<SnapHit> nearest(std::span<const double> own, double reach) const;

    /// Where an edge or a centre of an object stands at `place`: the extent, across this axis, of the line from
    /// `across_low` .. `across_high` to the nearest such object.
    struct Extent {
        double low;
        double high;
    };
    std::optional<Extent> alignment(double place, double across_low, double across_high) const;

private:
    struct Candidate {
        double place;
        SnapKind kind;
        double low; ///< across the axis
        double high;
    };
    using Places = std::vector<Candidate>;

    Places::const_iterator first_at(double place) const;

    Places m_places; ///< by place, then by kind
    double m_grid_origin = 0;
    double m_grid_step = 0;
};

/// The free ways from the four sides of `frame` to the nearest of `others` that faces it, or to the side of `home` where
/// none does; ways of no length are left out.
std::vector<QLineF> free_ways(const QRectF& frame, std::span<const QRectF> others, const QRectF& home);

} // namespace tarn
