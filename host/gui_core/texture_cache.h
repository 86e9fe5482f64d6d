#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QString>

#include <functional>

namespace tarn {

/// The package entry that holds the picture `name`.
inline QString texture_entry(const QString& name)
{
    return QStringLiteral("textures/") + name;
}

/// A name like `taken`, "folder/name-2.png", for which `is_free` holds.
QString free_picture_name(const QString& taken, const std::function<bool(const QString&)>& is_free);

/// Decoded pictures of a scene. The encoded bytes belong to the scene's state; a picture whose bytes were exchanged is
/// decoded anew.
class TextureCache {
public:
    /// The picture decoded from `encoded`; null when it cannot be read or has a side over max_side.
    const QImage& image(const QString& name, const QByteArray& encoded);
    void clear() { m_pictures.clear(); }

    static constexpr int max_side = 8192; ///< pixels

private:
    struct Picture {
        QByteArray encoded; ///< shared with the state, so that its address stays taken
        QImage image;
    };
    QHash<QString, Picture> m_pictures;
};

} // namespace tarn
