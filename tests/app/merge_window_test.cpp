#include "core/language.h"
#include "merge_window.h"
#include "support/queued_answers.h"

#include <QPlainTextEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using namespace tarn;

namespace {

std::vector<MergeConflict> conflicts()
{
    return {{.object = 7,
             .place = u"dialog 7 \"Bag\""_s,
             .field = u"caption"_s,
             .base = u"\"\""_s,
             .ours = u"\"Mine\""_s,
             .theirs = u"\"Yours\""_s},
            {.object = 9, .place = u"control 9"_s, .base = u"{\"id\":9,\"x\":1}"_s, .theirs = u"{\"id\":9,\"x\":2}"_s},
            {.object = 12,
             .place = u"variable 12"_s,
             .field = u"keys"_s,
             .part = u"0.5"_s,
             .ours = u"{}"_s,
             .theirs = u"{}"_s}};
}

} // namespace

TEST(MergeWindow, takes_ours_until_a_side_is_chosen_for_one_conflict_or_for_all)
{
    MergeWindow window(conflicts());
    auto& list = *window.findChild<QTreeWidget*>();
    auto& take_theirs = *window.findChildren<QRadioButton*>().last();
    EXPECT_EQ(window.sides(), (std::vector{MergeSide::Ours, MergeSide::Ours, MergeSide::Ours}));
    list.setCurrentItem(list.topLevelItem(1));
    EXPECT_EQ(window.findChild<QPlainTextEdit*>(u"ours"_s)->toPlainText(), lang(u"（无）", u"(nothing)"));
    EXPECT_TRUE(window.findChild<QPlainTextEdit*>(u"theirs"_s)->toPlainText().contains(u'\n')) << "an object in lines";
    take_theirs.click();
    EXPECT_EQ(window.sides(), (std::vector{MergeSide::Ours, MergeSide::Theirs, MergeSide::Ours}));
    list.setCurrentItem(list.topLevelItem(0));
    EXPECT_FALSE(take_theirs.isChecked());
    window.findChild<QPushButton*>(u"all_theirs"_s)->click();
    EXPECT_TRUE(take_theirs.isChecked());
    Q_EMIT list.itemClicked(list.topLevelItem(0), 3);
    EXPECT_EQ(window.sides(), (std::vector{MergeSide::Ours, MergeSide::Theirs, MergeSide::Theirs}));
}

TEST(MergeWindow, answers_nothing_when_it_is_cancelled)
{
    test::QueuedAnswers answers;
    answers.dialogs = {[](QDialog& dialog) { dialog.reject(); },
                       [](QDialog& dialog) { dialog.findChild<QPushButton*>(u"ok"_s)->click(); }};
    EXPECT_FALSE(ask_in_window(conflicts()));
    EXPECT_EQ(ask_in_window(conflicts())->size(), 3u);
}
