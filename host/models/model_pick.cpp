#include "model_pick.h"

#include <cmath>

namespace tarn {

namespace {

struct Corner {
    float distance;
    float b; ///< weights of the triangle's second and third corner
    float c;
};

std::optional<Corner> meet(const Ray& ray, const QVector3D& a, const QVector3D& b, const QVector3D& c, float nearest)
{
    const QVector3D ab = b - a;
    const QVector3D ac = c - a;
    const QVector3D p = QVector3D::crossProduct(ray.direction, ac);
    const float volume = QVector3D::dotProduct(ab, p);
    if (volume == 0)
        return std::nullopt;
    const QVector3D from = ray.origin - a;
    const float u = QVector3D::dotProduct(from, p) / volume;
    if (!(u >= 0 && u <= 1))
        return std::nullopt;
    const QVector3D q = QVector3D::crossProduct(from, ab);
    const float v = QVector3D::dotProduct(ray.direction, q) / volume;
    const float distance = QVector3D::dotProduct(ac, q) / volume;
    if (!(v >= 0 && u + v <= 1) || !(distance >= 0 && distance < nearest))
        return std::nullopt;
    return Corner{distance, u, v};
}

QVector2D uv_at(const ModelMesh& mesh, std::size_t first, const Corner& corner)
{
    if (mesh.uvs.empty())
        return {};
    return mesh.uvs[mesh.indices[first]] * (1 - corner.b - corner.c) + mesh.uvs[mesh.indices[first + 1]] * corner.b
        + mesh.uvs[mesh.indices[first + 2]] * corner.c;
}

} // namespace

std::optional<ModelHit> pick(const ModelPose& pose, const QMatrix4x4& matrix, const Ray& ray)
{
    bool invertible = false;
    const QMatrix4x4 inverse = matrix.inverted(&invertible);
    if (!invertible)
        return std::nullopt;
    // Not normalised, so that distances stay the same.
    const Ray local{inverse.map(ray.origin), inverse.mapVector(ray.direction)};
    std::optional<ModelHit> hit;
    std::vector<QVector3D> places;
    for (const ModelPart& part : pose.model()->parts()) {
        const auto entry = pose.box(part).entry(local);
        if (!entry || (hit && *entry > hit->distance))
            continue;
        const ModelMesh& mesh = pose.model()->data().meshes[part.mesh];
        pose.places(part, places);
        for (std::size_t i = 0; i + 2 < mesh.indices.size(); i += 3) {
            const float nearest = hit ? hit->distance : std::numeric_limits<float>::infinity();
            const auto corner = meet(local, places[mesh.indices[i]], places[mesh.indices[i + 1]],
                                     places[mesh.indices[i + 2]], nearest);
            if (corner)
                hit = {corner->distance, ray.at(corner->distance), part.mesh, quint32(i / 3), uv_at(mesh, i, *corner)};
        }
    }
    return hit;
}

} // namespace tarn
