#include "core/text_part.h"

#include <gtest/gtest.h>

using namespace tarn;
using namespace Qt::StringLiterals;

TEST(TextPart, is_the_begin_middle_or_end_of_a_long_text_and_all_of_a_short_one)
{
    QString text;
    for (int i = 0; i < 1000; ++i)
        text += QString::number(i % 10);
    EXPECT_EQ(text_part(text, 3, 0), u"012"_s);
    EXPECT_EQ(text_part(text, 3, 1), u"890"_s);
    EXPECT_EQ(text_part(text, 3, 2), u"789"_s);
    EXPECT_EQ(text_part(text, 1000, 1), text);
    EXPECT_EQ(text_part(u"short"_s, 1, 2), u"short"_s);
    const QString faces = u"😀"_s.repeated(400);
    EXPECT_TRUE(text_part(faces, 3, 2).isValidUtf16());
}

TEST(TextPart, piled_up_marks_are_thinned_and_ordinary_accents_stay)
{
    const QString pile = u"a"_s + QString(2000, QChar(0x301)) + u"b"_s;
    EXPECT_EQ(text_part(pile, 5000, 0), u"a"_s + QString(30, QChar(0x301)) + u"b"_s);
    const QString accents = u"e\u0301\u200d"_s.repeated(300);
    EXPECT_EQ(text_part(accents, 5000, 0), accents);
}

TEST(TextPart, of_lines_are_the_lines_that_show_each_for_itself)
{
    QString text = QString(1000, u'x') + u'\n';
    for (int i = 0; i < 5; ++i)
        text += u'\n' + QString::number(i);
    EXPECT_EQ(text_part(text, 3, 600, 0, 0), QString(600, u'x') + u"\n\n0"_s);
    EXPECT_EQ(text_part(text, 2, 600, 2, 0), u"3\n4"_s);
    EXPECT_EQ(text_part(text, 100, 5000, 1, 1), text);
    EXPECT_EQ(text_part(QString(1000, u'\n'), 3, 10, 0, 0), u"\n\n"_s);
}

TEST(TextPart, has_room_for_what_shows_and_is_bounded_in_any_area)
{
    EXPECT_GT(units_that_show({300, 200}, 14), 300 / 3 * 200 / 14);
    EXPECT_LE(units_that_show({1e9, 1e9}, 1), 50'000);
    EXPECT_GT(units_that_show({0, 0}, 0), 0);
}
