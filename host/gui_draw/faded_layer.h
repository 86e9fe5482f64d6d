#pragma once

#include <QImage>
#include <QPainter>
#include <QRectF>

#include <optional>

namespace tarn {

/// Something that is drawn apart and then laid over the rest as a whole, in a colour and with a transparency: what lies
/// below another part of it does not shine through that. With white and without transparency it draws straight on.
class FadedLayer {
public:
    /// `bounds`, in the target's present coordinates, holds all that is drawn and shall be seen.
    FadedLayer(QPainter& target, const QRectF& bounds, quint32 color, float transparency);
    /// Lays it over the target.
    ~FadedLayer();
    FadedLayer(const FadedLayer&) = delete;
    FadedLayer& operator=(const FadedLayer&) = delete;

    /// What draws it, with the target's coordinates and hints.
    QPainter& painter() { return m_painter ? *m_painter : m_target; }

private:
    QPainter& m_target;
    quint32 m_color;
    float m_transparency;
    QImage m_image;  ///< null: there is nothing to be drawn apart
    QPoint m_corner; ///< of the picture, pixels of the device
    std::optional<QPainter> m_painter;
};

} // namespace tarn
