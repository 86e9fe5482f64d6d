#pragma once

#include "models/model.h"

#include <map>

struct aiScene;
struct aiTexture;

namespace tarn {

class ModelFolder;

/// The pictures of a model's materials, each once.
class PictureReader {
public:
    PictureReader(const aiScene& scene, ModelFolder& folder) : m_scene(scene), m_folder(folder) {}

    /// The number of the picture that a material calls `name`, which is embedded or a file; -1 when it cannot be read.
    qint32 find(const QString& name);
    /// All of them, so much reduced that together they stay within the limit.
    std::vector<ModelPicture> take();

private:
    qint32 add(ModelPicture picture);
    ModelPicture embedded(const aiTexture& texture) const;

    const aiScene& m_scene;
    ModelFolder& m_folder;
    std::map<QString, qint32> m_known;
    std::vector<ModelPicture> m_pictures;
    qint64 m_pixels = 0; ///< decoded so far
};

} // namespace tarn
