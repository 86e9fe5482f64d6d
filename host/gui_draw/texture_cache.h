#pragma once

#include "kept_drawing.h"

#include <QByteArray>
#include <QCache>
#include <QImage>
#include <QSize>
#include <QString>

class CGuiCore;

namespace tarn {

/// Decoded pictures of a scene; those not asked for the longest go when all of them take more than `budget` bytes. The
/// encoded bytes belong to the scene's state; a picture whose bytes were exchanged is decoded anew.
class TextureCache : public DrawCache {
public:
    explicit TextureCache(qsizetype budget = 256 * 1024 * 1024) : m_pictures(budget) {}

    /// The picture decoded from `encoded`; null when it cannot be read or has a side over max_side. A large one has a
    /// fraction of its pixels when `shown`, the device pixels that it is drawn into, are as few; an invalid size asks
    /// for all of them.
    QImage image(const QString& name, const QByteArray& encoded, QSize shown = {});
    qsizetype bytes() const { return m_pictures.totalCost(); }

    static constexpr int max_side = 8192; ///< pixels

private:
    struct Picture {
        QByteArray encoded; ///< shared with the state, so that its address stays taken
        QSize size;         ///< pixels before it was halved
        int halvings = 0;
        QImage image;
    };
    static Picture decode(const QByteArray& encoded, QSize shown);

    QCache<QString, Picture> m_pictures;
};

/// A picture of the scene, decoded; null when there is none of that name or it cannot be read. With `shown`, the device
/// pixels that it is drawn into, a large one may come with fewer pixels than it has.
QImage texture(const CGuiCore& core, const QString& name, QSize shown = {});

} // namespace tarn
