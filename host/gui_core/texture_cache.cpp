#include "texture_cache.h"

#include <QBuffer>
#include <QFileInfo>
#include <QImageReader>

namespace tarn {

namespace {

QImage decode(const QByteArray& encoded)
{
    QBuffer buffer;
    buffer.setData(encoded);
    QImageReader reader(&buffer);
    const QSize size = reader.size();
    // The header is looked at first: a small file may claim a picture that fills the memory.
    if (size.width() > TextureCache::max_side || size.height() > TextureCache::max_side)
        return {};
    const QImage image = reader.read();
    return image.isNull() ? image : image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
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

QImage TextureCache::image(const QString& name, const QByteArray& encoded)
{
    if (const Picture* known = m_pictures.object(name); known && known->encoded.constData() == encoded.constData())
        return known->image;
    QImage image = decode(encoded);
    m_pictures.insert(name, new Picture{encoded, image}, image.sizeInBytes());
    return image;
}

} // namespace tarn
