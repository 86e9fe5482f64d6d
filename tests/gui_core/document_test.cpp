#include "core/authored.h"
#include "core/document.h"

#include "core/field.h"
#include "support/gui_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class Listener final : public ModelListener {
public:
    explicit Listener(Document& document) : m_document(document) { document.changes().add_listener(this); }
    ~Listener() override { m_document.changes().remove_listener(this); }

    void model_changed(const ModelChange& change) override
    {
        ++told;
        objects = change.objects.size();
        structure = change.is_of_structure();
        names = change.is_of(key<&ControlState::name>);
    }
    int told = 0;
    std::size_t objects = 0;
    bool structure = false;
    bool names = false;

private:
    Document& m_document;
};

class DocumentTest : public GuiTest {
protected:
    template <class Change>
    void act(Change&& change, const QByteArray& merge_key = {})
    {
        const UserAction action(m_journal, u"act"_s, merge_key, Journal::Merging::Replaces);
        change();
    }
    std::size_t objects_known(const std::vector<quint32>& ids) const
    {
        return std::size_t(std::count_if(ids.begin(), ids.end(), [this](quint32 id) { return m_document.find(id); }));
    }

    CDXUTDialog* m_home = dialog({0, 0, 400, 300});
};

} // namespace

TEST_F(DocumentTest, tells_of_many_changes_once_with_what_they_were_and_of_undo_too)
{
    CDXUTButton* one = button(m_home, {0, 0, 50, 20});
    Listener listener(m_document);
    m_document.changes().tell();
    EXPECT_TRUE(listener.structure);
    act([&] {
        for (int i = 0; i < 100; ++i)
            one->SetLocation(float(i), 5);
    });
    EXPECT_EQ(listener.told, 1);
    m_document.changes().tell();
    EXPECT_EQ(listener.told, 2);
    EXPECT_EQ(listener.objects, 1u);
    EXPECT_FALSE(listener.structure || listener.names);
    act([&] { one->set_name(u"other"_s); });
    m_document.changes().tell();
    EXPECT_TRUE(listener.names);
    m_journal.undo();
    m_document.changes().tell();
    EXPECT_TRUE(listener.names) << "undo is a change like any other";
    act([&] { m_core.remove_control(one); });
    m_document.changes().tell();
    EXPECT_TRUE(listener.structure);
    const int before = listener.told;
    m_document.changes().tell();
    EXPECT_EQ(listener.told, before) << "nothing changed";
}

TEST_F(DocumentTest, what_is_only_shown_is_neither_saved_nor_undone_and_stays_when_other_attributes_are_authored)
{
    CDXUTButton* one = button(m_home, {0, 0, 50, 20});
    m_document.forget_history();
    {
        const ShownWrites writes(m_document);
        one->SetLocation(30, 40);
        m_core.remove_control(one);
    }
    EXPECT_FALSE(one->is_attached());
    EXPECT_FALSE(m_journal.can_undo());
    EXPECT_EQ(m_document.snapshot().objects[m_core.control_kind().place].size(), 1u);
    act([&] { (void)set(*one, "text", u"authored"_s); });
    EXPECT_EQ(one->x(), 30);
    EXPECT_EQ(get(*one, "text"), Value(u"authored"_s)) << "what is authored shows through";
    EXPECT_EQ(Authored::property(*one, *one->fields().find("x")), Value(0.0));
    m_document.clear_shown();
    EXPECT_TRUE(one->is_attached());
    EXPECT_EQ(one->x(), 0);
    EXPECT_EQ(m_home->controls(), QList<CDXUTControl*>{one});
}

TEST_F(DocumentTest, typing_passes_values_that_leave_nothing_behind)
{
    auto* edit = m_core.create_control(DXUT_CONTROL_EDITBOX, m_home, {0, 0, 100, 20});
    (void)set(*edit, "text", u"a text of thirty letters or so"_s);
    for (const int typed : {1, 12, 120})
        act([&] { (void)set(*edit, "max_length", qint64(typed)); }, "max_length");
    EXPECT_EQ(get(*edit, "text"), Value(u"a text of thirty letters or so"_s));
    EXPECT_EQ(get(*edit, "max_length"), Value(qint64(120)));
    m_journal.undo();
    EXPECT_EQ(get(*edit, "max_length"), Value(qint64(0)));
    EXPECT_EQ(get(*edit, "text"), Value(u"a text of thirty letters or so"_s));
}

TEST_F(DocumentTest, history_keeps_to_its_budget_and_frees_what_only_it_kept)
{
    std::vector<quint32> ids;
    for (int i = 0; i < 50; ++i) {
        CDXUTControl* made = nullptr;
        act([&] { made = button(m_home, {0, 0, 50, 20}); });
        ids.push_back(made->id());
        act([&] { (void)set(*made, "text", QString(10'000, u'x')); });
        act([&] { m_core.remove_control(made); });
    }
    EXPECT_FALSE(m_journal.has_dropped());
    EXPECT_EQ(objects_known(ids), 50u);
    const std::size_t steps = m_journal.step_count();
    m_journal.set_budget(200'000);
    EXPECT_TRUE(m_journal.has_dropped());
    EXPECT_LT(m_journal.step_count(), steps / 2);
    EXPECT_LT(objects_known(ids), 25u);
    EXPECT_GT(objects_known(ids), 3u);
    while (m_journal.undo()) {}
    EXPECT_LE(m_home->GetControlNum(), 1);
    while (m_journal.redo()) {}
    EXPECT_EQ(m_home->GetControlNum(), 0);
}
