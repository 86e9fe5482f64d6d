#include "glb.h"

#include <QBuffer>
#include <QJsonDocument>
#include <QtEndian>

#include <algorithm>
#include <cmath>

namespace {

constexpr int float_type = 5126;
constexpr int word_type = 5125;
constexpr int byte_type = 5121;

int append(QJsonObject& parts, const char* list, const QJsonObject& item)
{
    const QLatin1String name(list);
    QJsonArray array = parts[name].toArray();
    array.append(item);
    parts[name] = array;
    return int(array.size()) - 1;
}

QJsonArray numbers(const QVector3D& vector)
{
    return {double(vector.x()), double(vector.y()), double(vector.z())};
}

template <class T>
QByteArray little_endian(const std::vector<T>& list)
{
    QByteArray bytes(qsizetype(list.size() * sizeof(T)), '\0');
    qToLittleEndian<T>(list.data(), qsizetype(list.size()), bytes.data());
    return bytes;
}

double linear(double srgb)
{
    return srgb <= 0.04045 ? srgb / 12.92 : std::pow((srgb + 0.055) / 1.055, 2.4);
}

std::vector<float> flat(const std::vector<QVector3D>& list)
{
    std::vector<float> all;
    for (const QVector3D& vector : list)
        all.insert(all.end(), {vector.x(), vector.y(), vector.z()});
    return all;
}

QByteArray chunk(QByteArray bytes, const char* type, char filler)
{
    while (bytes.size() % 4)
        bytes.append(filler);
    return little_endian(std::vector{quint32(bytes.size())}) + QByteArray(type, 4) + bytes;
}

} // namespace

int Glb::add_view(const QByteArray& bytes)
{
    while (m_bytes.size() % 4)
        m_bytes.append('\0');
    const QJsonObject view{{QStringLiteral("buffer"), 0},
                           {QStringLiteral("byteOffset"), m_bytes.size()},
                           {QStringLiteral("byteLength"), bytes.size()}};
    m_bytes += bytes;
    return append(m_parts, "bufferViews", view);
}

int Glb::add_accessor(const QByteArray& bytes, int component, const QString& type, qsizetype count, QJsonObject more)
{
    more[QStringLiteral("bufferView")] = add_view(bytes);
    more[QStringLiteral("componentType")] = component;
    more[QStringLiteral("type")] = type;
    more[QStringLiteral("count")] = count;
    return append(m_parts, "accessors", more);
}

int Glb::add_floats(const std::vector<float>& list, const QString& type, int width, bool with_range)
{
    QJsonObject range;
    if (with_range) {
        QJsonArray low, high;
        for (int i = 0; i < width; ++i) {
            float least = list[std::size_t(i)];
            float most = least;
            for (std::size_t k = std::size_t(i); k < list.size(); k += std::size_t(width)) {
                least = std::min(least, list[k]);
                most = std::max(most, list[k]);
            }
            low.append(double(least));
            high.append(double(most));
        }
        range = {{QStringLiteral("min"), low}, {QStringLiteral("max"), high}};
    }
    return add_accessor(little_endian(list), float_type, type, qsizetype(list.size()) / width, range);
}

int Glb::add_texture(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    const int source = append(
        m_parts, "images",
        {{QStringLiteral("bufferView"), add_view(png)}, {QStringLiteral("mimeType"), QStringLiteral("image/png")}});
    return append(m_parts, "textures", {{QStringLiteral("source"), source}});
}

int Glb::add_material(const QString& name, const QColor& color, const QImage& picture, const QImage& normals)
{
    QJsonObject surface{
        {QStringLiteral("baseColorFactor"),
         QJsonArray{linear(color.redF()), linear(color.greenF()), linear(color.blueF()), color.alphaF()}},
        {QStringLiteral("metallicFactor"), 0},
        {QStringLiteral("roughnessFactor"), 1}};
    QJsonObject material{{QStringLiteral("name"), name}};
    if (!picture.isNull())
        surface[QStringLiteral("baseColorTexture")] = QJsonObject{{QStringLiteral("index"), add_texture(picture)}};
    if (!normals.isNull())
        material[QStringLiteral("normalTexture")] = QJsonObject{{QStringLiteral("index"), add_texture(normals)}};
    material[QStringLiteral("pbrMetallicRoughness")] = surface;
    return append(m_parts, "materials", material);
}

int Glb::add_mesh(const QString& name, const std::vector<std::pair<Shape, int>>& parts)
{
    QJsonArray primitives;
    for (const auto& [shape, material] : parts) {
        QJsonObject attributes{
            {QStringLiteral("POSITION"), add_floats(flat(shape.places), QStringLiteral("VEC3"), 3, true)},
            {QStringLiteral("NORMAL"), add_floats(flat(shape.normals), QStringLiteral("VEC3"), 3)}};
        std::vector<float> uvs;
        for (const QVector2D& uv : shape.uvs)
            uvs.insert(uvs.end(), {uv.x(), uv.y()});
        attributes[QStringLiteral("TEXCOORD_0")] = add_floats(uvs, QStringLiteral("VEC2"), 2);
        if (!shape.links.empty()) {
            QByteArray joints;
            std::vector<float> weights;
            for (const Links& link : shape.links) {
                for (const int joint : {link.first, link.second, 0, 0})
                    joints.append(char(joint));
                weights.insert(weights.end(), {1 - link.share, link.share, 0.f, 0.f});
            }
            attributes[QStringLiteral("JOINTS_0")] = add_accessor(joints, byte_type, QStringLiteral("VEC4"),
                                                                  qsizetype(shape.links.size()));
            attributes[QStringLiteral("WEIGHTS_0")] = add_floats(weights, QStringLiteral("VEC4"), 4);
        }
        const int indices = add_accessor(little_endian(shape.indices), word_type, QStringLiteral("SCALAR"),
                                         qsizetype(shape.indices.size()));
        primitives.append(QJsonObject{{QStringLiteral("attributes"), attributes},
                                      {QStringLiteral("indices"), indices},
                                      {QStringLiteral("material"), material}});
    }
    return append(m_parts, "meshes", {{QStringLiteral("name"), name}, {QStringLiteral("primitives"), primitives}});
}

int Glb::add_node(const QString& name, int parent, const QVector3D& place, int mesh)
{
    QJsonObject node{{QStringLiteral("name"), name}, {QStringLiteral("translation"), numbers(place)}};
    if (mesh >= 0)
        node[QStringLiteral("mesh")] = mesh;
    const int number = append(m_parts, "nodes", node);
    if (parent >= 0) {
        QJsonArray nodes = m_parts[QStringLiteral("nodes")].toArray();
        QJsonObject above = nodes[parent].toObject();
        QJsonArray children = above[QStringLiteral("children")].toArray();
        children.append(number);
        above[QStringLiteral("children")] = children;
        nodes[parent] = above;
        m_parts[QStringLiteral("nodes")] = nodes;
    } else {
        QJsonArray scenes = m_parts[QStringLiteral("scenes")].toArray();
        QJsonArray roots = scenes.isEmpty() ? QJsonArray() : scenes[0].toObject()[QStringLiteral("nodes")].toArray();
        roots.append(number);
        m_parts[QStringLiteral("scenes")] = QJsonArray{QJsonObject{{QStringLiteral("nodes"), roots}}};
    }
    return number;
}

void Glb::add_skin(int node, const std::vector<int>& joints, const std::vector<QVector3D>& places)
{
    std::vector<float> matrices;
    for (const QVector3D& place : places) {
        QMatrix4x4 back;
        back.translate(-place);
        matrices.insert(matrices.end(), back.constData(), back.constData() + 16);
    }
    QJsonArray numbers_of;
    for (const int joint : joints)
        numbers_of.append(joint);
    const int skin = append(
        m_parts, "skins",
        {{QStringLiteral("joints"), numbers_of},
         {QStringLiteral("inverseBindMatrices"), add_floats(matrices, QStringLiteral("MAT4"), 16)}});
    QJsonArray nodes = m_parts[QStringLiteral("nodes")].toArray();
    QJsonObject skinned = nodes[node].toObject();
    skinned[QStringLiteral("skin")] = skin;
    nodes[node] = skinned;
    m_parts[QStringLiteral("nodes")] = nodes;
}

void Glb::add_action(const Action& action)
{
    QJsonArray samplers, channels;
    const auto add = [&](int node, const char* what, int values, std::size_t count) {
        std::vector<float> times;
        for (std::size_t i = 0; i < count; ++i)
            times.push_back(action.duration * float(i) / float(count - 1));
        channels.append(
            QJsonObject{{QStringLiteral("sampler"), samplers.size()},
                        {QStringLiteral("target"),
                         QJsonObject{{QStringLiteral("node"), node}, {QStringLiteral("path"), QLatin1String(what)}}}});
        samplers.append(QJsonObject{{QStringLiteral("input"), add_floats(times, QStringLiteral("SCALAR"), 1, true)},
                                    {QStringLiteral("output"), values}});
    };
    for (const auto& [node, turns] : action.turns) {
        std::vector<float> values;
        for (const QQuaternion& turn : turns)
            values.insert(values.end(), {turn.x(), turn.y(), turn.z(), turn.scalar()});
        add(node, "rotation", add_floats(values, QStringLiteral("VEC4"), 4), turns.size());
    }
    for (const auto& [node, places] : action.places)
        add(node, "translation", add_floats(flat(places), QStringLiteral("VEC3"), 3), places.size());
    append(m_parts, "animations",
           {{QStringLiteral("name"), action.name},
            {QStringLiteral("samplers"), samplers},
            {QStringLiteral("channels"), channels}});
}

QByteArray Glb::file() const
{
    QJsonObject root = m_parts;
    root[QStringLiteral("asset")] = QJsonObject{{QStringLiteral("version"), QStringLiteral("2.0")}};
    root[QStringLiteral("scene")] = 0;
    root[QStringLiteral("buffers")] = QJsonArray{QJsonObject{{QStringLiteral("byteLength"), m_bytes.size()}}};
    const QByteArray body = chunk(QJsonDocument(root).toJson(QJsonDocument::Compact), "JSON", ' ')
        + chunk(m_bytes, "BIN\0", '\0');
    return QByteArray("glTF") + little_endian(std::vector{quint32(2), quint32(body.size() + 12)}) + body;
}
