#include "gui_draw/text_cache.h"

#include <QImage>
#include <QPainter>

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>

using namespace tarn;
using namespace Qt::StringLiterals;

namespace {

constexpr QRectF area(20.3, 11.8, 160, 60);

QImage canvas(double scale)
{
    QImage image(QSize(220, 90) * scale, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::transparent);
    return image;
}

QImage drawn(TextCache& cache, const TextLook& look, double scale, QPointF offset = {},
             const QString& text = u"Afjö 雾"_s)
{
    QImage image = canvas(scale);
    QPainter painter(&image);
    painter.translate(offset);
    cache.draw(painter, area, text, look);
    return image;
}

/// The same from glyphs; `look` stands at the top left.
QImage from_glyphs(const TextLook& look, double scale, QPointF offset = {})
{
    QImage image = canvas(scale);
    QPainter painter(&image);
    const QPointF place = area.topLeft() + offset;
    QStaticText text(u"Afjö 雾"_s);
    text.setTextFormat(Qt::PlainText);
    painter.setFont(interface_font(look.font_size, look.bold, look.family, look.italic));
    if (look.shadow) {
        painter.setPen(QColor(0, 0, 0, 170));
        painter.drawStaticText(place + QPointF(1, 1), text);
    }
    painter.setPen(QColor::fromRgba(look.color));
    painter.drawStaticText(place, text);
    return image;
}

bool is_blank(const QImage& image)
{
    return image == canvas(image.devicePixelRatio());
}

/// The widest step between two pixels of one place.
int difference(const QImage& a, const QImage& b)
{
    int widest = 0;
    for (qsizetype i = 0; i < a.sizeInBytes(); ++i)
        widest = std::max(widest, std::abs(a.constBits()[i] - b.constBits()[i]));
    return widest;
}

} // namespace

TEST(TextCache, draws_what_the_glyphs_would_between_pixels_and_at_any_scale)
{
    constexpr int rounding = 3;
    const TextLook looks[] = {{.font_size = 14},
                              {.color = 0x80ff4020, .font_size = 23, .shadow = true},
                              {.font_size = 30, .bold = true, .italic = true}};
    for (const TextLook& look : looks) {
        TextCache cache;
        for (const double scale : {1.0, 2.0, 1.5}) {
            for (const QPointF offset : {QPointF(0, 0), QPointF(3, 2), QPointF(0.5, 0.25), QPointF(-7.3, -4.9)}) {
                const QImage expected = from_glyphs(look, scale, offset);
                ASSERT_FALSE(is_blank(expected));
                EXPECT_LE(difference(drawn(cache, look, scale, offset), expected), rounding)
                    << look.font_size << " at scale " << scale << ", moved by " << offset.x() << ", " << offset.y();
            }
        }
    }
}

TEST(TextCache, shows_another_colour_text_or_shadow_at_once)
{
    TextCache cache;
    const QImage plain = drawn(cache, {}, 1);
    const QImage red = drawn(cache, {.color = 0xffff0000}, 1);
    const QImage shaded = drawn(cache, {.shadow = true}, 1);
    EXPECT_NE(plain, red);
    EXPECT_NE(plain, shaded);
    EXPECT_EQ(drawn(cache, {}, 1), plain);
    EXPECT_NE(drawn(cache, {}, 1, {}, u"other"_s), plain);
    EXPECT_TRUE(is_blank(drawn(cache, {}, 1, {}, u"   "_s)));
    EXPECT_EQ(drawn(cache, {}, 1), plain);
}

TEST(TextCache, draws_texts_too_large_for_a_picture_and_turned_ones)
{
    QImage image(1400, 700, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    TextCache cache;
    {
        QPainter painter(&image);
        cache.draw(painter, QRectF(0, 0, 1400, 700), u"WWW"_s, {.font_size = 400});
    }
    EXPECT_GT(std::count(image.constBits(), image.constBits() + image.sizeInBytes(), 255), 50'000);

    TextCache turned;
    QImage small = canvas(1);
    QPainter painter(&small);
    painter.rotate(20);
    turned.draw(painter, area, u"turned"_s, {});
    painter.end();
    EXPECT_FALSE(is_blank(small));
    EXPECT_NE(small, drawn(turned, {}, 1, {}, u"turned"_s));
}

TEST(TextCache, shows_of_an_endless_text_what_showed_of_all_of_it)
{
    const QString numbers = [] {
        QString text;
        for (int i = 0; i < 1500; ++i)
            text += u"\n%1 and words that go on behind the edge"_s.arg(i);
        return text;
    }();
    for (const bool wraps : {true, false})
        for (const int side : {0, 2}) {
            const TextLook look{.horizontal_align = side, .vertical_align = side, .word_wrap = wraps};
            // Few enough to be laid out as a whole, and many more where they cannot show.
            const QString more = u"\nmuch more "_s.repeated(20'000);
            const QString endless = side == 0 ? numbers + more : more + numbers;
            TextCache whole;
            TextCache part;
            EXPECT_EQ(drawn(part, look, 1, {}, endless), drawn(whole, look, 1, {}, numbers)) << wraps << side;
        }
    const TextLook lines{.vertical_align = 2};
    TextCache whole;
    TextCache part;
    EXPECT_EQ(drawn(part, lines, 1, {}, u"line\n"_s.repeated(100'000) + u"the last"_s),
              drawn(whole, lines, 1, {}, u"line\n"_s.repeated(20) + u"the last"_s));
}
