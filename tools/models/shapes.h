#pragma once

#include <QMatrix4x4>
#include <QVector2D>
#include <QVector3D>
#include <QVector4D>

#include <array>
#include <vector>

/// Two joints of a skeleton and the share of the second.
struct Links {
    int first = 0;
    int second = 0;
    float share = 0;
};

/// Triangles of one material.
struct Shape {
    std::vector<QVector3D> places;
    std::vector<QVector3D> normals;
    std::vector<QVector2D> uvs;
    std::vector<Links> links; ///< of a skinned shape; otherwise empty
    std::vector<quint32> indices;

    void add(const Shape& other, const QMatrix4x4& moved = {});
};

/// A cross-section of a tube: an ellipse, level unless the tube is moved.
struct Ring {
    QVector3D centre;
    float x = 0;
    float z = 0;
    Links links;
};

/// A closed tube through rings that lead upwards or downwards as a whole; smooth but for sharp bends.
Shape tube(const std::vector<Ring>& rings, int sides = 20);
/// A ball of these radii, all of which follows `links`.
Shape ball(const QVector3D& centre, const QVector3D& radii, Links links = {}, int sides = 20);
/// A box with bevelled edges; each face shows the whole picture.
Shape box(const QVector3D& centre, const QVector3D& size, float bevel = 0.02f);
/// Lets the whole shape follow a joint.
Shape follow(Shape shape, int joint);
