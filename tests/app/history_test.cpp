// The history list beside a journal of its own, and in the window.

#include "core/journal.h"
#include "core/language.h"
#include "core/model_object.h"
#include "history_model.h"

#include <QAbstractItemModelTester>
#include <QSignalSpy>

#include <gtest/gtest.h>

using namespace tarn;

namespace {

struct CountState : StateOf<CountState> {
    int count = 0;

    static const FieldTable& field_table()
    {
        static const FieldTable table(nullptr, field<CountState, &CountState::count>("count", 0));
        return table;
    }
};

class Counter : public ModelObject {
public:
    explicit Counter(Journal& journal) : ModelObject(journal, new CountState) {}

    void count() { change<&CountState::count>(state<CountState>().count + 1); }
    const char* class_name() const override { return "Counter"; }
    bool is_attached() const override { return true; }
};

struct HistoryTest : testing::Test {
    Journal journal;
    Counter counter{journal};

    void act(const QString& name)
    {
        const UserAction action(journal, name);
        counter.count();
    }
    static QStringList texts(const HistoryModel& model)
    {
        QStringList texts;
        for (int row = 0; row < model.rowCount(); ++row)
            texts.append(model.index(row).data().toString());
        return texts;
    }
};

} // namespace

TEST_F(HistoryTest, the_list_follows_new_undone_and_replaced_steps)
{
    const QString start = lang(u"（开始）", u"(Start)");
    const QString unnamed = lang(u"修改", u"Change");
    act(QStringLiteral("a"));
    HistoryModel model(journal);
    const QAbstractItemModelTester tester(&model, QAbstractItemModelTester::FailureReportingMode::Fatal);
    EXPECT_EQ(texts(model), (QStringList{start, QStringLiteral("a")}));
    act({});
    act(QStringLiteral("c"));
    model.refresh();
    EXPECT_EQ(texts(model), (QStringList{start, QStringLiteral("a"), unnamed, QStringLiteral("c")}));
    EXPECT_EQ(model.current_row(), 3);
    journal.go_to(1);
    model.refresh();
    EXPECT_EQ(model.rowCount(), 4) << "what was undone can be done again";
    EXPECT_EQ(model.current_row(), 1);
    EXPECT_TRUE(model.index(1).data(Qt::FontRole).isValid());
    EXPECT_FALSE(model.index(1).data(Qt::ForegroundRole).isValid());
    EXPECT_TRUE(model.index(2).data(Qt::ForegroundRole).isValid());
    act(QStringLiteral("d"));
    act(QStringLiteral("e"));
    model.refresh();
    EXPECT_EQ(texts(model), (QStringList{start, QStringLiteral("a"), QStringLiteral("d"), QStringLiteral("e")}));
    journal.clear();
    model.refresh();
    EXPECT_EQ(texts(model), QStringList{start});
    EXPECT_EQ(model.current_row(), 0);
}

TEST_F(HistoryTest, a_new_step_among_thousands_is_all_that_the_list_hears_of)
{
    for (int i = 0; i < 5000; ++i)
        act(QStringLiteral("step"));
    HistoryModel model(journal);
    const QSignalSpy inserted(&model, &HistoryModel::rowsInserted);
    const QSignalSpy removed(&model, &HistoryModel::rowsRemoved);
    const QSignalSpy reset(&model, &HistoryModel::modelReset);
    act(QStringLiteral("new"));
    model.refresh();
    ASSERT_EQ(inserted.count(), 1);
    EXPECT_EQ(inserted[0][1].toInt(), 5001);
    EXPECT_EQ(inserted[0][2].toInt(), 5001);
    EXPECT_EQ(removed.count() + reset.count(), 0);
}
