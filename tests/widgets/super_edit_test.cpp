#include "widgets/super_edit.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QStyleOptionSpinBox>
#include <QTest>
#include <QWheelEvent>

#include <gtest/gtest.h>

#include <clocale>
#include <limits>

namespace {

class OpenEdit : public CSuperEdit {
public:
    QLineEdit& line() const { return *lineEdit(); }
    QPoint up_arrow() const
    {
        QStyleOptionSpinBox option;
        initStyleOption(&option);
        return style()->subControlRect(QStyle::CC_SpinBox, &option, QStyle::SC_SpinBoxUp, this).center();
    }
};

class SuperEditTest : public testing::Test {
protected:
    SuperEditTest()
    {
        edit.resize(120, 24);
        edit.show();
        edit.activateWindow();
        edit.setFocus();
        QTest::qWait(1);
        QObject::connect(&edit, &CSuperEdit::text_changed_by_user, [this](double pos) { typed.push_back(pos); });
    }

    void type(const QString& text)
    {
        edit.line().selectAll();
        QTest::keyClick(&edit, Qt::Key_Delete);
        for (const QChar c : text)
            QTest::sendKeyEvent(QTest::Click, &edit, Qt::Key_unknown, QString(c), Qt::NoModifier);
    }

    QString shown() const { return edit.line().text(); }

    OpenEdit edit;
    std::vector<double> typed;
};

using Numbers = std::vector<double>;

} // namespace

TEST_F(SuperEditTest, typing_reports_every_text_that_is_a_number)
{
    edit.set_range(-100, 100, 1);
    QSignalSpy changes(&edit, &CSuperEdit::value_changed);
    type(QStringLiteral("-1.5"));
    EXPECT_EQ(typed, (Numbers{-1, -1, -1.5})) << "nothing for the empty text and the lone sign";
    EXPECT_EQ(changes.count(), 2);
    EXPECT_EQ(edit.get_pos(), -1.5);

    typed.clear();
    type(QStringLiteral("1e"));
    EXPECT_EQ(typed, (Numbers{1}));
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(shown(), QStringLiteral("1"));
    type(QString());
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(shown(), QStringLiteral("1")) << "an emptied edit shows its value again";
}

TEST_F(SuperEditTest, typing_the_hidden_number_into_a_mixed_edit_counts)
{
    edit.set_pos(5);
    EXPECT_TRUE(edit.set_empty());
    EXPECT_FALSE(edit.set_empty());
    EXPECT_EQ(shown(), QString());
    EXPECT_EQ(edit.value(), std::nullopt);
    EXPECT_EQ(edit.get_pos(), 0);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.value(), std::nullopt) << "looking at it leaves it mixed";
    QSignalSpy changes(&edit, &CSuperEdit::value_changed);
    type(QStringLiteral("5"));
    EXPECT_EQ(typed, Numbers{5});
    EXPECT_EQ(changes.count(), 1);

    edit.set_range(10, 20, 1);
    edit.set_empty();
    EXPECT_EQ(edit.get_pos(), 10) << "within the range also when empty";
}

TEST_F(SuperEditTest, the_value_is_held_to_the_range_while_the_text_waits_for_the_end)
{
    edit.set_range(10, 200, 1);
    type(QStringLiteral("5"));
    EXPECT_EQ(typed, Numbers{10});
    EXPECT_EQ(shown(), QStringLiteral("5"));
    edit.set_pos(10);
    EXPECT_EQ(shown(), QStringLiteral("5")) << "the object's echo does not disturb typing";
    QSignalSpy finished(&edit, &CSuperEdit::editing_finished);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(shown(), QStringLiteral("10"));
    EXPECT_EQ(finished.count(), 1);

    edit.set_pos(1000);
    EXPECT_EQ(edit.get_pos(), 200);
    edit.set_range(50, 0, -3);
    EXPECT_EQ(edit.get_min(), 0);
    EXPECT_EQ(edit.get_step(), 1);
    EXPECT_EQ(edit.get_pos(), 50);
    EXPECT_EQ(shown(), QStringLiteral("50"));
}

TEST_F(SuperEditTest, an_echo_through_a_32_bit_float_does_not_disturb_typing_but_another_value_does)
{
    type(QStringLiteral("1.10"));
    edit.set_pos(double(1.1f));
    EXPECT_EQ(shown(), QStringLiteral("1.10"));
    edit.set_pos(2);
    EXPECT_EQ(shown(), QStringLiteral("2"));
}

TEST_F(SuperEditTest, refuses_what_is_not_finite)
{
    edit.set_pos(7);
    edit.set_pos(std::numeric_limits<double>::quiet_NaN());
    edit.set_pos(std::numeric_limits<double>::infinity());
    edit.set_range(0, std::numeric_limits<double>::infinity(), 1);
    EXPECT_EQ(edit.get_max(), 100);
    type(QStringLiteral("nan"));
    type(QStringLiteral("inf"));
    EXPECT_EQ(edit.get_pos(), 7);
    EXPECT_TRUE(typed.empty());
    for (const char* text : {"1e999", "0x10", "1 2", "1,2,3", "--1", "+-1", ".", "1f", "nan", "infinity"})
        EXPECT_FALSE(tarn::parse_number(QString::fromLatin1(text))) << text;
}

TEST_F(SuperEditTest, reads_commas_and_digits_of_other_scripts)
{
    type(QStringLiteral("3,25"));
    EXPECT_EQ(edit.get_pos(), 3.25);
    type(QStringLiteral("１２．５"));
    EXPECT_EQ(edit.get_pos(), 12.5);
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(shown(), QStringLiteral("12.5"));
    EXPECT_EQ(tarn::parse_number(u"－７"), -7);
    EXPECT_EQ(tarn::parse_number(u" +.5 "), 0.5);
}

TEST_F(SuperEditTest, sums_count_when_the_editing_ends_and_change_what_was_there)
{
    edit.set_range(-1000, 1000, 1);
    const auto enter = [this](const char* text) {
        type(QString::fromUtf8(text));
        QTest::keyClick(&edit, Qt::Key_Return);
        return edit.get_pos();
    };
    EXPECT_EQ(enter("120/2"), 60);
    EXPECT_EQ(shown(), QStringLiteral("60"));
    typed.clear();
    EXPECT_EQ(enter("+10"), 70);
    EXPECT_EQ(typed, Numbers{70}) << "once, and not by 1 on the way";
    QTest::keyClick(&edit, Qt::Key_Return);
    EXPECT_EQ(edit.get_pos(), 70) << "a second Enter adds nothing";
    EXPECT_EQ(enter("-5"), -5) << "a number";
    EXPECT_EQ(enter("-=5"), -10);
    EXPECT_EQ(enter("*（2＋1）"), -30);
    EXPECT_EQ(enter("2*3-8/4+-1"), 3);
    EXPECT_EQ(enter("+9999"), 1000) << "held to the range";
    for (const char* text : {"1/0", "/0", "(1", "1)", "2**3", "1e", "+", "()", "0*1e400"})
        EXPECT_FALSE(tarn::parse_sum(QString::fromLatin1(text))) << text;
    EXPECT_FALSE(tarn::parse_sum(QString(100000, u'('))) << "nothing that is too deep";

    std::vector<double> told;
    QObject::connect(&edit, &CSuperEdit::changed_by, [&](const tarn::Sum& sum) { told.push_back(sum.of(100)); });
    edit.set_telling_changes(true);
    edit.set_empty();
    typed.clear();
    enter("*2");
    EXPECT_EQ(told, Numbers{200});
    EXPECT_TRUE(typed.empty());
    EXPECT_EQ(shown(), QString()) << "still several numbers";
}

TEST_F(SuperEditTest, formats_show_the_value_and_traps_fall_back)
{
    edit.set_range(-1e9, 1e9, 0.1);
    const struct {
        const char* format;
        double value;
        const char* shown;
    } cases[] = {{"%.0f", 2.6, "3"},    {"%0.0f", -0.3, "0"},      {"%1.0f", 41, "41"},  {"%.2f", 1, "1.00"},
                 {"%f", 1, "1.000000"}, {"%05.1f", -2.5, "-02.5"}, {"%+.1f", 2, "+2.0"}, {"%.f", 2.2, "2"},
                 {"%g", 0.1, "0.1"},    {"%lf", 1, "1.000000"},    {"%s", 2.5, "2.5"},   {"%n", 2.5, "2.5"},
                 {"%f%f", 2.5, "2.5"},  {"%.2f%s", 2.5, "2.5"},    {"%*f", 2.5, "2.5"},  {"%.999999f", 2.5, "2.5"},
                 {"%d", 2.5, "2.5"},    {"", 2.5, "2.5"},          {"%%", 2.5, "2.5"},   {"%a", 2.5, "2.5"},
                 {"%.2f\n", 2.5, "2.5"}};
    for (const auto& c : cases) {
        edit.set_format_string(QLatin1String(c.format));
        edit.set_pos(c.value);
        EXPECT_EQ(shown(), QLatin1String(c.shown)) << c.format;
        EXPECT_EQ(edit.get_pos(), c.value) << c.format;
    }
    edit.set_format_string(QStringLiteral("%.1f"));
    type(QStringLiteral("2.349"));
    EXPECT_EQ(edit.get_pos(), 2.3) << "what is typed is what will be shown";

    edit.set_format_string(QStringLiteral("%.2f"));
    const std::string before = std::setlocale(LC_NUMERIC, nullptr);
    std::setlocale(LC_NUMERIC, "de_DE.UTF-8");
    edit.set_pos(1.5);
    EXPECT_EQ(shown(), QStringLiteral("1.50"));
    std::setlocale(LC_NUMERIC, before.c_str());
}

TEST_F(SuperEditTest, cuts_what_is_typed_where_rounding_is_off)
{
    edit.set_range(-1000, 1000, 1);
    edit.set_truncating(true);
    edit.set_format_string(QStringLiteral("%.1f"));
    struct Case {
        const char* text;
        double pos;
    };
    // A number that can be shown stays itself.
    for (const Case& c :
         {Case{"2.79", 2.7}, Case{"-2.79", -2.7}, Case{"2.3", 2.3}, Case{"0.3", 0.3}, Case{"-0.06", 0}}) {
        type(QLatin1String(c.text));
        EXPECT_EQ(edit.get_pos(), c.pos) << c.text;
    }
}

TEST_F(SuperEditTest, steps_by_keys_stay_in_range_and_free_of_noise)
{
    edit.set_range(0, 1, 0.1);
    edit.set_pos(0.1);
    QTest::keyClick(&edit, Qt::Key_Up);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(edit.get_pos(), 0.3);
    QTest::keyClick(&edit, Qt::Key_PageUp);
    EXPECT_EQ(edit.get_pos(), 1);
    QTest::keyClick(&edit, Qt::Key_Up);
    EXPECT_EQ(typed, (Numbers{0.2, 0.3, 1})) << "nothing at the limit";
}

TEST_F(SuperEditTest, the_wheel_needs_the_focus)
{
    const auto roll = [this] {
        QWheelEvent event(QPointF(5, 5), QPointF(5, 5), {}, {0, 120}, Qt::NoButton, {}, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(&edit, &event);
        return event.isAccepted();
    };
    edit.clearFocus();
    EXPECT_FALSE(roll()) << "left to the page, which scrolls";
    EXPECT_TRUE(typed.empty());
    edit.setFocus();
    roll();
    EXPECT_EQ(typed, Numbers{1});
}

TEST_F(SuperEditTest, dragging_from_an_arrow_changes_the_value)
{
    edit.set_range(0, 1000, 1);
    edit.set_pos(50);
    const QPoint start = edit.up_arrow();
    const auto move = [&](int dx) {
        const QPointF pos = start + QPoint(dx, 0);
        QMouseEvent event(QEvent::MouseMove, pos, edit.mapToGlobal(pos), Qt::NoButton, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&edit, &event);
    };
    QTest::mousePress(&edit, Qt::LeftButton, {}, start);
    EXPECT_EQ(edit.get_pos(), 51);
    move(60);
    EXPECT_EQ(edit.get_pos(), 70);
    move(-60);
    EXPECT_EQ(edit.get_pos(), 30);
    QTest::mouseRelease(&edit, Qt::LeftButton, {}, start);
    move(90);
    EXPECT_EQ(edit.get_pos(), 30);
}
