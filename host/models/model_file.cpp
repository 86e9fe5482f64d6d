#include "model_file.h"

#include "core/language.h"

#include <QtEndian>

#include <cstring>
#include <type_traits>

namespace tarn {

namespace {

constexpr char magic[] = "TARNMODL";
constexpr qsizetype magic_size = 8;
constexpr qsizetype hash_size = 32;
enum MeshList : quint8 { has_tangents = 1, has_uvs = 2, has_bones = 4 };

static_assert(sizeof(QVector2D) == 8 && sizeof(QVector3D) == 12 && sizeof(QVector4D) == 16);
static_assert(sizeof(QQuaternion) == 16 && std::is_standard_layout_v<QQuaternion>);

/// What a list of T consists of in the file.
template <class T>
using Word = std::conditional_t<std::is_same_v<T, std::array<quint16, 4>>, quint16, quint32>;

class Writer {
public:
    void bytes(const void* data, qsizetype size) { m_out.append(static_cast<const char*>(data), size); }
    template <class T>
    void number(T value)
    {
        value = qToLittleEndian(value);
        bytes(&value, sizeof value);
    }
    template <class T>
    void count(const std::vector<T>& list)
    {
        number(quint32(list.size()));
    }
    void text(const QString& text)
    {
        const QByteArray utf8 = text.toUtf8();
        number(quint16(utf8.size()));
        m_out.append(utf8);
    }
    void hash(const QByteArray& hash)
    {
        const bool known = hash.size() == hash_size;
        number(quint8(known));
        m_out.append(known ? hash : QByteArray(hash_size, '\0'));
    }
    /// The items alone, without their count.
    template <class T>
    void items(const std::vector<T>& list)
    {
        const qsizetype at = m_out.size();
        const auto size = qsizetype(list.size() * sizeof(T));
        m_out.resize(at + size);
        qToLittleEndian<Word<T>>(list.data(), size / qsizetype(sizeof(Word<T>)), m_out.data() + at);
    }
    template <class T>
    void list(const std::vector<T>& list)
    {
        count(list);
        items(list);
    }
    template <class T>
    void one(const T& value)
    {
        qsizetype at = m_out.size();
        m_out.resize(at + qsizetype(sizeof value));
        qToLittleEndian<quint32>(&value, sizeof value / 4, m_out.data() + at);
    }
    QByteArray take() { return std::move(m_out); }

private:
    QByteArray m_out;
};

/// Answers zeros and empty lists from the first thing on that the file does not hold.
class Reader {
public:
    explicit Reader(const QByteArray& in) : m_at(in.constData()), m_left(in.size()) {}

    bool failed() const { return m_failed; }
    bool at_end() const { return m_left == 0; }
    void fail() { m_failed = true; }

    /// The next bytes, null when there are not as many.
    const char* bytes(quint64 size)
    {
        if (m_failed || size > quint64(m_left)) {
            m_failed = true;
            return nullptr;
        }
        const char* at = m_at;
        m_at += size;
        m_left -= qsizetype(size);
        return at;
    }
    template <class T>
    T number()
    {
        const char* at = bytes(sizeof(T));
        return at ? qFromLittleEndian<T>(at) : T(0);
    }
    QString text()
    {
        const auto size = number<quint16>();
        const char* at = bytes(size);
        return at ? QString::fromUtf8(at, size) : QString();
    }
    QByteArray hash()
    {
        const bool known = number<quint8>() != 0;
        const char* at = bytes(hash_size);
        return known && at ? QByteArray(at, hash_size) : QByteArray();
    }
    template <class T>
    void items(std::vector<T>& list, quint32 count)
    {
        const char* at = bytes(quint64(count) * sizeof(T));
        if (!at)
            return;
        list.resize(count);
        qFromLittleEndian<Word<T>>(at, qsizetype(count * (sizeof(T) / sizeof(Word<T>))), list.data());
    }
    template <class T>
    void list(std::vector<T>& list)
    {
        items(list, number<quint32>());
    }
    template <class T>
    void one(T& value)
    {
        if (const char* at = bytes(sizeof value))
            qFromLittleEndian<quint32>(at, sizeof value / 4, &value);
    }
    /// Reads each of a list of at most `limit` things that are no plain numbers.
    template <class T, class ReadOne>
    void each(std::vector<T>& list, qsizetype limit, ReadOne&& read_one)
    {
        const auto count = number<quint32>();
        if (count > quint64(limit))
            m_failed = true;
        for (quint32 i = 0; i < count && !m_failed; ++i)
            read_one(list.emplace_back());
    }

private:
    const char* m_at;
    qsizetype m_left;
    bool m_failed = false;
};

void write_picture(Writer& out, const ModelPicture& picture)
{
    out.text(picture.name);
    out.hash(picture.content);
    out.number(quint32(picture.image.width()));
    out.number(quint32(picture.image.height()));
    for (int y = 0; y < picture.image.height(); ++y)
        out.bytes(picture.image.constScanLine(y), qsizetype(picture.image.width()) * 4);
}

void read_picture(Reader& in, ModelPicture& picture, qint64& bytes_left)
{
    picture.name = in.text();
    picture.content = in.hash();
    const auto width = in.number<quint32>();
    const auto height = in.number<quint32>();
    if (width > quint32(ModelLimits::picture_side) || height > quint32(ModelLimits::picture_side))
        return in.fail();
    bytes_left -= qint64(width) * height * 4;
    const char* pixels = bytes_left < 0 ? nullptr : in.bytes(quint64(width) * height * 4);
    if (!pixels)
        return in.fail();
    picture.image = QImage(int(width), int(height), QImage::Format_RGBA8888);
    for (int y = 0; y < picture.image.height(); ++y)
        std::memcpy(picture.image.scanLine(y), pixels + qsizetype(y) * width * 4, std::size_t(width) * 4);
}

void write_material(Writer& out, const ModelMaterial& material)
{
    out.text(material.name);
    out.one(material.color);
    out.number(material.picture);
    out.number(material.normal_map);
    out.number(quint8(material.alpha));
    out.number(material.cutoff);
    out.number(quint8(material.two_sided));
}

void read_material(Reader& in, ModelMaterial& material)
{
    material.name = in.text();
    in.one(material.color);
    material.picture = in.number<qint32>();
    material.normal_map = in.number<qint32>();
    material.alpha = AlphaMode(in.number<quint8>());
    material.cutoff = in.number<float>();
    material.two_sided = in.number<quint8>() != 0;
}

void write_mesh(Writer& out, const ModelMesh& mesh)
{
    out.text(mesh.name);
    out.number(mesh.material);
    out.number(quint32(mesh.places.size()));
    out.number(quint8((mesh.tangents.empty() ? 0 : has_tangents) | (mesh.uvs.empty() ? 0 : has_uvs)
                      | (mesh.bones.empty() ? 0 : has_bones)));
    out.items(mesh.places);
    out.items(mesh.normals);
    out.items(mesh.tangents);
    out.items(mesh.uvs);
    out.items(mesh.bone_numbers);
    out.items(mesh.bone_weights);
    out.list(mesh.indices);
    out.count(mesh.bones);
    for (const ModelBone& bone : mesh.bones) {
        out.number(bone.node);
        for (int i = 0; i < 16; ++i)
            out.number(bone.offset.constData()[i]);
    }
}

void read_mesh(Reader& in, ModelMesh& mesh)
{
    mesh.name = in.text();
    mesh.material = in.number<quint32>();
    const auto count = in.number<quint32>();
    const auto lists = in.number<quint8>();
    in.items(mesh.places, count);
    in.items(mesh.normals, count);
    if (lists & has_tangents)
        in.items(mesh.tangents, count);
    if (lists & has_uvs)
        in.items(mesh.uvs, count);
    if (lists & has_bones) {
        in.items(mesh.bone_numbers, count);
        in.items(mesh.bone_weights, count);
    }
    in.list(mesh.indices);
    in.each(mesh.bones, ModelLimits::mesh_bones, [&](ModelBone& bone) {
        bone.node = in.number<quint32>();
        for (int i = 0; i < 16; ++i)
            bone.offset(i % 4, i / 4) = in.number<float>();
        bone.offset.optimize();
    });
}

void write_node(Writer& out, const ModelNode& node)
{
    out.text(node.name);
    out.number(node.parent);
    out.one(node.place);
    out.one(node.turn);
    out.one(node.scale);
    out.list(node.meshes);
}

void read_node(Reader& in, ModelNode& node)
{
    node.name = in.text();
    node.parent = in.number<qint32>();
    in.one(node.place);
    in.one(node.turn);
    in.one(node.scale);
    in.list(node.meshes);
}

template <class T>
void write_keys(Writer& out, const ModelKeys<T>& keys)
{
    out.count(keys.times);
    out.items(keys.times);
    out.items(keys.values);
}

template <class T>
void read_keys(Reader& in, ModelKeys<T>& keys)
{
    const auto count = in.number<quint32>();
    in.items(keys.times, count);
    in.items(keys.values, count);
}

void write_action(Writer& out, const ModelAction& action)
{
    out.text(action.name);
    out.number(action.duration);
    out.count(action.tracks);
    for (const ModelTrack& track : action.tracks) {
        out.number(track.node);
        write_keys(out, track.places);
        write_keys(out, track.turns);
        write_keys(out, track.scales);
    }
}

void read_action(Reader& in, ModelAction& action, qsizetype& tracks_left)
{
    action.name = in.text();
    action.duration = in.number<float>();
    in.each(action.tracks, tracks_left, [&](ModelTrack& track) {
        track.node = in.number<quint32>();
        read_keys(in, track.places);
        read_keys(in, track.turns);
        read_keys(in, track.scales);
    });
    tracks_left -= qsizetype(action.tracks.size());
}

template <class T, class WriteOne>
void write_each(Writer& out, const std::vector<T>& list, WriteOne&& write_one)
{
    out.count(list);
    for (const T& item : list)
        write_one(out, item);
}

Status damaged()
{
    return Status::error(lang(u"模型数据已损坏", u"the data of the model is damaged"));
}

} // namespace

QByteArray write_model(const ModelData& data)
{
    Writer out;
    out.bytes(magic, magic_size);
    out.number(model_file_version);
    write_each(out, data.sources, [](Writer& to, const ModelSource& source) {
        to.text(source.name);
        to.hash(source.content);
    });
    write_each(out, data.pictures, write_picture);
    write_each(out, data.materials, write_material);
    write_each(out, data.meshes, write_mesh);
    write_each(out, data.nodes, write_node);
    write_each(out, data.actions, write_action);
    return out.take();
}

Result<ModelPtr> read_model(const QByteArray& file)
{
    if (file.size() > ModelLimits::file_size)
        return Status::error(lang(u"模型过大", u"the model is too large"));
    Reader in(file);
    const char* begin = in.bytes(magic_size);
    if (!begin || std::memcmp(begin, magic, magic_size) != 0 || in.number<quint32>() != model_file_version)
        return damaged();
    ModelData data;
    in.each(data.sources, ModelLimits::sources, [&](ModelSource& source) {
        source.name = in.text();
        source.content = in.hash();
    });
    qint64 picture_bytes = ModelLimits::picture_bytes;
    in.each(data.pictures, ModelLimits::pictures, [&](ModelPicture& item) { read_picture(in, item, picture_bytes); });
    in.each(data.materials, ModelLimits::materials, [&](ModelMaterial& item) { read_material(in, item); });
    in.each(data.meshes, ModelLimits::meshes, [&](ModelMesh& item) { read_mesh(in, item); });
    in.each(data.nodes, ModelLimits::nodes, [&](ModelNode& item) { read_node(in, item); });
    qsizetype tracks = ModelLimits::tracks;
    in.each(data.actions, ModelLimits::actions, [&](ModelAction& item) { read_action(in, item, tracks); });
    if (in.failed() || !in.at_end())
        return damaged();
    return Model::make(std::move(data));
}

} // namespace tarn
