#pragma once

#include "models/model.h"

namespace tarn::test {

/// An arm of three joints along y, a metre each, with a square around the second and a skinned strip from the first to the
/// last; the action "bend" turns the second joint by 90 degrees about z within a second.
inline ModelData arm()
{
    ModelData data;
    const auto add_node = [&](const QString& name, qint32 parent, const QVector3D& place) -> ModelNode& {
        ModelNode& node = data.nodes.emplace_back();
        node.name = name;
        node.parent = parent;
        node.place = place;
        return node;
    };
    add_node(QStringLiteral("root"), -1, {});
    add_node(QStringLiteral("middle"), 0, {0, 1, 0}).meshes = {1};
    add_node(QStringLiteral("end"), 1, {0, 1, 0});
    add_node(QStringLiteral("skin"), -1, {100, 0, 0}).meshes = {0};
    data.materials.resize(2);
    data.materials[0].color = {1, 0, 0, 1};
    data.materials[0].picture = 0;
    QImage picture(3, 2, QImage::Format_RGBA8888);
    picture.fill(QColor(10, 20, 30));
    data.pictures = {{QStringLiteral("dots.png"), QByteArray(32, 'x'), picture}};

    ModelMesh strip;
    strip.name = QStringLiteral("strip");
    strip.places = {{-0.1f, 0, 0}, {0.1f, 0, 0}, {0.1f, 2, 0}, {-0.1f, 2, 0}};
    strip.normals.assign(4, {0, 0, 1});
    strip.uvs = {{0, 1}, {1, 1}, {1, 0}, {0, 0}};
    strip.tangents.assign(4, {1, 0, 0, 1});
    strip.indices = {0, 1, 2, 0, 2, 3};
    strip.bone_numbers = {{0}, {0}, {1}, {1}};
    strip.bone_weights.assign(4, {1, 0, 0, 0});
    QMatrix4x4 back;
    back.translate(0, -1, 0);
    strip.bones = {{0, {}}, {1, back}};
    ModelMesh square;
    square.material = 1;
    square.places = {{-1, -1, 1}, {1, -1, 1}, {1, 1, 1}, {-1, 1, 1}};
    square.normals.assign(4, {0, 0, 1});
    square.indices = {0, 1, 2, 0, 2, 3};
    data.meshes = {strip, square};

    ModelTrack track;
    track.node = 1;
    track.turns.times = {0, 1};
    track.turns.values = {QQuaternion(), QQuaternion::fromAxisAndAngle(0, 0, 1, 90)};
    data.actions = {{QStringLiteral("bend"), 1, {track}}};
    data.sources = {{QStringLiteral("dots.png"), QByteArray(32, 'x')}, {QStringLiteral("missing.png"), {}}};
    return data;
}

} // namespace tarn::test
