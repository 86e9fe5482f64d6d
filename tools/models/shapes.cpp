#include "shapes.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

constexpr float pi = std::numbers::pi_v<float>;

void triangle(Shape& shape, quint32 a, quint32 b, quint32 c)
{
    shape.indices.insert(shape.indices.end(), {a, b, c});
}

/// Turns triangles round whose normals look inwards.
void face_outwards(Shape& shape)
{
    for (std::size_t i = 0; i + 2 < shape.indices.size(); i += 3) {
        quint32* corners = &shape.indices[i];
        const QVector3D& a = shape.places[corners[0]];
        const QVector3D face = QVector3D::crossProduct(shape.places[corners[1]] - a, shape.places[corners[2]] - a);
        const QVector3D normal = shape.normals[corners[0]] + shape.normals[corners[1]] + shape.normals[corners[2]];
        if (QVector3D::dotProduct(face, normal) < 0)
            std::swap(corners[1], corners[2]);
    }
}

} // namespace

void Shape::add(const Shape& other, const QMatrix4x4& moved)
{
    const auto first = quint32(places.size());
    for (const QVector3D& place : other.places)
        places.push_back(moved.map(place));
    const QMatrix3x3 turn = moved.normalMatrix();
    for (const QVector3D& n : other.normals)
        normals.push_back(QVector3D(turn(0, 0) * n.x() + turn(0, 1) * n.y() + turn(0, 2) * n.z(),
                                    turn(1, 0) * n.x() + turn(1, 1) * n.y() + turn(1, 2) * n.z(),
                                    turn(2, 0) * n.x() + turn(2, 1) * n.y() + turn(2, 2) * n.z())
                              .normalized());
    uvs.insert(uvs.end(), other.uvs.begin(), other.uvs.end());
    links.insert(links.end(), other.links.begin(), other.links.end());
    for (const quint32 index : other.indices)
        indices.push_back(first + index);
}

Shape tube(const std::vector<Ring>& rings, int sides)
{
    Shape shape;
    const float up = rings.back().centre.y() > rings.front().centre.y() ? 1.f : -1.f;
    // Of each piece between two rings, outwards and upwards.
    std::vector<QVector2D> slopes;
    for (std::size_t i = 0; i + 1 < rings.size(); ++i) {
        const float rise = rings[i + 1].centre.y() - rings[i].centre.y();
        const float grow = (rings[i + 1].x + rings[i + 1].z - rings[i].x - rings[i].z) / 2;
        slopes.push_back(QVector2D(rise, -grow).normalized() * up);
    }
    const auto add_row = [&](const Ring& ring, const QVector2D& slope, float v) {
        for (int side = 0; side <= sides; ++side) {
            const float angle = 2 * pi * float(side) / float(sides);
            const QVector3D out(std::cos(angle), 0, std::sin(angle));
            shape.places.push_back(ring.centre + QVector3D(ring.x * out.x(), 0, ring.z * out.z()));
            shape.normals.push_back((out * slope.x() + QVector3D(0, slope.y(), 0)).normalized());
            shape.uvs.emplace_back(float(side) / float(sides), v);
            shape.links.push_back(ring.links);
        }
    };
    const auto row = quint32(sides + 1);
    for (std::size_t i = 0; i < slopes.size(); ++i) {
        const auto first = quint32(shape.places.size());
        const auto smooth = [&](std::size_t other) {
            // A sharp bend stays an edge.
            return QVector2D::dotProduct(slopes[i], slopes[other]) > 0.4f ? slopes[i] + slopes[other] : slopes[i];
        };
        add_row(rings[i], smooth(i == 0 ? 0 : i - 1), float(i) / float(slopes.size()));
        add_row(rings[i + 1], smooth(std::min(i + 1, slopes.size() - 1)), float(i + 1) / float(slopes.size()));
        for (quint32 a = first; a + 1 < first + row; ++a) {
            triangle(shape, a, a + row, a + row + 1);
            triangle(shape, a, a + row + 1, a + 1);
        }
    }
    for (const bool end : {false, true}) {
        const Ring& ring = end ? rings.back() : rings.front();
        const auto first = quint32(shape.places.size());
        add_row(ring, {0, end ? up : -up}, 0.5f);
        for (quint32 side = 1; side + 1 < quint32(sides); ++side)
            triangle(shape, first, first + side, first + side + 1);
    }
    face_outwards(shape);
    return shape;
}

Shape ball(const QVector3D& centre, const QVector3D& radii, Links links, int sides)
{
    Shape shape;
    const int rows = std::max(4, sides / 2);
    for (int row = 0; row <= rows; ++row)
        for (int side = 0; side <= sides; ++side) {
            const float down = pi * float(row) / float(rows);
            const float around = 2 * pi * float(side) / float(sides);
            const QVector3D out(std::sin(down) * std::cos(around), std::cos(down), std::sin(down) * std::sin(around));
            shape.places.push_back(centre + out * radii);
            shape.normals.push_back((out / radii).normalized());
            shape.uvs.emplace_back(float(side) / float(sides), float(row) / float(rows));
            shape.links.push_back(links);
        }
    const auto width = quint32(sides + 1);
    for (quint32 row = 0; row < quint32(rows); ++row)
        for (quint32 side = 0; side < quint32(sides); ++side) {
            const quint32 a = row * width + side;
            if (row > 0)
                triangle(shape, a, a + 1, a + width);
            if (row + 1 < quint32(rows))
                triangle(shape, a + 1, a + width + 1, a + width);
        }
    face_outwards(shape);
    return shape;
}

Shape box(const QVector3D& centre, const QVector3D& size, float bevel)
{
    Shape shape;
    const QVector3D half = size / 2;
    const QVector3D inner = half - QVector3D(bevel, bevel, bevel);
    const auto quad = [&](const std::array<QVector3D, 4>& corners, const QVector3D& normal, bool whole) {
        const auto first = quint32(shape.places.size());
        const std::array uvs{QVector2D(0, 1), QVector2D(1, 1), QVector2D(1, 0), QVector2D(0, 0)};
        for (std::size_t i = 0; i < 4; ++i) {
            shape.places.push_back(centre + corners[i]);
            shape.normals.push_back(normal.normalized());
            shape.uvs.push_back(whole ? uvs[i] : QVector2D(0.02f, 0.02f));
            shape.links.emplace_back();
        }
        triangle(shape, first, first + 1, first + 2);
        triangle(shape, first, first + 2, first + 3);
    };
    for (int axis = 0; axis < 3; ++axis)
        for (const float side : {-1.f, 1.f}) {
            QVector3D out;
            out[axis] = side;
            const QVector3D up = axis == 1 ? QVector3D(0, 0, -1) : QVector3D(0, 1, 0);
            const QVector3D right = QVector3D::crossProduct(up, out);
            const QVector3D middle = out * half;
            const QVector3D r = right * inner;
            const QVector3D u = up * inner;
            quad({middle - r - u, middle + r - u, middle + r + u, middle - r + u}, out, true);
            // The bevels of the edges towards the two axes after this one, each once.
            const int next = (axis + 1) % 3;
            const int third = (axis + 2) % 3;
            for (const float other : {-1.f, 1.f}) {
                QVector3D a, b, along;
                a[axis] = side * half[axis];
                a[next] = other * inner[next];
                b[axis] = side * inner[axis];
                b[next] = other * half[next];
                along[third] = inner[third];
                QVector3D normal;
                normal[axis] = side;
                normal[next] = other;
                quad({a - along, a + along, b + along, b - along}, normal, false);
            }
        }
    for (int corner = 0; corner < 8; ++corner) {
        const QVector3D out(corner & 1 ? 1.f : -1.f, corner & 2 ? 1.f : -1.f, corner & 4 ? 1.f : -1.f);
        const auto first = quint32(shape.places.size());
        for (int axis = 0; axis < 3; ++axis) {
            QVector3D place = out * inner;
            place[axis] = out[axis] * half[axis];
            shape.places.push_back(centre + place);
            shape.normals.push_back(out.normalized());
            shape.uvs.emplace_back(0.02f, 0.02f);
            shape.links.emplace_back();
        }
        triangle(shape, first, first + 1, first + 2);
    }
    face_outwards(shape);
    return shape;
}

Shape follow(Shape shape, int joint)
{
    shape.links.assign(shape.places.size(), {joint, joint, 0});
    return shape;
}
