#pragma once

#include "gui_draw/gui_painter.h"
#include "support/gui_fixture.h"

#include <QPainter>

namespace tarn::test {

inline constexpr QRgb background = 0xff305070;

class DrawingTest : public GuiTest {
protected:
    DrawingTest() { m_core.set_screen_size({400, 300}); }

    QImage picture(double scale = 1)
    {
        QImage image(m_core.screen_size() * scale, QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(scale);
        image.fill(background);
        QPainter painter(&image);
        m_painter.paint(painter, m_core, QRectF(QPointF(), m_core.screen_size()), scale);
        return image;
    }
    /// Brings `image` up to date as a view does: only what is damaged is cleared and drawn.
    void repaint(QImage& image)
    {
        const QRectF damage = m_core.take_damage();
        QPainter painter(&image);
        painter.setClipRect(damage.toAlignedRect());
        painter.fillRect(image.rect(), QColor(background));
        m_painter.paint(painter, m_core, damage, 1);
    }
    /// Where the pictures differ. What is rotated is rounded a little differently where it is clipped differently.
    static QRect differing(const QImage& a, const QImage& b)
    {
        constexpr int level = 24;
        QRegion region;
        for (int y = 0; y < a.height(); ++y) {
            for (int x = 0; x < a.width(); ++x) {
                const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
                if (p != q
                    && std::max({std::abs(qRed(p) - qRed(q)), std::abs(qGreen(p) - qGreen(q)),
                                 std::abs(qBlue(p) - qBlue(q))})
                        > level)
                    region += QRect(x, y, 1, 1);
            }
        }
        return region.boundingRect();
    }
    static bool is_blank(const QImage& image)
    {
        QImage blank(image.size(), image.format());
        blank.fill(background);
        blank.setDevicePixelRatio(image.devicePixelRatio());
        return image == blank;
    }
    static void expect_all_differ(const std::vector<QImage>& pictures)
    {
        for (std::size_t i = 0; i < pictures.size(); ++i)
            for (std::size_t j = 0; j < i; ++j)
                EXPECT_NE(pictures[i], pictures[j]) << j << " and " << i;
    }

    GuiPainter m_painter;
};

} // namespace tarn::test
