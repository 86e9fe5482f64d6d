#include "widgets/report_sort.h"

#include <QLocale>

#include <gtest/gtest.h>

#include <algorithm>
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

} // namespace

TEST(ReportSort, texts_sort_as_people_read_them_in_the_programs_language)
{
    const QLocale before;
    const struct {
        const char* locale;
        QString sorted;
    } cases[] = {
        // Numbers count as numbers, wherever they stand; case and accents decide only between equal letters.
        {"C", QStringLiteral("ab apple Apple Button Button1 Button2 button10 Button10a \u00e9cru eland x2y9 x2y10")},
        // By their sounds: 按钮 anniu, 窗口 chuangkou, 滑块 huakuai.
        {"zh_CN", QStringLiteral("按钮2 按钮10 窗口 滑块 Button")},
        // A letter of its own behind h.
        {"cs_CZ", QStringLiteral("cz h ch2 ch10 i")},
    };
    for (const auto& [locale, words] : cases) {
        QLocale::setDefault(QLocale(QLatin1String(locale)));
        TextOrder& order = TextOrder::shared();
        std::vector<QString> texts = texts_of(words);
        const std::vector<QString> wanted = texts;
        std::mt19937 random(7);
        std::shuffle(texts.begin(), texts.end(), random);
        EXPECT_EQ(sorted(texts, order.sorted(texts, true)), wanted) << locale;
        EXPECT_EQ(sorted(texts, order.sorted(texts, false)), std::vector<QString>(wanted.rbegin(), wanted.rend()));
    }
    QLocale::setDefault(before);
}

TEST(ReportSort, texts_that_read_the_same_keep_their_order_also_when_they_come_later)
{
    TextOrder order(QLocale(QLocale::English));
    EXPECT_TRUE(order.sorted({}, true).empty());
    const QString composed = QStringLiteral("\u00e9");
    const QString apart = QStringLiteral("e\u0301");
    EXPECT_EQ(order.sorted({composed, QStringLiteral("f"), composed}, false), (std::vector<int>{1, 0, 2}));
    EXPECT_EQ(order.sorted({apart, composed, QStringLiteral("a"), apart}, true), (std::vector<int>{2, 0, 1, 3}));
    EXPECT_EQ(order.sorted({apart, composed, QStringLiteral("a"), apart}, false), (std::vector<int>{0, 1, 3, 2}));
    // Old texts are forgotten; what is forgotten is learnt anew.
    std::vector<QString> many;
    for (int i = 250'000; i > 0; --i)
        many.push_back(QString::number(i));
    EXPECT_EQ(order.sorted(many, true).front(), 249'999);
    EXPECT_EQ(order.sorted({QStringLiteral("b10"), QStringLiteral("b9"), composed}, true), (std::vector<int>{1, 0, 2}));
    EXPECT_EQ(order.sorted({apart, composed}, false), (std::vector<int>{0, 1}));
}

TEST(ReportSort, numbers_sort_as_numbers_and_the_rest_stands_last)
{
    const auto texts = texts_of(QStringLiteral("10 9 none -1.5 9 1e2 0x 2.5秒  inf"));
    const auto up = sorted(texts, number_order(texts, true));
    EXPECT_EQ(up, texts_of(QStringLiteral("-1.5 0x 2.5秒 9 9 10 1e2 none  inf")));
    EXPECT_EQ(number_order({QStringLiteral("b"), QStringLiteral("1"), QStringLiteral("1"), QString()}, false),
              (std::vector<int>{1, 2, 0, 3}));
}
