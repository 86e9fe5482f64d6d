#include "widgets/iconfun.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QPalette>

#include <gtest/gtest.h>

namespace {

QImage picture(int number, int size = 16, qreal dpr = 1)
{
    return iconfun::pixmap(number, size, dpr).toImage();
}

QColor top_of(int number)
{
    return picture(number).pixelColor(8, 3);
}

} // namespace

TEST(Iconfun, the_table_knows_theme_icons_and_own_ones)
{
    EXPECT_TRUE(iconfun::has_icon(1));
    EXPECT_TRUE(iconfun::has_icon(2)) << "a comment behind a name does not belong to it";
    for (const int missing : {3, 4, 5, 99, 0, -1})
        EXPECT_FALSE(iconfun::has_icon(missing)) << missing;
    EXPECT_TRUE(iconfun::has_icon(6)) << "lines that make no sense do not end the table";
}

TEST(Iconfun, missing_icons_all_get_the_same_placeholder)
{
    const QImage placeholder = picture(99);
    EXPECT_EQ(placeholder.size(), QSize(16, 16));
    EXPECT_EQ(picture(3), placeholder);
    EXPECT_EQ(picture(4), placeholder);
    EXPECT_EQ(iconfun::named(QStringLiteral("no-such-icon-anywhere")).pixmap(16).toImage(), placeholder);
    EXPECT_EQ(iconfun::named(QStringLiteral("own:bar.svg")).pixmap(16).toImage(), placeholder);
    EXPECT_NE(picture(1), placeholder);
    EXPECT_NE(picture(2), placeholder);
}

TEST(Iconfun, own_icons_take_the_text_colour_of_the_theme_and_keep_their_others)
{
    const QIcon made_before = iconfun::icon(2);
    for (const auto theme : {tarn::Theme::Dark, tarn::Theme::Light}) {
        tarn::apply_theme(*qApp, theme);
        const QColor text = QApplication::palette().color(QPalette::WindowText);
        EXPECT_EQ(top_of(2), text);
        EXPECT_EQ(made_before.pixmap(16).toImage().pixelColor(8, 3), text);
        EXPECT_EQ(picture(2).pixelColor(8, 13), QColor(255, 0, 0));
        const QColor disabled = made_before.pixmap(16, QIcon::Disabled).toImage().pixelColor(8, 3);
        EXPECT_LT(disabled.alpha(), 128);
    }
}

TEST(Iconfun, theme_icons_follow_the_theme)
{
    tarn::apply_theme(*qApp, tarn::Theme::Dark);
    EXPECT_TRUE(tarn::is_dark());
    const QImage on_dark = picture(1);
    tarn::apply_theme(*qApp, tarn::Theme::Light);
    EXPECT_FALSE(tarn::is_dark());
    EXPECT_NE(picture(1), on_dark);
}

TEST(Iconfun, pixmaps_are_sharp_at_every_device_ratio)
{
    for (const int number : {1, 2, 99}) {
        const QPixmap pixmap = iconfun::pixmap(number, 16, 2);
        EXPECT_EQ(pixmap.size(), QSize(32, 32)) << number;
        EXPECT_EQ(pixmap.devicePixelRatio(), 2) << number;
    }
}

TEST(Theme, system_is_either_and_colours_are_made_readable)
{
    tarn::apply_theme(*qApp, tarn::Theme::System);
    EXPECT_TRUE(QApplication::palette() == tarn::light_palette() || QApplication::palette() == tarn::dark_palette());
    tarn::apply_theme(*qApp, tarn::Theme::Light);

    const QColor dark(0x3a3c42);
    EXPECT_EQ(tarn::readable_on(Qt::blue, Qt::white, 3), QColor(Qt::blue));
    EXPECT_GT(tarn::readable_on(Qt::blue, dark, 3).green(), 60);
    EXPECT_LT(tarn::readable_on(Qt::yellow, Qt::white, 3).green(), 200);
}
