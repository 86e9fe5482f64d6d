#include "animation/key_clipboard.h"

#include "animation_fixture.h"

using namespace tarn;
using namespace tarn::test;

namespace {

class KeyClipboard : public AnimationTest {
protected:
    KeyClipboard()
    {
        m_object = timer(m_bar, m_thing);
        m_fade = with_keys(m_object, Channel::Transparency, {{0, 0}, {1, 0.5f}, {3, 1}});
        m_place = with_keys(m_object, Channel::Position, {{0, 0}, {1, 10}});
        m_document.forget_history();
    }
    using Times = std::vector<float>;

    CTimebar* m_bar = m_scene.create_bar(10);
    Thing* m_thing = thing();
    CTimerObject* m_object = nullptr;
    CTVar* m_fade = nullptr;
    CTVar* m_place = nullptr;
};

} // namespace

TEST_F(KeyClipboard, keys_go_to_what_they_belong_to_in_another_bar_which_gets_what_it_misses)
{
    m_fade->set_key_ease(3, 40);
    m_fade->set_key_group(3, 2);
    CTVar* own = m_object->create_var(VarType::Int, u"speed"_s);
    own->set_key_value(1, KeyValue::whole(7));
    const QByteArray copied = copy_keys({{m_fade, {1, 3, 2}}, {m_place, {1}}, {own, {1}}});
    CTimebar* other = m_scene.create_bar(20);
    m_document.forget_history();
    const QByteArray before = text();
    auto pasted = paste_keys(*other, copied, 5);
    ASSERT_TRUE(pasted.ok()) << pasted.status().message().toStdString();
    EXPECT_TRUE(pasted.value().left_out.isEmpty());
    CTimerObject* object = other->SearchItemUsage(*m_thing);
    ASSERT_TRUE(object);
    CTVar* fade = object->channel_variable(Channel::Transparency);
    EXPECT_EQ(times(fade), (Times{5, 7})) << "there is no key at 2";
    EXPECT_EQ(fade->keys().key(1), (Key{7, KeyValue::number(1), 40, 2}));
    EXPECT_EQ(times(object->find_variable(u"speed"_s, VarType::Int)), (Times{5}));
    EXPECT_EQ(pasted.value().keys.at(fade), (Times{5, 7}));

    fade->set_key_value(6, KeyValue::number(9));
    fade->set_key_value(8, KeyValue::number(9));
    ASSERT_TRUE(paste_keys(*other, copied, 6));
    EXPECT_EQ(times(fade), (Times{5, 6, 7, 8})) << "later ones stay";
    EXPECT_EQ(fade->value_at(6), KeyValue::number(0.5f)) << "the one in the way does not";
    undo_all();
    EXPECT_EQ(text(), before);
}

TEST_F(KeyClipboard, keys_of_one_object_or_variable_go_to_the_current_one)
{
    CTimerObject* second = timer(m_bar, thing());
    m_bar->set_current_object(second);
    ASSERT_TRUE(paste_keys(*m_bar, copy_keys({{m_fade, {1, 3}}, {m_place, {1}}}), 2));
    EXPECT_EQ(times(second->channel_variable(Channel::Transparency)), (Times{2, 4}));
    CTVar* number = second->create_var(VarType::Float);
    second->set_current_variable(number);
    ASSERT_TRUE(paste_keys(*m_bar, copy_keys({{m_fade, {3}}}), 0));
    EXPECT_EQ(times(number), (Times{0}));
    ASSERT_TRUE(paste_keys(*m_bar, copy_keys({{m_place, {1}}}), 9));
    EXPECT_EQ(times(second->channel_variable(Channel::Position)), (Times{2, 9})) << "a place is no number";
    EXPECT_EQ(times(m_place), (Times{0, 1}));
}

TEST_F(KeyClipboard, what_does_not_fit_is_told)
{
    const QByteArray of_fade = copy_keys({{m_fade, {0, 1}}, {m_place, {1}}});
    m_bar->set_current_object(m_bar->create_script_object());
    auto pasted = paste_keys(*m_bar, of_fade, 2);
    ASSERT_TRUE(pasted.ok());
    EXPECT_EQ(pasted.value().left_out.size(), 2) << "scripts have no channels";
    EXPECT_TRUE(pasted.value().keys.empty());
    m_bar->set_current_object(nullptr);
    pasted = paste_keys(*m_bar, of_fade, max_time - 0.5f);
    EXPECT_EQ(pasted.value().left_out.size(), 2) << "beyond the end of time";
    EXPECT_EQ(times(m_fade), (Times{0, 1, 3, max_time - 0.5f}));
    ModelObject* gone = m_thing;
    m_document.detach(std::span(&gone, 1));
    CTimebar* other = m_scene.create_bar(5);
    EXPECT_EQ(paste_keys(*other, of_fade, 0).value().left_out.size(), 2);
    EXPECT_TRUE(other->objects().empty());
}

TEST_F(KeyClipboard, cutting_leaves_first_keys_and_duplicates_snap)
{
    const QByteArray cut = cut_keys(*m_bar, {{m_fade, {0, 1, 3}}});
    EXPECT_EQ(times(m_fade), (Times{0}));
    ASSERT_TRUE(paste_keys(*m_bar, cut, 0));
    EXPECT_EQ(times(m_fade), (Times{0, 1, 3}));
    EXPECT_EQ(undo_all(), 2);
    const KeySelection copies = duplicate_keys(*m_bar, {{m_fade, {1, 3}}}, 1.03f, {.frame_rate = 10});
    EXPECT_EQ(copies.at(m_fade), (Times{frame_time(20, 10), frame_time(40, 10)}));
    EXPECT_EQ(times(m_fade).size(), 5u);
    EXPECT_TRUE(duplicate_keys(*m_bar, {{m_fade, {1}}}, -2).at(m_fade).empty());
}

TEST_F(KeyClipboard, a_text_that_is_none_of_keys_changes_nothing)
{
    const QByteArray before = text();
    const QByteArray good = copy_keys({{m_fade, {0, 1}}});
    const auto with = [&](const char* from, const char* to) {
        EXPECT_TRUE(good.contains(from)) << from;
        return QByteArray(good).replace(from, to);
    };
    for (const QByteArray& bad :
         {QByteArray(), QByteArray("[]"), QByteArray("{}"), QByteArray("{\"format\":2,\"tracks\":[]}"),
          good.left(good.size() / 2), with("\"kind\":2", "\"kind\":99"), with("\"channel\":4", "\"channel\":0"),
          with("\"channel\":4", "\"channel\":-7"), with("\"t\":[0,1]", "\"t\":[1,0]"),
          with("\"t\":[0,1]", "\"t\":[0,1e30]"), with("\"t\":[0,1]", "\"t\":[]"),
          with("\"v\":[0,0.5]", "\"v\":[0,1e39]")})
        EXPECT_FALSE(paste_keys(*m_bar, bad, 4)) << bad.toStdString();
    EXPECT_EQ(text(), before);
    EXPECT_FALSE(m_document.journal().can_undo());
}
