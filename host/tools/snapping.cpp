#include "snapping.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace tarn {

namespace {

constexpr double same = 1e-3; ///< pixels; places that differ less are one

/// Whether `a` is the better hit of two.
bool better(const SnapHit& a, const SnapHit& b)
{
    const double shorter = std::abs(b.offset) - std::abs(a.offset);
    return std::abs(shorter) > same ? shorter > 0 : a.kind < b.kind;
}

} // namespace

void SnapAxis::set_grid(double origin, double step)
{
    m_grid_origin = origin;
    m_grid_step = step;
}

void SnapAxis::add_guide(double place)
{
    m_places.push_back({place, SnapKind::Guide, 0, 0});
}

void SnapAxis::add_object(double low, double high, double across_low, double across_high)
{
    for (const double place : {low, (low + high) / 2, high})
        m_places.push_back({place, SnapKind::Object, across_low, across_high});
}

void SnapAxis::prepare()
{
    std::sort(m_places.begin(), m_places.end(), [](const Candidate& a, const Candidate& b) {
        return std::tie(a.place, a.kind) < std::tie(b.place, b.kind);
    });
}

SnapAxis::Places::const_iterator SnapAxis::first_at(double place) const
{
    return std::lower_bound(m_places.begin(), m_places.end(), place,
                            [](const Candidate& candidate, double key) { return candidate.place < key; });
}

std::optional<SnapHit> SnapAxis::nearest(std::span<const double> own, double reach) const
{
    std::optional<SnapHit> best;
    const auto offer = [&](double from, double place, SnapKind kind) {
        const SnapHit hit{place - from, place, kind};
        if (std::abs(hit.offset) <= reach && (!best || better(hit, *best)))
            best = hit;
    };
    for (const double from : own) {
        const auto above = first_at(from);
        if (above != m_places.end())
            offer(from, above->place, above->kind);
        if (above != m_places.begin()) {
            const auto below = first_at(std::prev(above)->place); // The best kind that stands there.
            offer(from, below->place, below->kind);
        }
    }
    if (m_grid_step > 0 && !own.empty())
        offer(own[0], m_grid_origin + std::round((own[0] - m_grid_origin) / m_grid_step) * m_grid_step, SnapKind::Grid);
    return best;
}

std::optional<SnapAxis::Extent> SnapAxis::alignment(double place, double across_low, double across_high) const
{
    std::optional<Extent> nearest;
    double least = 0;
    for (auto found = first_at(place - same); found != m_places.end() && found->place <= place + same; ++found) {
        const double gap = std::max({0.0, found->low - across_high, across_low - found->high});
        if (found->kind != SnapKind::Object || (nearest && gap >= least))
            continue;
        least = gap;
        nearest = Extent{std::min(across_low, found->low), std::max(across_high, found->high)};
    }
    return nearest;
}

std::vector<QLineF> free_ways(const QRectF& frame, std::span<const QRectF> others, const QRectF& home)
{
    double left = home.left();
    double right = home.right();
    double top = home.top();
    double bottom = home.bottom();
    for (const QRectF& other : others) {
        if (other.top() < frame.bottom() && other.bottom() > frame.top()) {
            if (other.right() <= frame.left())
                left = std::max(left, other.right());
            if (other.left() >= frame.right())
                right = std::min(right, other.left());
        }
        if (other.left() < frame.right() && other.right() > frame.left()) {
            if (other.bottom() <= frame.top())
                top = std::max(top, other.bottom());
            if (other.top() >= frame.bottom())
                bottom = std::min(bottom, other.top());
        }
    }
    const QPointF middle = frame.center();
    std::vector<QLineF> ways;
    if (left < frame.left())
        ways.emplace_back(left, middle.y(), frame.left(), middle.y());
    if (right > frame.right())
        ways.emplace_back(frame.right(), middle.y(), right, middle.y());
    if (top < frame.top())
        ways.emplace_back(middle.x(), top, middle.x(), frame.top());
    if (bottom > frame.bottom())
        ways.emplace_back(middle.x(), frame.bottom(), middle.x(), bottom);
    return ways;
}

} // namespace tarn
