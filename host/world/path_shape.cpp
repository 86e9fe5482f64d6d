#include "path_shape.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace tarn {

namespace {

constexpr int pieces = 16; ///< of a curve between two points

QVector3D on_curve(const QVector3D& before, const QVector3D& from, const QVector3D& to, const QVector3D& behind,
                   float t)
{
    const QVector3D a = 2 * from;
    const QVector3D b = to - before;
    const QVector3D c = 2 * before - 5 * from + 4 * to - behind;
    const QVector3D d = 3 * from - before - 3 * to + behind;
    return 0.5f * (a + (b + (c + d * t) * t) * t);
}

} // namespace

PathShape::PathShape(const QList<QVector3D>& points, bool closed, bool smooth) : m_closed(closed && points.size() > 2)
{
    const qsizetype count = points.size();
    const auto point = [&](qsizetype index) {
        return points[m_closed ? (index + count) % count : std::clamp<qsizetype>(index, 0, count - 1)];
    };
    const qsizetype ways = m_closed ? count : count - 1;
    const int steps = smooth && count > 2 ? pieces : 1;
    for (qsizetype i = 0; i < ways; ++i)
        for (int step = 0; step < steps; ++step)
            m_corners.push_back(on_curve(point(i - 1), point(i), point(i + 1), point(i + 2), float(step) / pieces));
    if (count > 0)
        m_corners.push_back(point(ways));
    for (std::size_t i = 0; i < m_corners.size(); ++i)
        m_lengths.push_back(i ? m_lengths.back() + (m_corners[i] - m_corners[i - 1]).length() : 0);
}

PathShape::Spot PathShape::spot(float share) const
{
    const float wanted = (m_closed ? share - std::floor(share) : std::clamp(share, 0.f, 1.f)) * length();
    const auto next = std::upper_bound(m_lengths.begin() + 1, m_lengths.end() - 1, wanted);
    const auto corner = std::size_t(next - m_lengths.begin()) - 1;
    const float piece = *next - m_lengths[corner];
    return {corner, piece > 0 ? std::clamp((wanted - m_lengths[corner]) / piece, 0.f, 1.f) : 0};
}

QVector3D PathShape::place(float share) const
{
    if (m_corners.size() < 2)
        return m_corners.empty() ? QVector3D() : m_corners.front();
    const Spot at = spot(share);
    return m_corners[at.corner] + (m_corners[at.corner + 1] - m_corners[at.corner]) * at.way;
}

float PathShape::nearest_share(const QVector3D& place) const
{
    float found = 0;
    float nearest = std::numeric_limits<float>::max();
    for (std::size_t i = 1; i < m_corners.size(); ++i) {
        const QVector3D piece = m_corners[i] - m_corners[i - 1];
        const float length = piece.length();
        const float way = length > 0
            ? std::clamp(QVector3D::dotProduct(place - m_corners[i - 1], piece) / (length * length), 0.f, 1.f)
            : 0;
        const float distance = (m_corners[i - 1] + piece * way - place).lengthSquared();
        if (distance < nearest) {
            nearest = distance;
            found = m_lengths[i - 1] + way * length;
        }
    }
    return length() > 0 ? found / length() : 0;
}

QVector3D PathShape::direction(float share) const
{
    const QVector3D nowhere(0, 0, 1);
    if (m_corners.size() < 2)
        return nowhere;
    const std::size_t corner = spot(share).corner;
    const QVector3D way = (m_corners[corner + 1] - m_corners[corner]).normalized();
    return way.isNull() ? nowhere : way;
}

} // namespace tarn
