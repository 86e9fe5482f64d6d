#include "tools/selection_overlay.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <random>
#include <span>

using namespace tarn;

namespace {

constexpr QSize view(160, 120);
constexpr QRgb line_color = 0xff2fb5c9;

/// Which pixels the lines around `frames` take in a view that shows the screen at `scale`, row by row.
std::vector<bool> lines(const std::vector<QRectF>& frames, double scale, double dpr)
{
    QImage image(view * dpr, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(dpr);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.scale(scale, scale);
    paint_frames(painter, frames);
    painter.end();
    std::vector<bool> taken;
    const std::span pixels(reinterpret_cast<const QRgb*>(image.constBits()), std::size_t(image.sizeInBytes() / 4));
    for (const QRgb pixel : pixels)
        taken.push_back(pixel == line_color);
    return taken;
}

/// Many of them in rows, over each other, without a width, and reaching far out of the screen.
std::vector<QRectF> many_frames(QPointF offset)
{
    std::mt19937 random(7);
    const auto number = [&](int low, int high) { return std::uniform_int_distribution(low, high)(random); };
    std::vector<QRectF> frames{{-4000, -3000, 9000, 8000}, {-1e9, 20, 2e9, 10}, {40, 40, 0, 12}};
    for (int i = 0; i < 120; ++i) {
        frames.emplace_back(i % 10 * 16, i / 10 * 10, 16, 22);
        const QPointF corner(number(-40, 170), number(-40, 130));
        frames.emplace_back(corner, QSizeF(number(0, 90), number(0, 60)));
    }
    for (QRectF& frame : frames)
        frame.translate(offset);
    return frames;
}

} // namespace

TEST(SelectionOverlay, outlines_many_frames_where_it_outlines_one)
{
    const std::pair<double, double> views[] = {{1, 1}, {1, 2}, {0.5, 2}};
    for (const auto& [scale, dpr] : views) {
        for (const QPointF offset : {QPointF(), QPointF(0.33, 0.71)}) {
            const auto frames = many_frames(offset);
            const auto together = lines(frames, scale, dpr);
            std::vector<bool> each(together.size());
            for (const QRectF& frame : frames) {
                const auto one = lines({frame}, scale, dpr);
                for (std::size_t i = 0; i < one.size(); ++i)
                    each[i] = each[i] || one[i];
            }
            std::size_t missing = 0;
            std::size_t added = 0;
            for (std::size_t i = 0; i < each.size(); ++i) {
                missing += each[i] && !together[i];
                added += together[i] && !each[i];
            }
            EXPECT_EQ(missing, 0u) << "scale " << scale << ", dpr " << dpr << ", off by " << offset.x();
            EXPECT_LE(added, frames.size()) << "no more than corners, some of which Qt leaves out";
        }
    }
}
