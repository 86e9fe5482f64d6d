#include "engine/base_world.h"

#include "engine/scene_selection.h"
#include "engine/world_edit.h"

#include "support/printing.h"
#include "world/world_scene.h"

#include <QStringList>

using namespace Qt::StringLiterals;
using tarn::WorldObject;
using tarn::WorldType;

namespace {

class Listener : public tarn::UiListener {
public:
    Listener(CBaseWorld& world, const QString& name, QStringList& heard) : m_world(world), m_name(name), m_heard(heard)
    {
        m_world.add_listener(this);
    }
    void update_ui(int code) override
    {
        m_heard << m_name + QString::number(code);
        if (on_code)
            on_code(code);
    }
    std::function<void(int)> on_code;

private:
    CBaseWorld& m_world;
    QString m_name;
    QStringList& m_heard;
};

class Tool : public tarn::MouseTool {
public:
    bool mouse(const tarn::MouseEvent&) override { return true; }
    bool key(int, Qt::KeyboardModifiers) override { return true; }
    void paint(QPainter&) override {}
    void cancel() override { ++cancelled; }
    int cancelled = 0;
};

class BaseWorldTest : public testing::Test {
protected:
    CBaseWorld m_world;
    QStringList m_heard;
    Listener m_a{m_world, u"a"_s, m_heard};
    Listener m_b{m_world, u"b"_s, m_heard};
    Listener m_c{m_world, u"c"_s, m_heard};
};

} // namespace

TEST_F(BaseWorldTest, every_listener_hears_a_code_in_the_order_of_adding_before_the_call_returns)
{
    m_world.on_broadcast = [this](int code) { m_heard << u"program"_s + QString::number(code); };
    m_world.broadcast(1);
    EXPECT_EQ(m_heard.join(u' '), u"program1 a1 b1 c1"_s);
}

TEST_F(BaseWorldTest, a_code_sent_by_a_listener_reaches_all_at_once)
{
    m_b.on_code = [this](int code) {
        if (code == 1)
            m_world.broadcast(2);
    };
    m_world.broadcast(1);
    EXPECT_EQ(m_heard.join(u' '), u"a1 b1 a2 b2 c2 c1"_s);
}

TEST_F(BaseWorldTest, listeners_that_go_or_come_while_a_code_is_told_make_no_other_miss_it)
{
    m_a.on_code = [this](int) { m_world.remove_listener(&m_a); };
    m_world.broadcast(1);
    EXPECT_EQ(m_heard.join(u' '), u"a1 b1 c1"_s);
    m_heard.clear();
    m_b.on_code = [this](int) { m_world.remove_listener(&m_c); };
    m_world.broadcast(2);
    EXPECT_EQ(m_heard.join(u' '), u"b2"_s) << "one that has gone hears nothing more";
    m_heard.clear();
    std::unique_ptr<Listener> late;
    m_b.on_code = [&](int) {
        if (!late)
            late = std::make_unique<Listener>(m_world, u"late"_s, m_heard);
    };
    m_world.broadcast(3);
    m_world.broadcast(4);
    EXPECT_TRUE(m_heard.join(u' ').endsWith(u"b4 late4"_s)) << m_heard.join(u' ').toStdString();
}

TEST_F(BaseWorldTest, one_removed_while_it_sends_a_code_itself_leaves_the_order_right)
{
    m_b.on_code = [this](int code) {
        if (code == 1) {
            m_world.broadcast(2);
            return;
        }
        m_world.remove_listener(&m_a);
        m_world.remove_listener(&m_b);
    };
    m_world.broadcast(1);
    EXPECT_EQ(m_heard.join(u' '), u"a1 b1 a2 b2 c2 c1"_s);
}

TEST_F(BaseWorldTest, changing_or_resetting_the_tool_cancels_what_is_under_way)
{
    Tool standard;
    Tool other;
    m_world.set_default_mouse_tool(&standard);
    m_world.set_mouse_tool(&other);
    EXPECT_EQ(standard.cancelled, 1);
    m_world.set_mouse_tool(&other);
    EXPECT_EQ(other.cancelled, 0) << "it is the same";
    m_world.api_reset_mt();
    EXPECT_EQ(other.cancelled, 1);
    EXPECT_EQ(m_world.mouse_tool(), &standard);
    m_world.api_reset_mt();
    EXPECT_EQ(standard.cancelled, 2);
    m_world.set_default_mouse_tool(nullptr);
    EXPECT_EQ(m_world.mouse_tool(), nullptr);
    m_world.api_reset_mt();
}

TEST_F(BaseWorldTest, the_world_has_objects_that_are_selected_in_order)
{
    WorldObject* camera = m_world.objects().create(WorldType::Camera);
    WorldObject* panel = m_world.objects().create(WorldType::Panel);
    CSelection& selection = m_world.selection();
    EXPECT_EQ(selection.get_last(), nullptr);
    for (const WorldObject* object : {panel, camera, panel})
        selection.add(object);
    selection.add(nullptr);
    EXPECT_EQ(selection.objects(), (std::vector{panel, camera}));
    EXPECT_EQ(selection.get_type_objs(WorldType::Panel), std::vector{panel});
    m_world.objects().remove({camera});
    EXPECT_EQ(selection.get_last(), panel);
    ASSERT_TRUE(m_world.document().journal().undo());
    EXPECT_EQ(selection.get_last(), camera);
}
