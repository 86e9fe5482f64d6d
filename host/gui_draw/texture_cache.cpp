#include "texture_cache.h"

#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"

#include <QBuffer>
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

QImage texture(const CGuiCore& core, const QString& name, QSize shown)
{
    const auto& files = core.document().files();
    const auto encoded = files.find(texture_entry(name));
    return encoded == files.end() ? QImage() : kept_in<TextureCache>(core.draw_slot()).image(name, *encoded, shown);
}

} // namespace tarn
