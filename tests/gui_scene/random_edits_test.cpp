// A long walk of random edits: what undo and redo have to give back, byte for byte.

#include "core/authored.h"
#include "support/long_tests.h"
#include "support/scene_fixture.h"

#include <array>
#include <map>
#include <random>

using namespace tarn;
using namespace tarn::test;

namespace {

class RandomEdits : public SceneTest, public testing::WithParamInterface<unsigned> {
protected:
    int number(int below) { return int(m_random() % unsigned(below)); }
    CDXUTDialog* any_dialog()
    {
        const auto& all = core().GetDialogs();
        return all.isEmpty() || number(8) == 0 ? core().GetRootDialog() : all[number(int(all.size()))];
    }
    CDXUTControl* any_control()
    {
        const auto& all = core().controls();
        return all.empty() ? nullptr : all[std::size_t(number(int(all.size())))];
    }
    /// Some may stand there twice.
    std::vector<CDXUTControl*> some_controls()
    {
        std::vector<CDXUTControl*> some(core().controls().empty() ? 0 : std::size_t(number(4)));
        for (CDXUTControl*& control : some)
            control = any_control();
        return some;
    }
    void set_any_property(ModelObject& object)
    {
        const FieldBase* field = object.fields().at(std::size_t(number(int(object.fields().size()))));
        const Value now = object.property(*field);
        if (std::holds_alternative<QString>(now))
            (void)object.set_property(*field, QString(number(5), QChar(u'a' + number(20))));
        else
            (void)object.set_property(*field, qint64(number(300) - 20));
    }
    void edit()
    {
        CDXUTDialog* d = any_dialog();
        CDXUTControl* c = any_control();
        switch (number(14)) {
        case 0: dialog({number(900), number(500), number(400), number(300)}); break;
        case 1:
        case 2:
            control(std::array{0, 1, 2, 11}[std::size_t(number(4))], d, QRectF(number(300), number(200), 50, 20));
            break;
        case 3: m_scene.RemoveDialog(number(3) ? nullptr : d); break;
        case 4: number(2) ? m_scene.RemoveCtrl(c) : m_scene.RemoveCtrls(some_controls()); break;
        case 5: d->SetLocation(number(900), number(600)); break;
        case 6: c ? (void)c->SetLocation(float(number(3000)) / 7, float(number(2000)) / 7) : void(); break;
        case 7: core().AdjustDialogLayer(d, number(2)); break;
        case 8: c && c->dialog() ? (void)c->dialog()->SetCtrlLayerUpDown(c, number(2)) : void(); break;
        case 9: set_any_property(*d); break;
        case 10: c ? set_any_property(*c) : void(); break;
        case 11: number(2) ? m_scene.switch_ctrl_dialog(c, d) : m_scene.switch_ctrl_dialog(some_controls(), d); break;
        case 12: number(40) ? (void)d->set_name(u"n"_s + QString::number(number(9))) : merge(); break;
        default: number(2) ? core().SelectDialog(d, number(2)) : core().SelectControl(c, number(2)); break;
        }
    }
    void merge() { EXPECT_TRUE(m_scene.on_merge_GUI(path(), u"Merged"_s, number(2)).ok()); }
    /// Every link and list agrees with the others.
    void expect_sound()
    {
        const SelectionRecord& selection = core().selection();
        for (const CDXUTDialog* d : selection.dialogs)
            ASSERT_TRUE(d->is_attached());
        for (const CDXUTControl* c : selection.controls)
            ASSERT_TRUE(c->is_attached());
        ASSERT_TRUE(!selection.current_dialog || selection.current_dialog->is_attached());
        ASSERT_TRUE(!selection.current_control || selection.current_control->is_attached());
        std::size_t count = std::size_t(core().GetRootDialog()->GetControlNum());
        for (CDXUTDialog* d : core().GetDialogs()) {
            ASSERT_TRUE(d->is_attached());
            ASSERT_EQ(core().find_dialog(d->id()), d);
            count += std::size_t(d->GetControlNum());
            for (CDXUTControl* c : d->controls()) {
                ASSERT_EQ(c->dialog(), d);
                ASSERT_EQ(d->controls().indexOf(c), d->GetControlIndex(c));
                ASSERT_EQ(core().find_control(c->id()), c);
                ASSERT_EQ(static_cast<const ControlState&>(Authored::state(*c)).parent.id, d->id());
            }
        }
        ASSERT_EQ(core().controls().size(), count);
    }
    /// Ids never come back for another object, not even after undo.
    void note_ids()
    {
        for (const ModelObject* object : m_world.document().objects()) {
            const auto [place, fresh] = m_owners.try_emplace(object->id(), object);
            ASSERT_EQ(place->second, object) << "the id " << object->id() << " was used twice";
        }
    }

    void walk();

    std::mt19937 m_random{GetParam()};
    std::map<quint32, const ModelObject*> m_owners;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(Seeds, RandomEdits, testing::Values(1u, 2u, 3u));

void RandomEdits::walk()
{
    read_sample(u"tiny"_s);
    core().set_texture(u"campfire.png"_s, "fire");
    core().document().forget_history();
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    const QByteArray start = text();
    std::vector<QByteArray> texts;
    for (int i = 0; i < 1000; ++i) {
        if (number(10) == 0) {
            for (int back = number(4); back > 0; --back)
                m_scene.journal().undo();
            for (int forth = number(3); forth > 0; --forth)
                m_scene.journal().redo();
        }
        {
            const UserAction action(m_scene.journal(), u"edit"_s, number(3) ? QByteArray() : QByteArray("key"));
            for (int n = 1 + number(3); n > 0; --n)
                edit();
            if (number(20) == 0)
                m_scene.journal().cancel();
        }
        ASSERT_NO_FATAL_FAILURE(expect_sound()) << "after edit " << i;
        ASSERT_NO_FATAL_FAILURE(note_ids());
    }
    dialog({}); // Nothing that was undone is to be redone.
    const QByteArray end = text();
    do {
        texts.push_back(text());
        ASSERT_NO_FATAL_FAILURE(expect_sound());
    } while (m_scene.journal().undo());
    ASSERT_GT(texts.size(), 100u);
    EXPECT_TRUE(same_text(text(), start));
    EXPECT_TRUE(m_scene.journal().is_saved());
    for (texts.pop_back(); m_scene.journal().redo(); texts.pop_back()) {
        ASSERT_FALSE(texts.empty());
        ASSERT_TRUE(same_text(text(), texts.back()));
    }
    EXPECT_TRUE(same_text(text(), end));
    ASSERT_TRUE(m_scene.save_scene(path()).ok());
    ASSERT_TRUE(m_scene.open_scene(path()).ok());
    EXPECT_TRUE(same_text(text(), end)) << "and it can be saved and opened";
}

TEST_P(RandomEdits, are_undone_and_redone_without_a_trace)
{
    // A walk is 1,000 steps; the long run goes 100,000.
    const int walks = long_tests() ? 34 : 1;
    for (int i = 0; i < walks && !HasFailure(); ++i) {
        m_owners.clear();
        walk();
    }
}
