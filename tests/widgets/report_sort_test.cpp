#include "widgets/report_sort.h"

#include <QCollator>
#include <QLocale>
#include <QRegularExpression>

#include <gtest/gtest.h>

#include <numeric>
#include <random>

using namespace tarn;

namespace {

std::vector<QString> sorted(const std::vector<QString>& texts, const std::vector<int>& order)
{
    std::vector<QString> result;
    for (const int i : order)
        result.push_back(texts[size_t(i)]);
    return result;
}

std::vector<QString> texts_of(const QString& words)
{
    const QStringList list = words.split(u' ');
    return {list.begin(), list.end()};
}

// What the collator alone says, without any keys.
std::vector<int> plain_order(const std::vector<QString>& texts, bool ascending, const QCollator& collator)
{
    std::vector<int> order(texts.size());
    std::iota(order.begin(), order.end(), 0);
    std::stable_sort(order.begin(), order.end(), [&](int a, int b) {
        const int c = collator.compare(texts[size_t(a)], texts[size_t(b)]);
        return ascending ? c < 0 : c > 0;
    });
    return order;
}

} // namespace

TEST(ReportSort, case_and_accents_decide_only_between_equal_letters)
{
    const auto texts = texts_of(QStringLiteral("Zebra apple Élan eland \u00e9lan Apple elan zebra \u00e9cru ab Aa"));
    const auto order = text_order(texts, true, QCollator(QLocale(QStringLiteral("en_US"))));
    const auto wanted = texts_of(QStringLiteral("Aa ab apple Apple \u00e9cru elan \u00e9lan Élan eland zebra Zebra"));
    EXPECT_EQ(sorted(texts, order), wanted);
}

TEST(ReportSort, keys_agree_with_the_collator_in_every_language)
{
    // Letter pairs that sort as one (cs), letters that stand for two (de), letters behind z (sv), Chinese, and text
    // beyond the basic plane.
    const QStringList pieces{
        QStringLiteral("c"),       QStringLiteral("ch"), QStringLiteral("h"),  QStringLiteral("i"),
        QStringLiteral("ß"),       QStringLiteral("ss"), QStringLiteral("ä"),  QStringLiteral("a"),
        QStringLiteral("Z"),       QStringLiteral("å"),  QStringLiteral("æ"),  QStringLiteral("按钮"),
        QStringLiteral("窗口"),    QStringLiteral("一"), QStringLiteral("0"),  QStringLiteral("10"),
        QStringLiteral(" "),       QStringLiteral("-"),  QStringLiteral("_"),  QStringLiteral("😀"),
        QStringLiteral("e\u0301"), QStringLiteral("é"),  QStringLiteral("한"), QStringLiteral("q\u0001")};
    const QStringList ascii = pieces.filter(QRegularExpression(QStringLiteral("^[ -~]+$")));
    std::mt19937 random(7);
    for (const char* name : {"en_US", "cs_CZ", "da_DK", "de_DE", "sv_SE", "zh_CN", "C"})
        for (const QStringList& some : {pieces, ascii}) {
            const QCollator collator{QLocale(QLatin1String(name))};
            std::vector<QString> texts(400);
            for (QString& text : texts)
                for (unsigned i = random() % 5; i > 0; --i)
                    text += some[int(random() % unsigned(some.size()))];
            for (const bool ascending : {true, false})
                EXPECT_EQ(text_order(texts, ascending, collator), plain_order(texts, ascending, collator)) << name;
        }
}

TEST(ReportSort, long_shared_beginnings_and_prefixes_of_each_other_are_told)
{
    const auto texts = texts_of(QStringLiteral("Control_left_0012 Control_left_0002 Control_left_ Control_left_00"));
    const auto order = text_order(texts, true, reading_collator());
    EXPECT_EQ(order, (std::vector<int>{2, 3, 1, 0}));
    EXPECT_TRUE(text_order({}, true, reading_collator()).empty());
}

TEST(ReportSort, numbers_sort_as_numbers_and_the_rest_stands_last)
{
    const auto texts = texts_of(QStringLiteral("10 9 none -1.5 9 1e2 0x 2.5秒  inf"));
    const auto up = sorted(texts, number_order(texts, true));
    EXPECT_EQ(up, texts_of(QStringLiteral("-1.5 0x 2.5秒 9 9 10 1e2 none  inf")));
    EXPECT_EQ(number_order({QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("1"), QString()}, false),
              (std::vector<int>{1, 2, 0, 3}));
}
