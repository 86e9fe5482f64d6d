#include "picture_reader.h"

#include "model_folder.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>

#include <assimp/scene.h>

#include <algorithm>

namespace tarn {

namespace {

constexpr int usual_side = 2048; ///< pixels; larger pictures are reduced
constexpr int largest_side = 16'384;

QSize reduced(QSize size, int side)
{
    return std::max(size.width(), size.height()) <= side ? size : size.scaled(side, side, Qt::KeepAspectRatio);
}

QSize at_least_a_pixel(QSize size)
{
    return size.expandedTo({1, 1});
}

QImage decoded(const QByteArray& file)
{
    QBuffer buffer;
    buffer.setData(file);
    QImageReader reader(&buffer);
    // Drawings could name other files.
    if (reader.format().startsWith("svg"))
        return {};
    // The header is looked at first: a small file may claim a picture that fills the memory.
    const QSize size = reader.size();
    if (std::max(size.width(), size.height()) > largest_side)
        return {};
    if (size.isValid() && reduced(size, usual_side) != size)
        reader.setScaledSize(at_least_a_pixel(reduced(size, usual_side)));
    const QImage image = reader.read();
    return std::max(image.width(), image.height()) > usual_side ? QImage()
                                                                : image.convertToFormat(QImage::Format_RGBA8888);
}

QByteArray hash_of(const QByteArray& bytes)
{
    return QCryptographicHash::hash(bytes, QCryptographicHash::Sha256);
}

QImage scaled_to(const QImage& image, int side)
{
    const QSize size = at_least_a_pixel(reduced(image.size(), side));
    return size == image.size()
        ? image
        : image.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation).convertToFormat(QImage::Format_RGBA8888);
}

} // namespace

ModelPicture PictureReader::embedded(const aiTexture& texture) const
{
    ModelPicture picture;
    picture.name = QString::fromUtf8(texture.mFilename.C_Str());
    if (texture.mHeight == 0) {
        const QByteArray file = QByteArray::fromRawData(reinterpret_cast<const char*>(texture.pcData),
                                                        qsizetype(texture.mWidth));
        picture.content = hash_of(file);
        picture.image = decoded(file);
        return picture;
    }
    if (std::max(texture.mWidth, texture.mHeight) > unsigned(usual_side))
        return picture;
    QImage image(int(texture.mWidth), int(texture.mHeight), QImage::Format_RGBA8888);
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const aiTexel& texel = texture.pcData[std::size_t(y) * texture.mWidth + std::size_t(x)];
            const uchar bytes[4] = {texel.r, texel.g, texel.b, texel.a};
            std::copy_n(bytes, 4, image.scanLine(y) + x * 4);
        }
    picture.content = hash_of(QByteArray(reinterpret_cast<const char*>(image.constBits()), image.sizeInBytes()));
    picture.image = image;
    return picture;
}

qint32 PictureReader::add(ModelPicture picture)
{
    // What was decoded is reduced only at the end, so that the sum of it is held, too.
    m_pixels += qint64(picture.image.width()) * picture.image.height();
    if (picture.image.isNull() || m_pixels * 4 > 4 * ModelLimits::picture_bytes
        || qsizetype(m_pictures.size()) >= ModelLimits::pictures)
        return -1;
    const int slash = int(picture.name.lastIndexOf(QLatin1Char('/')));
    picture.name = picture.name.mid(slash + 1).left(ModelLimits::name_length);
    m_pictures.push_back(std::move(picture));
    return qint32(m_pictures.size() - 1);
}

qint32 PictureReader::find(const QString& name)
{
    if (const auto known = m_known.find(name); known != m_known.end())
        return known->second;
    qint32 number = -1;
    if (const aiTexture* texture = m_scene.GetEmbeddedTexture(name.toUtf8().constData())) {
        number = add(embedded(*texture));
    } else if (const QByteArray file = m_folder.read(name); !file.isNull()) {
        QString plain = name;
        plain.replace(QLatin1Char('\\'), QLatin1Char('/'));
        number = add({plain, hash_of(file), decoded(file)});
    }
    m_known.emplace(name, number);
    return number;
}

std::vector<ModelPicture> PictureReader::take()
{
    for (int side = usual_side; side > 0; side /= 2) {
        qint64 bytes = 0;
        for (const ModelPicture& picture : m_pictures) {
            const QSize size = at_least_a_pixel(reduced(picture.image.size(), side));
            bytes += qint64(size.width()) * size.height() * 4;
        }
        if (bytes > ModelLimits::picture_bytes)
            continue;
        for (ModelPicture& picture : m_pictures)
            picture.image = scaled_to(picture.image, side);
        break;
    }
    return std::move(m_pictures);
}

} // namespace tarn
