#include "glb.h"
#include "models.h"

#include <QPainter>

#include <cmath>

namespace {

constexpr int picture_side = 256; ///< pixels

QQuaternion about_x(float degrees)
{
    return QQuaternion::fromAxisAndAngle(1, 0, 0, degrees);
}

/// How high the crate's planks and frame stand out, as grey.
QImage crate_height()
{
    QImage image(picture_side, picture_side, QImage::Format_Grayscale8);
    image.fill(120);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    for (int i = 0; i < 5; ++i)
        painter.fillRect(QRectF(4 + i * 50, 0, 46, 256), QColor(150, 150, 150));
    const QColor high(230, 230, 230);
    painter.setPen(QPen(high, 30));
    painter.drawLine(24, 232, 232, 24);
    for (const QRect part :
         {QRect(0, 0, 256, 34), QRect(0, 222, 256, 34), QRect(0, 0, 34, 256), QRect(222, 0, 34, 256)})
        painter.fillRect(part, high);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(250, 250, 250));
    for (const QPoint corner : {QPoint(17, 17), QPoint(239, 17), QPoint(17, 239), QPoint(239, 239)})
        painter.drawEllipse(corner, 6, 6);
    return image;
}

QImage crate_picture()
{
    const QImage height = crate_height();
    QImage image(height.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const int level = qGray(height.pixel(x, y));
            // Grain that runs along the planks, and edges that are worn pale.
            const double grain = std::sin(x * 0.9 + 3 * std::sin(y * 0.021)) * 4 + std::sin(x * 0.37 + y * 0.013) * 5;
            const QColor wood = level < 130 ? QColor(58, 46, 42)
                : level < 200               ? QColor(134, 100, 72)
                                            : QColor(160, 122, 86);
            const QColor color = level > 240 ? QColor(96, 104, 116) : wood;
            const auto channel = [&](int value) { return std::clamp(int(value + grain), 0, 255); };
            image.setPixel(x, y, qRgb(channel(color.red()), channel(color.green()), channel(color.blue())));
        }
    return image;
}

QImage normals_of(const QImage& height, double strength)
{
    const auto level = [&](int x, int y) {
        return qGray(height.pixel(std::clamp(x, 0, height.width() - 1), std::clamp(y, 0, height.height() - 1))) / 255.0;
    };
    QImage image(height.size(), QImage::Format_RGB32);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const double right = (level(x + 1, y) - level(x - 1, y)) * strength;
            const double up = (level(x, y - 1) - level(x, y + 1)) * strength;
            const QVector3D normal = QVector3D(float(-right), float(-up), 1).normalized() * 127.5f
                + QVector3D(127.5f, 127.5f, 127.5f);
            image.setPixel(x, y, qRgb(int(normal.x()), int(normal.y()), int(normal.z())));
        }
    return image;
}

/// Half a cylinder along x, its flat side on y = 0 and z from 0 to twice the radius.
Shape half_cylinder(float length, float radius, float lift)
{
    Shape shape;
    std::vector<Ring> rings;
    for (const float x : {-length / 2, length / 2})
        rings.push_back({{0, x, 0}, radius, radius, {}});
    QMatrix4x4 lying;
    lying.translate(0, lift, radius);
    lying.rotate(90, 0, 0, 1);
    lying.rotate(90, 0, 1, 0); // The ends' triangles fan out from a corner on the flat side.
    shape.add(tube(rings, 36), lying);
    Shape upper = shape;
    upper.indices.clear();
    for (std::size_t i = 0; i + 2 < shape.indices.size(); i += 3) {
        const auto y = [&](std::size_t k) { return shape.places[shape.indices[i + k]].y(); };
        if (y(0) + y(1) + y(2) > 3 * lift - 0.001f)
            upper.indices.insert(upper.indices.end(), shape.indices.begin() + qsizetype(i),
                                 shape.indices.begin() + qsizetype(i + 3));
    }
    return upper;
}

} // namespace

QByteArray make_crate()
{
    Glb glb;
    const int wood = glb.add_material(QStringLiteral("wood"), Qt::white, crate_picture(),
                                      normals_of(crate_height().scaled(picture_side, picture_side), 3));
    const int mesh = glb.add_mesh(QStringLiteral("crate"), {{box({0, 0.4f, 0}, {0.8f, 0.8f, 0.8f}, 0.015f), wood}});
    glb.add_node(QStringLiteral("Crate"), -1, {}, mesh);
    return glb.file();
}

QByteArray make_chest()
{
    Glb glb;
    const int wood = glb.add_material(QStringLiteral("wood"), QColor(112, 80, 62));
    const int metal = glb.add_material(QStringLiteral("metal"), QColor(176, 148, 92));
    const int inside = glb.add_material(QStringLiteral("inside"), QColor(44, 38, 48));
    constexpr float width = 0.9f, depth = 0.56f, height = 0.4f;
    Shape bands;
    for (const float x : {-0.32f, 0.32f})
        bands.add(box({x, height / 2, 0}, {0.07f, height + 0.01f, depth + 0.03f}, 0.008f));
    bands.add(box({0, height - 0.06f, depth / 2}, {0.12f, 0.14f, 0.04f}, 0.01f));
    const int body = glb.add_mesh(QStringLiteral("body"),
                                  {{box({0, height / 2, 0}, {width, height, depth}, 0.015f), wood},
                                   {bands, metal},
                                   {box({0, height, 0}, {width - 0.08f, 0.012f, depth - 0.08f}, 0.002f), inside}});
    Shape rims;
    for (const float x : {-0.32f, 0.32f}) {
        QMatrix4x4 aside;
        aside.translate(x, 0, -0.012f);
        rims.add(half_cylinder(0.07f, depth / 2 + 0.012f, 0), aside);
    }
    const int cover = glb.add_mesh(QStringLiteral("lid"),
                                   {{half_cylinder(width, depth / 2, 0), wood},
                                    {rims, metal},
                                    {box({0, 0.004f, depth / 2}, {width, 0.012f, depth}, 0.002f), inside}});
    const int chest = glb.add_node(QStringLiteral("Chest"), -1, {}, body);
    const int lid = glb.add_node(QStringLiteral("Lid"), chest, {0, height + 0.012f, -depth / 2}, cover);
    Glb::Turns opening;
    for (int i = 0; i <= 24; ++i) {
        const float t = float(i) / 24;
        // Swings a little over and back.
        const float eased = t < 0.75f ? std::sin(t / 0.75f * 1.5708f) * 1.06f
                                      : 1 + 0.06f * std::cos((t - 0.75f) / 0.25f * 1.5708f);
        opening.push_back(about_x(-104 * eased));
    }
    glb.add_action({QStringLiteral("open"), 1.2f, {{lid, opening}}, {}});
    glb.add_action({QStringLiteral("close"), 0.8f, {{lid, {opening.rbegin(), opening.rend()}}}, {}});
    return glb.file();
}

QByteArray make_tree()
{
    Glb glb;
    const int bark = glb.add_material(QStringLiteral("bark"), QColor(92, 74, 66));
    const int dark = glb.add_material(QStringLiteral("leaves dark"), QColor(58, 96, 88));
    const int light = glb.add_material(QStringLiteral("leaves light"), QColor(86, 128, 104));
    const Shape trunk = tube({{{0, 0, 0}, 0.26f, 0.26f, {}},
                              {{0.01f, 0.12f, 0}, 0.19f, 0.19f, {}},
                              {{0.03f, 0.9f, 0.02f}, 0.13f, 0.13f, {}},
                              {{-0.02f, 1.7f, 0}, 0.09f, 0.09f, {}},
                              {{0, 2.6f, 0}, 0.04f, 0.04f, {}}});
    Shape lower, upper;
    constexpr float layers[][3] = {
        {0.95f, 1.02f, 0.85f}, {1.45f, 0.86f, 0.8f}, {1.95f, 0.66f, 0.75f}, {2.42f, 0.44f, 0.7f}};
    for (const auto& [y, radius, rise] : layers) {
        const float sway = 0.03f * std::sin(y * 5);
        const Shape cone = tube({{{sway, y + 0.05f, 0}, radius * 0.7f, radius * 0.7f, {}},
                                 {{sway, y, 0}, radius, radius, {}},
                                 {{sway, y + 0.06f, 0}, radius * 0.97f, radius * 0.97f, {}},
                                 {{sway, y + rise * 0.5f, 0}, radius * 0.48f, radius * 0.48f, {}},
                                 {{sway, y + rise, 0}, 0.02f, 0.02f, {}}},
                                28);
        (y < 1.6f ? lower : upper).add(cone);
    }
    const int mesh = glb.add_mesh(QStringLiteral("tree"), {{trunk, bark}, {lower, dark}, {upper, light}});
    glb.add_node(QStringLiteral("Tree"), -1, {}, mesh);
    return glb.file();
}
