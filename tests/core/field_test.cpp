#include "core/field.h"
#include "support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tarn::cut_text;

namespace {

struct Cut {
    QString text;
    int units;
    QString kept;
};

} // namespace

TEST(CutText, never_cuts_inside_what_a_reader_sees_as_one_character)
{
    const QString family = u"👨‍👩‍👧"_s; // three surrogate pairs and two joiners: eight units
    const Cut cases[] = {
        {u"abc"_s, 3, u"abc"_s},
        {u"abcd"_s, 3, u"abc"_s},
        {u"ab"_s, 0, u""_s},
        {u"ab湖"_s, 3, u"ab湖"_s},
        {u"ab\U0001F600"_s, 3, u"ab"_s}, // a surrogate pair
        {u"ab\U0001F600"_s, 4, u"ab\U0001F600"_s},
        {u"abe\u0301"_s, 3, u"ab"_s},        // a combining mark
        {u"abe\u0301\u0323x"_s, 4, u"ab"_s}, // several of them
        {u"a👍🏽"_s, 3, u"a"_s},         // a skin tone
        {u"🇨🇳🇩🇪"_s, 6, u"🇨🇳"_s},             // flags are pairs of pairs
        {u"a"_s + family, 8, u"a"_s},
        {u"a"_s + family + u"b"_s, 9, u"a"_s + family},
        {family, 5, u""_s}, // nothing fits
        {u"a\r\nb"_s, 2, u"a"_s},
        {u"ab"_s + QString(2000, QChar(0x301)), 1000, u"a"_s},
    };
    for (const Cut& c : cases)
        EXPECT_EQ(cut_text(c.text, c.units), c.kept) << c.text.toStdString() << " to " << c.units;
}

TEST(CutText, of_any_length_gives_a_text_that_survives_utf8)
{
    const QString text = u"湖e\u0301\U0001F600👨‍👩‍👧🇨🇳x\u0323\u0301ไม่각"_s;
    for (int units = 0; units <= text.size(); ++units) {
        const QString cut = cut_text(text, units);
        EXPECT_LE(cut.size(), units);
        EXPECT_TRUE(text.startsWith(cut));
        EXPECT_EQ(QString::fromUtf8(cut.toUtf8()), cut) << units;
    }
}
