#pragma once

namespace tarn {

struct ModelMesh;

/// Gives a mesh with uvs the tangents that its normal map is relative to: along u, and by the sign against v, which grows
/// downwards.
void add_tangents(ModelMesh& mesh);

} // namespace tarn
