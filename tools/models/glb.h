#pragma once

#include "shapes.h"

#include <QByteArray>
#include <QColor>
#include <QImage>
#include <QJsonArray>
#include <QJsonObject>
#include <QQuaternion>

/// A binary glTF file in the making. What is added is referred to by the number that adding it answers.
class Glb {
public:
    int add_material(const QString& name, const QColor& color, const QImage& picture = {}, const QImage& normals = {});
    /// One part of a mesh for each shape and its material.
    int add_mesh(const QString& name, const std::vector<std::pair<Shape, int>>& parts);
    /// -1: no parent, no mesh.
    int add_node(const QString& name, int parent, const QVector3D& place, int mesh = -1);
    /// `joints`: nodes, with the place of each in the model. The mesh's links count in them.
    void add_skin(int node, const std::vector<int>& joints, const std::vector<QVector3D>& places);

    using Turns = std::vector<QQuaternion>;
    using Places = std::vector<QVector3D>;
    /// The tracks of one action, all with the same evenly spaced times.
    struct Action {
        QString name;
        float duration = 0; ///< seconds
        std::vector<std::pair<int, Turns>> turns;
        std::vector<std::pair<int, Places>> places;
    };
    void add_action(const Action& action);

    QByteArray file() const;

private:
    int add_view(const QByteArray& bytes);
    int add_accessor(const QByteArray& bytes, int component, const QString& type, qsizetype count,
                     QJsonObject more = {});
    int add_floats(const std::vector<float>& numbers, const QString& type, int width, bool with_range = false);
    int add_texture(const QImage& image);

    QJsonObject m_parts; ///< the lists of the file by name
    QByteArray m_bytes;
};
