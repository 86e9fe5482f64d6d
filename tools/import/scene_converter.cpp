#include "scene_converter.h"

#include "core/language.h"
#include "model_folder.h"
#include "picture_reader.h"
#include "tangents.h"

#include <assimp/GltfMaterial.h>
#include <assimp/scene.h>

#include <algorithm>
#include <cmath>
#include <numeric>

namespace tarn {

namespace {

QString text_of(const aiString& text)
{
    return QString::fromUtf8(text.C_Str()).left(ModelLimits::name_length);
}

QVector3D vector_of(const aiVector3D& vector)
{
    return {vector.x, vector.y, vector.z};
}

QQuaternion turn_of(const aiQuaternion& turn)
{
    const QQuaternion result(turn.w, turn.x, turn.y, turn.z);
    return result.lengthSquared() > 1e-6f ? result : QQuaternion();
}

float srgb_of(float linear)
{
    return linear <= 0.0031308f ? linear * 12.92f : 1.055f * std::pow(linear, 1 / 2.4f) - 0.055f;
}

float unit(float value)
{
    return value >= 0 ? std::min(value, 1.f) : 0; // 0 for what is no number
}

class Converter {
public:
    Converter(const aiScene& scene, ModelFolder& folder, bool is_gltf)
        : m_scene(scene), m_folder(folder), m_pictures(scene, folder), m_is_gltf(is_gltf)
    {
    }

    Result<ModelData> run()
    {
        if (!m_scene.mRootNode || m_scene.mNumMeshes == 0)
            return nothing_to_show();
        materials();
        if (auto status = nodes(); !status)
            return status;
        for (unsigned i = 0; i < m_scene.mNumMeshes; ++i)
            m_data.meshes.push_back(mesh(*m_scene.mMeshes[i]));
        for (unsigned i = 0; i < m_scene.mNumAnimations; ++i)
            m_data.actions.push_back(action(*m_scene.mAnimations[i]));
        const bool shows = std::any_of(m_data.meshes.begin(), m_data.meshes.end(),
                                       [](const ModelMesh& mesh) { return !mesh.indices.empty(); });
        if (!shows)
            return nothing_to_show();
        m_data.pictures = m_pictures.take();
        m_data.sources = m_folder.sources();
        return std::move(m_data);
    }

private:
    static Status nothing_to_show()
    {
        return Status::error(lang(u"其中没有可以显示的网格", u"it has no mesh that could be shown"));
    }

    qint32 picture(const aiMaterial& material, std::initializer_list<aiTextureType> types)
    {
        for (const aiTextureType type : types)
            if (aiString name; material.GetTexture(type, 0, &name) == AI_SUCCESS)
                if (const qint32 number = m_pictures.find(QString::fromUtf8(name.C_Str())); number >= 0)
                    return number;
        return -1;
    }

    QVector4D color(const aiMaterial& material, bool has_picture) const
    {
        aiColor4D color(1, 1, 1, 1);
        if (material.Get(AI_MATKEY_BASE_COLOR, color) != AI_SUCCESS)
            material.Get(AI_MATKEY_COLOR_DIFFUSE, color);
        // Some programs write black where the picture is all there is.
        if (has_picture && color.r == 0 && color.g == 0 && color.b == 0)
            color = aiColor4D(1, 1, 1, color.a);
        float opacity = 1;
        if (material.Get(AI_MATKEY_OPACITY, opacity) == AI_SUCCESS && !m_is_gltf)
            color.a = opacity;
        QVector4D result(unit(color.r), unit(color.g), unit(color.b), unit(color.a));
        if (m_is_gltf)
            for (int i = 0; i < 3; ++i)
                result[i] = unit(srgb_of(result[i]));
        return result;
    }

    ModelMaterial material(const aiMaterial& source)
    {
        ModelMaterial result;
        result.name = text_of(source.GetName());
        result.picture = picture(source, {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE});
        result.normal_map = picture(source, {aiTextureType_NORMALS, aiTextureType_NORMAL_CAMERA});
        result.color = color(source, result.picture >= 0);
        int two_sided = 0;
        if (source.Get(AI_MATKEY_TWOSIDED, two_sided) == AI_SUCCESS)
            result.two_sided = two_sided != 0;
        aiString mode;
        if (source.Get(AI_MATKEY_GLTF_ALPHAMODE, mode) == AI_SUCCESS) {
            if (mode == aiString("BLEND"))
                result.alpha = AlphaMode::Blend;
            else if (mode == aiString("MASK"))
                result.alpha = AlphaMode::Mask;
            float cutoff = 0.5f;
            if (source.Get(AI_MATKEY_GLTF_ALPHACUTOFF, cutoff) == AI_SUCCESS)
                result.cutoff = unit(cutoff);
        } else if (result.color.w() < 1) {
            result.alpha = AlphaMode::Blend;
        } else if (result.picture >= 0 && source.GetTextureCount(aiTextureType_OPACITY) > 0) {
            result.alpha = AlphaMode::Mask;
        }
        return result;
    }

    void materials()
    {
        for (unsigned i = 0; i < m_scene.mNumMaterials; ++i)
            m_data.materials.push_back(material(*m_scene.mMaterials[i]));
        if (m_data.materials.empty())
            m_data.materials.emplace_back();
    }

    /// The scene's own axis and unit, where the library leaves them to us.
    QMatrix4x4 to_metres_and_y_up() const
    {
        QMatrix4x4 matrix;
        if (!m_scene.mMetaData)
            return matrix;
        double factor = 0; // centimetres
        float narrow = 0;
        if (!m_scene.mMetaData->Get("UnitScaleFactor", factor) && m_scene.mMetaData->Get("UnitScaleFactor", narrow))
            factor = double(narrow);
        if (factor > 0 && factor < 1e6)
            matrix.scale(float(factor / 100));
        int32_t up = 1;
        if (m_scene.mMetaData->Get("UpAxis", up) && up == 2)
            matrix.rotate(-90, 1, 0, 0);
        else if (up == 0)
            matrix.rotate(90, 0, 0, 1);
        return matrix;
    }

    Status add_node(const aiNode& source, qint32 parent)
    {
        if (qsizetype(m_data.nodes.size()) >= ModelLimits::nodes)
            return Status::error(lang(u"节点过多", u"it has too many nodes"));
        ModelNode node;
        node.name = text_of(source.mName);
        node.parent = parent;
        aiVector3D scale, place;
        aiQuaternion turn;
        source.mTransformation.Decompose(scale, turn, place);
        node.place = vector_of(place);
        node.turn = turn_of(turn);
        node.scale = vector_of(scale);
        node.meshes.assign(source.mMeshes, source.mMeshes + source.mNumMeshes);
        m_numbers.try_emplace(source.mName.C_Str(), quint32(m_data.nodes.size()));
        m_data.nodes.push_back(std::move(node));
        return {};
    }

    Status nodes()
    {
        ModelNode root;
        const QMatrix4x4 upright = to_metres_and_y_up();
        root.scale = QVector3D(1, 1, 1) * upright.column(0).toVector3D().length();
        root.turn = QQuaternion::fromRotationMatrix((upright * (1 / root.scale.x())).toGenericMatrix<3, 3>());
        m_data.nodes.push_back(root);
        // Not by recursion: a hostile file can nest deeper than the stack.
        std::vector<std::pair<const aiNode*, qint32>> waiting{{m_scene.mRootNode, 0}};
        while (!waiting.empty()) {
            const auto [source, parent] = waiting.back();
            waiting.pop_back();
            if (auto status = add_node(*source, parent); !status)
                return status;
            const auto number = qint32(m_data.nodes.size() - 1);
            for (unsigned i = source->mNumChildren; i > 0; --i)
                waiting.emplace_back(source->mChildren[i - 1], number);
        }
        return {};
    }

    ModelMesh mesh(const aiMesh& source)
    {
        ModelMesh result;
        result.name = text_of(source.mName);
        result.material = std::min(source.mMaterialIndex, unsigned(m_data.materials.size() - 1));
        if (!(source.mPrimitiveTypes & aiPrimitiveType_TRIANGLE) || !source.HasPositions() || !source.HasFaces())
            return result;
        const unsigned count = source.mNumVertices;
        for (unsigned i = 0; i < count; ++i) {
            result.places.push_back(vector_of(source.mVertices[i]));
            const QVector3D normal = source.HasNormals() ? vector_of(source.mNormals[i]) : QVector3D(0, 1, 0);
            result.normals.push_back(normal.normalized());
            if (source.HasTextureCoords(0))
                result.uvs.emplace_back(source.mTextureCoords[0][i].x, source.mTextureCoords[0][i].y);
        }
        for (unsigned i = 0; i < source.mNumFaces; ++i)
            if (const aiFace& face = source.mFaces[i]; face.mNumIndices == 3)
                result.indices.insert(result.indices.end(), face.mIndices, face.mIndices + 3);
        skin(source, result);
        if (m_data.materials[result.material].normal_map >= 0)
            add_tangents(result);
        return result;
    }

    static void link(ModelMesh& mesh, std::size_t vertex, std::size_t bone, float weight)
    {
        for (int i = 0; i < 4; ++i)
            if (mesh.bone_weights[vertex][i] == 0) {
                mesh.bone_weights[vertex][i] = weight;
                mesh.bone_numbers[vertex][std::size_t(i)] = quint16(bone);
                return;
            }
    }

    void skin(const aiMesh& source, ModelMesh& result) const
    {
        if (!source.HasBones())
            return;
        result.bone_numbers.resize(result.places.size());
        result.bone_weights.resize(result.places.size());
        for (unsigned i = 0; i < source.mNumBones; ++i) {
            const aiBone& bone = *source.mBones[i];
            const auto node = m_numbers.find(bone.mName.C_Str());
            if (node == m_numbers.end())
                continue;
            for (unsigned k = 0; k < bone.mNumWeights; ++k)
                if (const aiVertexWeight& weight = bone.mWeights[k];
                    weight.mWeight > 0 && weight.mVertexId < result.places.size())
                    link(result, weight.mVertexId, result.bones.size(), weight.mWeight);
            result.bones.push_back({node->second, QMatrix4x4(&bone.mOffsetMatrix.a1)});
        }
        if (result.bones.empty()) {
            result.bone_numbers.clear();
            result.bone_weights.clear();
        }
        for (QVector4D& weights : result.bone_weights) {
            const float sum = weights.x() + weights.y() + weights.z() + weights.w();
            // A vertex without a bone follows the first one rather than the origin.
            weights = sum > 0 ? weights / sum : QVector4D(1, 0, 0, 0);
        }
    }

    template <class Key, class Value>
    static ModelKeys<Value> keys(const Key* source, unsigned count, double ticks, double begin,
                                 Value (*convert)(const decltype(Key::mValue)&))
    {
        std::vector<unsigned> order(count);
        std::iota(order.begin(), order.end(), 0);
        std::stable_sort(order.begin(), order.end(),
                         [&](unsigned a, unsigned b) { return source[a].mTime < source[b].mTime; });
        ModelKeys<Value> result;
        for (const unsigned i : order) {
            result.times.push_back(float((source[i].mTime - begin) / ticks));
            result.values.push_back(convert(source[i].mValue));
        }
        return result;
    }

    static double first_time(const aiAnimation& source)
    {
        double first = 0;
        for (unsigned i = 0; i < source.mNumChannels; ++i) {
            const aiNodeAnim& channel = *source.mChannels[i];
            for (unsigned k = 0; k < channel.mNumPositionKeys; ++k)
                first = std::min(first, channel.mPositionKeys[k].mTime);
            for (unsigned k = 0; k < channel.mNumRotationKeys; ++k)
                first = std::min(first, channel.mRotationKeys[k].mTime);
            for (unsigned k = 0; k < channel.mNumScalingKeys; ++k)
                first = std::min(first, channel.mScalingKeys[k].mTime);
        }
        return first;
    }

    ModelAction action(const aiAnimation& source) const
    {
        ModelAction result;
        result.name = text_of(source.mName);
        if (result.name.isEmpty())
            result.name = QStringLiteral("Action %1").arg(m_data.actions.size() + 1);
        const double ticks = source.mTicksPerSecond > 0 ? source.mTicksPerSecond : 25;
        const double begin = first_time(source); // Below zero in some files.
        for (unsigned i = 0; i < source.mNumChannels; ++i) {
            const aiNodeAnim& channel = *source.mChannels[i];
            const auto node = m_numbers.find(channel.mNodeName.C_Str());
            if (node == m_numbers.end())
                continue;
            ModelTrack track;
            track.node = node->second;
            track.places = keys(channel.mPositionKeys, channel.mNumPositionKeys, ticks, begin, vector_of);
            track.turns = keys(channel.mRotationKeys, channel.mNumRotationKeys, ticks, begin, turn_of);
            track.scales = keys(channel.mScalingKeys, channel.mNumScalingKeys, ticks, begin, vector_of);
            result.tracks.push_back(std::move(track));
        }
        // The last key ends it: the length that some files tell is a guess.
        for (const ModelTrack& track : result.tracks)
            for (const auto* times : {&track.places.times, &track.turns.times, &track.scales.times})
                if (!times->empty())
                    result.duration = std::max(result.duration, times->back());
        return result;
    }

    const aiScene& m_scene;
    ModelFolder& m_folder;
    PictureReader m_pictures;
    bool m_is_gltf;
    ModelData m_data;
    std::map<std::string, quint32> m_numbers; ///< of nodes, by name
};

} // namespace

Result<ModelData> convert_scene(const aiScene& scene, ModelFolder& folder, bool is_gltf)
{
    return Converter(scene, folder, is_gltf).run();
}

} // namespace tarn
