#include "picture_file.h"

#include "core/language.h"
#include "gui_core/gui_core.h"
#include "gui_core/texture_name.h"
#include "gui_draw/texture_cache.h"
#include "store/in_worker.h"
#include "store/pak_rules.h"
#include "store/plain_file.h"

#include <QFileInfo>

namespace tarn {

namespace {

constexpr qint64 largest_file = 64 * 1024 * 1024;

Status unreadable(const QString& path, const QString& reason)
{
    return Status::error(lang(u"无法读取图片 %1：%2", u"The picture %1 cannot be read: %2").arg(path, reason));
}

} // namespace

Result<QByteArray> read_picture_file(const QString& path)
{
    auto content = read_plain_file(path, largest_file);
    return content ? content : unreadable(path, content.status().message());
}

namespace {

struct FoundPicture {
    QByteArray encoded;
    QImage image;
};

Result<FoundPicture> find_picture(const QString& path)
{
    const auto encoded = read_picture_file(path);
    if (!encoded)
        return encoded.status();
    const QImage image = TextureCache().image(QFileInfo(path).fileName(), encoded.value());
    if (image.isNull())
        return Status::error(lang(u"%1 不是可用的图片（边长不超过 %2 像素）。",
                                  u"%1 is no picture that can be used (up to %2 pixels a side).")
                                 .arg(path)
                                 .arg(TextureCache::max_side));
    return FoundPicture{encoded.value(), image};
}

/// Reads and decodes in another thread, while this one tells `progress`.
Result<FoundPicture> find_picture(const QString& path, const Progress& progress)
{
    return in_worker(progress, [&](const Progress& part) {
        auto picture = find_picture(path);
        return part.go_on(1) ? picture : Result<FoundPicture>(stopped());
    });
}

} // namespace

Result<QImage> load_picture(const QString& path, const Progress& progress)
{
    const auto found = find_picture(path, progress);
    return found ? Result<QImage>(found.value().image) : found.status();
}

Result<QString> take_picture(CGuiCore& core, const QString& path, const Progress& progress)
{
    const auto found = find_picture(path, progress);
    if (!found)
        return found.status();
    QString wanted = QFileInfo(path).fileName();
    if (!check_entry_name(texture_entry(wanted)))
        wanted = QStringLiteral("picture");
    return core.add_texture(wanted, found.value().encoded);
}

} // namespace tarn
