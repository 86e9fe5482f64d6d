#pragma once

#include <QImage>
#include <QPointF>
#include <QString>

class CDXUTFlash;

namespace tarn {

/// Who plays the movies of an interface.
class MovieLink {
public:
    virtual ~MovieLink() = default;

    /// What the control's movie looks like; null while there is nothing to be seen of it. It comes to be `pixels` large.
    virtual QImage picture(const CDXUTFlash& control, QSize pixels) = 0;
    /// Why the control's movie is not to be seen; empty when nothing is known against it.
    virtual QString failure(const CDXUTFlash& control) const = 0;
    /// Whether the movie plays, and can be asked for something.
    virtual bool is_played(const CDXUTFlash& control) const = 0;

    enum class Mouse { Enter, Move, Press, Release, Leave };
    /// `inside`: pixels from the control's corner.
    virtual void mouse(const CDXUTFlash& control, Mouse what, QPointF inside) = 0;
    virtual void wheel(const CDXUTFlash& control, double steps) = 0;
    /// A key goes down or up: its names on pages of the web, for what it types or does, and for where it is.
    virtual void key(const CDXUTFlash& control, bool down, const QString& key, const QString& code) = 0;
};

} // namespace tarn
