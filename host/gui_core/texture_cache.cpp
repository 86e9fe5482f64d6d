#include "texture_cache.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>

#include <algorithm>
#include <memory>

namespace tarn {

namespace {

constexpr qint64 large_area = 4 * 1024 * 1024; ///< pixels; what has fewer is never halved

/// How often the picture can be halved and still have a pixel for each that is shown.
int halvings_for(QSize size, QSize shown)
{
    if (!shown.isValid() || qint64(size.width()) * size.height() < large_area)
        return 0;
    int count = 0;
    while (size.width() >> (count + 1) >= std::max(1, shown.width())
           && size.height() >> (count + 1) >= std::max(1, shown.height()))
        ++count;
    return count;
}

bool is_too_large(QSize size)
{
    return size.width() > TextureCache::max_side || size.height() > TextureCache::max_side;
}

} // namespace

QString free_picture_name(const QString& taken, const std::function<bool(const QString&)>& is_free)
{
    const QFileInfo info(taken);
    const QString folder = info.path() == QLatin1String(".") ? QString() : info.path() + QLatin1Char('/');
    const QString suffix = info.suffix().isEmpty() ? QString() : QLatin1Char('.') + info.suffix();
    for (int i = 2;; ++i) {
        const QString name = folder + info.completeBaseName() + QLatin1Char('-') + QString::number(i) + suffix;
        if (is_free(name))
            return name;
    }
}

TextureCache::Picture TextureCache::decode(const QByteArray& encoded, QSize shown)
{
    QBuffer buffer;
    buffer.setData(encoded);
    QImageReader reader(&buffer);
    Picture picture;
    picture.encoded = encoded;
    picture.size = reader.size();
    // The header is looked at first: a small file may claim a picture that fills the memory.
    if (is_too_large(picture.size))
        return picture;
    picture.halvings = halvings_for(picture.size, shown);
    if (picture.halvings > 0)
        reader.setScaledSize({picture.size.width() >> picture.halvings, picture.size.height() >> picture.halvings});
    picture.image = reader.read();
    if (is_too_large(picture.image.size())) // Some headers do not tell the size.
        picture.image = {};
    if (!picture.image.isNull())
        picture.image.convertTo(QImage::Format_ARGB32_Premultiplied);
    return picture;
}

QImage TextureCache::image(const QString& name, const QByteArray& encoded, QSize shown)
{
    if (const Picture* known = m_pictures.object(name); known && known->encoded.constData() == encoded.constData()
        && known->halvings <= halvings_for(known->size, shown))
        return known->image;
    auto decoded = std::make_unique<Picture>(decode(encoded, shown));
    const QImage image = decoded->image;
    m_pictures.insert(name, decoded.release(), image.sizeInBytes());
    return image;
}

} // namespace tarn
