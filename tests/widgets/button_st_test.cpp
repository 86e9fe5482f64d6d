#include "widgets/button_st.h"
#include "widgets/theme.h"

#include <QApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

namespace {

// Whether any pixel is nearly of this colour.
bool shows(const QImage& image, const QColor& color)
{
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x) {
            const QColor c = image.pixelColor(x, y);
            const int distance = std::abs(c.red() - color.red()) + std::abs(c.green() - color.green())
                + std::abs(c.blue() - color.blue());
            if (distance < 60)
                return true;
        }
    return false;
}

} // namespace

TEST(ButtonST, text_colours_have_red_in_the_low_byte)
{
    CButtonST button;
    button.setText(QStringLiteral("MMMM"));
    button.resize(button.sizeHint());
    EXPECT_EQ(button.text_color(), 0u);
    button.SetColor(CButtonST::normal_text_color, 0xff0000);
    EXPECT_EQ(button.text_color(), 0x0000ffu);
    EXPECT_TRUE(shows(button.grab().toImage(), Qt::blue));
    button.SetColor(CButtonST::normal_text_color, 0x0000c8);
    EXPECT_TRUE(shows(button.grab().toImage(), QColor(200, 0, 0)));
    button.SetColor(1, 0x00ff00);
    EXPECT_EQ(button.text_color(), 0xc80000u);
    button.SetColor(CButtonST::normal_text_color, 0);
    EXPECT_EQ(button.text_color(), 0u);

    tarn::apply_theme(*qApp, tarn::Theme::Dark);
    EXPECT_TRUE(shows(button.grab().toImage(), button.palette().color(QPalette::ButtonText)))
        << "0 is the theme's colour, not black";
    tarn::apply_theme(*qApp, tarn::Theme::Light);
}

TEST(ButtonST, a_text_that_does_not_fit_is_the_tooltip)
{
    CButtonST button;
    button.setText(QStringLiteral("A long && winding label"));
    button.SetTooltipText(QStringLiteral("Goes on"));
    button.resize(button.sizeHint());
    EXPECT_FALSE(button.is_elided());
    EXPECT_EQ(button.shown_tooltip(), QStringLiteral("Goes on"));
    button.resize(60, button.height());
    EXPECT_TRUE(button.is_elided());
    EXPECT_EQ(button.shown_tooltip(), QStringLiteral("A long & winding label\nGoes on"));
    button.setText(QString());
    EXPECT_EQ(button.shown_tooltip(), QStringLiteral("Goes on"));
}

TEST(ButtonST, set_check_shows_a_state_without_a_click)
{
    CButtonST button;
    QSignalSpy clicked(&button, &QPushButton::clicked);
    button.SetCheck(true);
    EXPECT_TRUE(button.GetCheck());
    EXPECT_EQ(clicked.count(), 0);
    QTest::mouseClick(&button, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_TRUE(button.GetCheck()) << "on a button that is not checkable it is only shown";

    CButtonST toggle;
    toggle.setCheckable(true);
    toggle.setAutoExclusive(true);
    toggle.SetCheck(true);
    toggle.SetCheck(false);
    EXPECT_FALSE(toggle.GetCheck());
    QTest::mouseClick(&toggle, Qt::LeftButton);
    EXPECT_TRUE(toggle.GetCheck());
}

TEST(ButtonST, icons_follow_the_theme)
{
    CButtonST button;
    button.SetIcon(2);
    button.resize(button.sizeHint());
    const auto picture = [&] { return button.grab().toImage(); };
    EXPECT_TRUE(shows(picture(), tarn::light_palette().color(QPalette::WindowText)));
    tarn::apply_theme(*qApp, tarn::Theme::Dark);
    EXPECT_TRUE(shows(picture(), tarn::dark_palette().color(QPalette::WindowText)));
    tarn::apply_theme(*qApp, tarn::Theme::Light);
    EXPECT_TRUE(shows(picture(), tarn::light_palette().color(QPalette::WindowText)));
    button.SetIcon(0);
    EXPECT_TRUE(button.icon().isNull());
}
