#include "atlas.h"

#include "core/language.h"
#include "look_parts.h"
#include "skin_sheet.h"

#include <QBuffer>
#include <QCryptographicHash>
#include <QImageReader>
#include <QMap>

#include <algorithm>
#include <utility>

namespace tarn {

namespace {

struct Patch {
    QRect cell;
    QByteArray png;

    bool operator==(const Patch&) const = default;
};

/// By their corners.
using Patches = QMap<std::pair<int, int>, Patch>;

constexpr int dots_per_meter = 3780; ///< of every picture alike, whatever display it was made on

QByteArray encoded(QImage image)
{
    image.setDotsPerMeterX(dots_per_meter);
    image.setDotsPerMeterY(dots_per_meter);
    QByteArray png;
    QBuffer buffer(&png);
    image.save(&buffer, "PNG");
    return png;
}

/// Copies the pixels as they are: a painter would multiply them with their alpha.
void copy_pixels(QImage& onto, QPoint place, const QImage& from, const QRect& part)
{
    const QRect fitting = part & from.rect() & onto.rect().translated(part.topLeft() - place);
    for (int y = fitting.top(); y <= fitting.bottom(); ++y) {
        const auto* source = reinterpret_cast<const QRgb*>(from.constScanLine(y)) + fitting.left();
        auto* target = reinterpret_cast<QRgb*>(onto.scanLine(y - part.top() + place.y())) + fitting.left() - part.left()
            + place.x();
        std::copy_n(source, fitting.width(), target);
    }
}

QImage transparent(QSize size)
{
    QImage image(size, QImage::Format_ARGB32);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

struct Atlas::Data {
    QImage base;
    QByteArray base_png; ///< as it was read; empty where there is none
    Patches patches;
};

Atlas::Atlas(const QImage& picture)
    : m_data(std::make_shared<const Data>(Data{picture.convertToFormat(QImage::Format_ARGB32), {}, {}}))
{
}

Result<Atlas> Atlas::read(const QByteArray& png)
{
    QBuffer buffer;
    buffer.setData(png);
    QImageReader reader(&buffer, "png");
    const QSize size = reader.size(); // Before anything is unpacked: a small file may claim to fill the memory.
    const bool fits = size.width() == width && size.height() >= of_program().size().height()
        && size.height() <= max_height;
    const QImage image = fits ? reader.read() : QImage();
    if (image.size() != size || image.isNull())
        return Status::error(lang(u"它的图片不可用", u"its picture cannot be used"));
    Atlas atlas;
    atlas.m_data = std::make_shared<const Data>(Data{image.convertToFormat(QImage::Format_ARGB32), png, {}});
    return atlas;
}

const Atlas& Atlas::of_program()
{
    static const Atlas atlas(with_own_cells(default_sheet()));
    return atlas;
}

QSize Atlas::size() const
{
    return m_data ? m_data->base.size() : QSize();
}

QImage Atlas::picture() const
{
    if (!m_data)
        return {};
    QImage whole = m_data->base;
    for (const Patch& patch : m_data->patches) {
        const QImage content = QImage::fromData(patch.png, "PNG").convertToFormat(QImage::Format_ARGB32);
        copy_pixels(whole, patch.cell.topLeft(), content, content.rect());
    }
    return whole;
}

QImage Atlas::part(const QRect& rect) const
{
    QImage image = transparent(rect.size());
    if (!m_data)
        return image;
    copy_pixels(image, {0, 0}, m_data->base, rect);
    for (const Patch& patch : m_data->patches) {
        if (!patch.cell.intersects(rect))
            continue;
        const QImage content = QImage::fromData(patch.png, "PNG").convertToFormat(QImage::Format_ARGB32);
        const QRect shared = patch.cell & rect;
        copy_pixels(image, shared.topLeft() - rect.topLeft(), content, shared.translated(-patch.cell.topLeft()));
    }
    return image;
}

void Atlas::put(const QRect& cell, const QImage& content)
{
    Data data = m_data ? *m_data : Data();
    QImage image = transparent(cell.size());
    const QImage straight = content.convertToFormat(QImage::Format_ARGB32);
    copy_pixels(image, {0, 0}, straight, straight.rect());
    data.patches.insert({cell.x(), cell.y()}, {cell, encoded(image)});
    m_data = std::make_shared<const Data>(std::move(data));
}

QByteArray Atlas::png() const
{
    if (!m_data)
        return {};
    return m_data->patches.isEmpty() && !m_data->base_png.isEmpty() ? m_data->base_png : encoded(picture());
}

bool Atlas::operator==(const Atlas& other) const
{
    if (m_data == other.m_data)
        return true;
    if (!m_data || !other.m_data)
        return false;
    const bool same_base = m_data->base.cacheKey() == other.m_data->base.cacheKey();
    return (same_base && m_data->patches == other.m_data->patches) || picture() == other.picture();
}

std::size_t Atlas::bytes_beside(const Atlas& other) const
{
    if (!m_data || m_data == other.m_data)
        return 0;
    static const Data none;
    const Data& theirs = other.m_data ? *other.m_data : none;
    const bool own_base = m_data->base.cacheKey() != theirs.base.cacheKey()
        && m_data->base.cacheKey() != of_program().m_data->base.cacheKey();
    std::size_t bytes = sizeof(Data) + (own_base ? std::size_t(m_data->base.sizeInBytes()) : 0);
    for (auto patch = m_data->patches.begin(); patch != m_data->patches.end(); ++patch) {
        bytes += sizeof(Patch) + 4 * sizeof(void*);
        const auto same = theirs.patches.find(patch.key());
        if (same == theirs.patches.end() || same->png.constData() != patch->png.constData())
            bytes += std::size_t(patch->png.size());
    }
    return bytes;
}

void FieldType<Atlas>::write(const Atlas& atlas, JsonWriter& writer)
{
    const QByteArray print = QCryptographicHash::hash(atlas.png(), QCryptographicHash::Md5).toHex();
    writer.value(atlas.is_null() ? QString() : QString::fromLatin1(print));
}

Status FieldType<Atlas>::from_value(const Value&, const FieldRules&, Atlas&)
{
    return Status::error(lang(u"图集不能这样修改", u"an atlas cannot be changed in this way"));
}

} // namespace tarn
