#include "core/journal.h"

#include "core/model_object.h"
#include "support/printing.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using tarn::Journal;
using tarn::UserAction;

namespace {

struct NoteState : tarn::StateOf<NoteState> {
    QString text;

    static const tarn::FieldTable& field_table()
    {
        static const tarn::FieldTable table(nullptr, tarn::field<NoteState, &NoteState::text>("text"));
        return table;
    }
};

/// The smallest object of a model.
class Note : public tarn::ModelObject {
public:
    explicit Note(tarn::Document& document) : ModelObject(document, new NoteState) {}

    QString text() const { return state<NoteState>().text; }
    bool set(const QString& text) { return change<&NoteState::text>(text); }

    const char* class_name() const override { return "Note"; }
    bool is_attached() const override { return true; }
};

class JournalTest : public testing::Test {
protected:
    void act(Note& note, const QString& text, const QByteArray& key = {}, const QString& name = u"type"_s)
    {
        const UserAction action(m_journal, name, key);
        note.set(text);
    }
    int undo_all()
    {
        int steps = 0;
        while (m_journal.undo())
            ++steps;
        return steps;
    }

    tarn::Document m_document;
    Journal& m_journal = m_document.journal();
    Note m_a{m_document};
    Note m_b{m_document};
};

} // namespace

TEST_F(JournalTest, nested_actions_are_one_step_named_by_the_outermost)
{
    {
        const UserAction outer(m_journal, u"outer"_s);
        m_a.set(u"1"_s);
        act(m_b, u"2"_s, "key", u"inner"_s);
        EXPECT_FALSE(m_journal.can_undo());
        EXPECT_FALSE(m_journal.undo());
        m_a.set(u"3"_s);
    }
    EXPECT_EQ(m_journal.undo_name(), u"outer"_s);
    EXPECT_EQ(undo_all(), 1);
    EXPECT_EQ(m_a.text() + m_b.text(), QString());
    EXPECT_EQ(m_journal.redo_name(), u"outer"_s);
    EXPECT_TRUE(m_journal.redo());
    EXPECT_EQ(m_a.text() + m_b.text(), u"32"_s);
}

TEST_F(JournalTest, an_action_that_changes_nothing_leaves_no_step)
{
    act(m_a, QString());
    EXPECT_FALSE(m_journal.can_undo());
    EXPECT_TRUE(m_journal.is_saved());
}

TEST_F(JournalTest, steps_merge_by_key_and_objects)
{
    act(m_a, u"1"_s, "text");
    act(m_a, u"12"_s, "text");
    act(m_a, u"123"_s, "text"); // one step so far
    act(m_b, u"1"_s, "text");   // another object
    act(m_b, u"2"_s, "font");   // another key
    act(m_b, u"3"_s);           // no key
    act(m_b, u"4"_s);           // no key never merges
    EXPECT_EQ(undo_all(), 5);
    m_journal.redo();
    EXPECT_EQ(m_a.text(), u"123"_s);
}

TEST_F(JournalTest, a_step_that_changes_less_than_the_one_it_merges_into_adds_to_it)
{
    const auto act_both = [&](const QString& text, Journal::Merging merging) {
        const UserAction action(m_journal, u"both"_s, "typed", merging);
        m_a.set(text);
        m_b.set(text);
    };
    act_both(u"1"_s, Journal::Merging::Adds);
    act(m_b, u"12"_s, "typed");
    act(m_b, u"123"_s, "typed");
    EXPECT_EQ(m_journal.step_count(), 1u);
    ASSERT_TRUE(m_journal.undo());
    EXPECT_EQ(m_a.text(), QString());
    EXPECT_EQ(m_b.text(), QString());
    ASSERT_TRUE(m_journal.redo());
    EXPECT_EQ(m_a.text(), u"1"_s);
    EXPECT_EQ(m_b.text(), u"123"_s);
    act(m_a, u"other"_s);
    act(m_a, u"alone"_s, "typed");
    act_both(u"more"_s, Journal::Merging::Adds);
    EXPECT_EQ(m_journal.step_count(), 4u) << "what changes more is a step of its own";
}

TEST_F(JournalTest, merging_stops_at_a_break_at_a_save_and_at_an_undo)
{
    act(m_a, u"1"_s, "text");
    m_journal.break_merge();
    act(m_a, u"2"_s, "text");
    m_journal.mark_saved();
    act(m_a, u"3"_s, "text");
    EXPECT_FALSE(m_journal.is_saved());
    m_journal.undo();
    EXPECT_TRUE(m_journal.is_saved());
    EXPECT_EQ(m_a.text(), u"2"_s);
    act(m_a, u"4"_s, "text");
    EXPECT_EQ(undo_all(), 3);
}

TEST_F(JournalTest, cancel_takes_back_the_running_action_and_what_follows_in_it_is_recorded_anew)
{
    act(m_a, u"kept"_s);
    {
        const UserAction action(m_journal, u"drag"_s);
        m_a.set(u"x"_s);
        m_b.set(u"y"_s);
        m_journal.cancel();
        EXPECT_EQ(m_a.text(), u"kept"_s);
        m_b.set(u"after"_s);
    }
    EXPECT_EQ(m_b.text(), u"after"_s);
    m_journal.undo();
    EXPECT_EQ(m_b.text(), QString());
    EXPECT_EQ(undo_all(), 1);
}

TEST_F(JournalTest, the_saved_mark_comes_back_by_undo_and_redo_but_not_on_a_new_branch)
{
    act(m_a, u"1"_s);
    act(m_a, u"2"_s);
    m_journal.mark_saved();
    m_journal.undo();
    EXPECT_FALSE(m_journal.is_saved());
    m_journal.redo();
    EXPECT_TRUE(m_journal.is_saved());
    m_journal.undo();
    act(m_a, u"other"_s); // as many steps as when it was saved, but other ones
    EXPECT_FALSE(m_journal.is_saved());
    m_journal.undo();
    EXPECT_FALSE(m_journal.is_saved());
}

TEST_F(JournalTest, changes_outside_actions_are_a_step_that_ends_where_the_next_action_begins)
{
    m_a.set(u"loose"_s);
    EXPECT_FALSE(m_journal.is_saved());
    EXPECT_TRUE(m_journal.can_undo());
    m_b.set(u"loose"_s);
    act(m_a, u"action"_s);
    EXPECT_EQ(undo_all(), 2);
    EXPECT_EQ(m_a.text() + m_b.text(), QString());
}

TEST_F(JournalTest, any_new_change_cuts_the_steps_that_could_be_redone)
{
    act(m_a, u"1"_s);
    m_journal.undo();
    m_a.set(u"loose"_s);
    EXPECT_FALSE(m_journal.can_redo());
    EXPECT_TRUE(m_journal.redo_name().isEmpty());
    EXPECT_FALSE(m_journal.redo());
    EXPECT_EQ(m_a.text(), u"loose"_s);
}

TEST_F(JournalTest, nothing_is_kept_while_recording_is_off)
{
    {
        const tarn::RecordingOff off(m_journal);
        act(m_a, u"loaded"_s);
    }
    EXPECT_FALSE(m_journal.can_undo());
    act(m_a, u"edited"_s);
    m_journal.undo();
    EXPECT_EQ(m_a.text(), u"loaded"_s);
}

TEST_F(JournalTest, tells_which_objects_took_another_state)
{
    QStringList told;
    m_journal.on_restored = [&](const Journal::Step& step) {
        QString names;
        for (const auto& entry : step.entries)
            names += entry.object == &m_a ? u'a' : u'b';
        told << step.name + u':' + names;
    };
    act(m_a, u"1"_s);
    {
        const UserAction action(m_journal, u"both"_s);
        m_b.set(u"1"_s);
        m_a.set(u"2"_s);
        m_b.set(u"3"_s);
    }
    m_journal.undo();
    m_journal.redo();
    undo_all();
    EXPECT_EQ(told.join(u' '), u"both:ba both:ba both:ba type:a"_s);
}

TEST_F(JournalTest, goes_to_any_step_and_tells_of_it_once)
{
    for (const QString& text : {u"one"_s, u"two"_s, u"three"_s})
        act(m_a, text, {}, text);
    m_b.set(u"outside"_s); // becomes a step when the journal travels
    int told = 0;
    m_journal.on_changed = [&] { ++told; };
    EXPECT_TRUE(m_journal.go_to(1));
    EXPECT_EQ(told, 2) << "the end of the open step, and the travel";
    EXPECT_EQ(m_a.text(), u"one"_s);
    EXPECT_EQ(m_b.text(), QString());
    EXPECT_EQ(m_journal.position(), 1u);
    ASSERT_EQ(m_journal.step_count(), 4u);
    EXPECT_EQ(m_journal.step_name(2), u"three"_s);
    EXPECT_FALSE(m_journal.go_to(1)) << "it is there";
    EXPECT_TRUE(m_journal.go_to(100));
    EXPECT_EQ(m_b.text(), u"outside"_s);
    EXPECT_TRUE(m_journal.go_to(0));
    EXPECT_TRUE(m_journal.is_saved());
    m_journal.begin(u"running"_s);
    EXPECT_FALSE(m_journal.go_to(2));
    m_journal.end();
    EXPECT_TRUE(m_journal.go_to(2));
    const std::size_t second = m_journal.step_number(1);
    const std::size_t third = m_journal.step_number(2);
    act(m_a, u"other"_s);
    EXPECT_EQ(m_journal.step_number(1), second) << "still there";
    EXPECT_NE(m_journal.step_number(2), third) << "another one";
}
