#include "tangents.h"

#include "models/model.h"

#include <cmath>

namespace tarn {

namespace {

/// Any direction across the normal.
QVector3D across(const QVector3D& normal)
{
    const QVector3D axis = std::abs(normal.x()) < 0.8f ? QVector3D(1, 0, 0) : QVector3D(0, 1, 0);
    return QVector3D::crossProduct(axis, normal).normalized();
}

} // namespace

void add_tangents(ModelMesh& mesh)
{
    if (mesh.uvs.empty())
        return;
    std::vector<QVector3D> along_u(mesh.places.size());
    std::vector<QVector3D> along_v(mesh.places.size());
    for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
        const quint32 corners[3] = {mesh.indices[i], mesh.indices[i + 1], mesh.indices[i + 2]};
        const QVector3D ab = mesh.places[corners[1]] - mesh.places[corners[0]];
        const QVector3D ac = mesh.places[corners[2]] - mesh.places[corners[0]];
        const QVector2D uv_b = mesh.uvs[corners[1]] - mesh.uvs[corners[0]];
        const QVector2D uv_c = mesh.uvs[corners[2]] - mesh.uvs[corners[0]];
        const float area = uv_b.x() * uv_c.y() - uv_c.x() * uv_b.y();
        if (!(std::abs(area) > 1e-20f))
            continue;
        for (const quint32 corner : corners) {
            along_u[corner] += (ab * uv_c.y() - ac * uv_b.y()) / area;
            along_v[corner] += (ac * uv_b.x() - ab * uv_c.x()) / area;
        }
    }
    mesh.tangents.resize(mesh.places.size());
    for (std::size_t i = 0; i < mesh.places.size(); ++i) {
        const QVector3D& normal = mesh.normals[i];
        QVector3D tangent = along_u[i] - normal * QVector3D::dotProduct(normal, along_u[i]);
        if (!(tangent.lengthSquared() > 1e-20f) || !std::isfinite(tangent.lengthSquared()))
            tangent = across(normal);
        const bool right = QVector3D::dotProduct(QVector3D::crossProduct(normal, tangent), along_v[i]) <= 0;
        mesh.tangents[i] = QVector4D(tangent.normalized(), right ? 1.f : -1.f);
    }
}

} // namespace tarn
