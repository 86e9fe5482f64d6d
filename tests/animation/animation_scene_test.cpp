#include "animation_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class AnimationSceneTest : public AnimationTest {
protected:
    QString names() const
    {
        QStringList names;
        for (const CTimebar* bar : m_scene.bars())
            names << bar->name();
        return names.join(u',');
    }
    /// A bar with everything that there is.
    CTimebar* full_bar()
    {
        CTimebar* bar = m_scene.create_bar(10);
        CTimerObject* object = timer(bar, thing());
        with_keys(object, Channel::Position, {{0, 0}, {1, 5}})->set_key_ease(1, 50);
        with_keys(object, Channel::Show, {{0, 1}});
        with_keys(object, Channel::Color, {{0, 1}})->set_key_group(0, 3);
        CTCommandScript* command = bar->create_script_object();
        command->set_script(u"blink(speed)"_s);
        for (const VarType type : {VarType::Float, VarType::Int, VarType::Vec, VarType::Color, VarType::Mat})
            command->create_var(type)->set_key_value(1, value(type, 3));
        command->create_var(VarType::Int); // without keys
        (void)m_functions.set_function(bar->insert_script_key(2)->function(), u"return 1"_s);
        bar->create_mark(1, 2, u"part"_s);
        return bar;
    }
};

} // namespace

TEST_F(AnimationSceneTest, the_order_of_bars_is_changed_and_undone)
{
    for (int i = 0; i < 3; ++i)
        m_scene.create_bar(1);
    EXPECT_EQ(names(), u"Bar1,Bar2,Bar3"_s);
    EXPECT_EQ(m_scene.current_bar()->name(), u"Bar3"_s);
    CTimebar* first = m_scene.bars().front();
    EXPECT_FALSE(m_scene.move_up(first));
    EXPECT_FALSE(m_scene.move_front(first));
    EXPECT_TRUE(m_scene.move_down(first));
    EXPECT_EQ(names(), u"Bar2,Bar1,Bar3"_s);
    EXPECT_TRUE(m_scene.move_end(first));
    EXPECT_FALSE(m_scene.move_down(first));
    EXPECT_TRUE(m_scene.move_front(m_scene.bars()[1]));
    EXPECT_EQ(names(), u"Bar3,Bar2,Bar1"_s);
    m_scene.remove_bar(m_scene.SearchTimebarFromName(u"Bar2"_s));
    EXPECT_EQ(names(), u"Bar3,Bar1"_s);
    EXPECT_EQ(m_scene.create_bar(1)->name(), u"Bar2"_s);
    m_scene.remove_bar(m_scene.current_bar());
    EXPECT_EQ(m_scene.current_bar(), nullptr);
    EXPECT_FALSE(m_scene.move_up(nullptr));
    undo_all();
    EXPECT_EQ(names(), QString());
}

TEST_F(AnimationSceneTest, a_copy_has_all_that_the_bar_has_with_functions_of_its_own)
{
    CTimebar* bar = full_bar();
    m_scene.create_bar(1);
    CTimebar* copy = m_scene.clone_bar(bar);
    EXPECT_EQ(names(), u"Bar1,Bar1 (2),Bar2"_s);
    EXPECT_EQ(m_scene.current_bar()->name(), u"Bar2"_s);
    ASSERT_EQ(copy->objects().size(), bar->objects().size());
    for (std::size_t i = 0; i < copy->objects().size(); ++i) {
        const auto& theirs = bar->objects()[i]->variables();
        const auto& mine = copy->objects()[i]->variables();
        ASSERT_EQ(mine.size(), theirs.size());
        EXPECT_EQ(copy->objects()[i]->name(), bar->objects()[i]->name());
        for (std::size_t v = 0; v < mine.size(); ++v) {
            EXPECT_EQ(mine[v]->name(), theirs[v]->name());
            EXPECT_TRUE(mine[v]->keys() == theirs[v]->keys());
        }
    }
    EXPECT_NE(copy->get_script_name(2), bar->get_script_name(2));
    EXPECT_EQ(m_functions.find_function(copy->get_script_name(2))->text(), u"return 1"_s);
    const QString kept = bar->get_script_name(2);
    const QString gone = copy->get_script_name(2);
    m_scene.remove_bar(copy);
    EXPECT_TRUE(m_functions.find_function(kept));
    EXPECT_FALSE(m_functions.find_function(gone));
}

TEST_F(AnimationSceneTest, what_is_saved_reads_back_to_the_same_bytes)
{
    full_bar();
    m_scene.clone_bar(full_bar());
    OtherScene other;
    const auto status = other.read(texts());
    ASSERT_TRUE(status.ok()) << status.message().toStdString();
    EXPECT_EQ(other.text(), text());
    EXPECT_EQ(other.m_scene.bars().size(), 3u);
    EXPECT_EQ(other.m_scene.bars().front()->objects().front()->name(), u"thing"_s);
    const QByteArray saved = texts()["animation.json"];
    EXPECT_TRUE(saved.contains("\n{\"t\":[0,1],\"v\":[0,0,0,5,10,0],\"e\":[0,50]}]")) << saved.toStdString();
    EXPECT_FALSE(saved.contains("current_time"));
}

TEST_F(AnimationSceneTest, a_damaged_text_is_refused)
{
    const struct {
        const char* text;
        const char* message;
    } cases[] = {
        {R"("timer_objects":[{"id":9,"type":2,"timebar":8}])", "does not exist"},
        {R"("timebars":[{"id":8}],"timer_objects":[{"id":9,"type":8,"timebar":8}])", "type 8 is unknown"},
        {R"("timebars":[{"id":8}],"timer_objects":[{"id":9,"timebar":8}])", "\"type\" is missing"},
        {R"("timebars":[{"id":8}],"variables":[{"id":9,"object":8}])", "does not exist"},
        {R"("timebars":[{"id":8},{"id":8}])", "appears twice"},
        {R"("timebars":[{"id":8}],"script_keys":[{"id":9,"timebar":8,"time":1},{"id":10,"timebar":8,"time":1}])", "1"},
    };
    for (const auto& [members, message] : cases) {
        const auto status = read({{"animation.json", QByteArray("{") + members + '}'}});
        EXPECT_FALSE(status.ok()) << members;
        EXPECT_TRUE(status.message().contains(QLatin1String(message))) << status.message().toStdString();
    }
    EXPECT_TRUE(read({{"animation.json", R"({"timebars":[{"id":8,"total_length":-5,"play_mode":77}]})"}}).ok());
    EXPECT_EQ(m_scene.bars().front()->get_total_length(), 0) << "numbers are held to their ranges";
    EXPECT_EQ(int(m_scene.bars().front()->play_mode()), 4);
}

TEST_F(AnimationSceneTest, references_and_functions_are_found_by_whoever_merges)
{
    const CTimebar* bar = full_bar();
    QStringList functions;
    std::vector<quint32> references;
    for (const ModelObject* object : m_document.objects())
        for (const FieldBase* field : object->fields()) {
            functions << field->names(Authored::state(*object));
            if (std::string_view(field->name()) == "target")
                field->each_reference(Authored::state(*object), [&](ObjectRef ref) { references.push_back(ref.id); });
        }
    EXPECT_TRUE(functions.contains(bar->get_script_name(2)));
    EXPECT_TRUE(functions.contains(u"blink"_s));
    EXPECT_EQ(references.front(), bar->objects().front()->target().id);
    StatePtr command(Authored::state(*bar->objects()[1]).clone());
    command->fields().find("function")->rename(*command, [](const QString&) { return u"shine"_s; });
    EXPECT_EQ(static_cast<const TimerObjectState&>(*command).arguments, u"(speed)"_s);
}
