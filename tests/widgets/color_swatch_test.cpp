#include "widgets/color_swatch.h"

#include <QImage>
#include <QSet>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

/// The colours in the middle of the swatch, away from its frame.
QSet<QRgb> shown(CColorSwatch& swatch)
{
    swatch.resize(40, 24);
    const QImage image = swatch.grab(QRect(6, 6, 28, 12)).toImage();
    QSet<QRgb> colors;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            colors.insert(image.pixel(x, y));
    return colors;
}

} // namespace

TEST(ColorSwatch, shows_an_opaque_colour_plain_and_others_over_a_pattern)
{
    CColorSwatch swatch;
    swatch.set_color(0xff336699);
    EXPECT_EQ(shown(swatch), QSet<QRgb>{0xff336699});
    swatch.set_color(0x80336699);
    EXPECT_EQ(shown(swatch).size(), 2);
    const QSet<QRgb> half = shown(swatch);
    swatch.set_color(0x00336699);
    EXPECT_FALSE(shown(swatch).intersects(half));
    EXPECT_EQ(swatch.argb(), 0x00336699u) << "the colour is kept where it cannot be seen";
    EXPECT_EQ(swatch.property("color").value<QColor>().rgba(), 0x00336699u);
}

TEST(ColorSwatch, is_clicked_with_mouse_and_space_unless_disabled)
{
    CColorSwatch swatch;
    swatch.resize(40, 24);
    const QSignalSpy clicks(&swatch, &CColorSwatch::clicked);
    QTest::mouseClick(&swatch, Qt::LeftButton);
    QTest::keyClick(&swatch, Qt::Key_Space);
    EXPECT_EQ(clicks.size(), 2);
    swatch.setEnabled(false);
    QTest::mouseClick(&swatch, Qt::LeftButton);
    EXPECT_EQ(clicks.size(), 2);
}
